import { byId } from "./dom";
import { fit } from "./keys";
import { makeChoices } from "./panels/choices";
import type { Scene } from "./scene/model";
import type { State, Store } from "./state";
import type { Direction } from "./view/camera";
import type { View } from "./view/view";

function makeDirections(view: View): void {
  const places: [Direction, string, string][] = [
    ["iso", "3D", "From the front, left and above (1)"],
    ["front", "Front", "Along x (2)"],
    ["side", "Side", "Along y, from the left (3)"],
    ["top", "Top", "From above (4)"],
  ];
  const choices = places.map(([value, text, title]) => ({ value, text, title }));
  makeChoices(byId("directions"), "", choices, (direction) => view.look(direction));
}

/** The buttons above the view. */
export function makeToolbar(scene: Scene, store: Store, view: View): void {
  byId("fit").addEventListener("click", () => fit(view, store));
  byId("fit-all").addEventListener("click", () => view.fitWhole());
  makeDirections(view);
  const markParts = makeChoices(byId("parts"), "Parts", [
    { value: "glass", text: "Glass", title: "Half transparent (P)" },
    { value: "solid", text: "Solid", title: "Opaque (P)" },
    { value: "outline", text: "Outline", title: "Edges only (P)" },
    { value: "none", text: "None", title: "Welds only (P)" },
  ], (parts) => store.set({ parts }));
  const markLabels = makeChoices(byId("labels"), "Labels", [
    { value: "off", text: "Off", title: "No labels (L)" },
    { value: "plan", text: "Plan", title: `The ${scene.labels.length} labels of the plan (L)` },
    { value: "all", text: "All", title: "The labels of the plan and the names of all other welds (L)" },
  ], (labels) => store.set({ labels }));
  const update = (state: State): void => {
    markParts(state.parts);
    markLabels(state.labels);
  };
  store.subscribe(update);
  update(store.state);
}
