import { byId } from "./dom";
import { openHelp } from "./panels/help";
import { LABEL_CHOICES, PART_LOOKS, type Store } from "./state";
import { DIRECTIONS } from "./view/camera";
import type { View } from "./view/view";

const TURN = Math.PI / 24;
const STEP = 40;
const ZOOM = 0.85;

const isTyping = (target: EventTarget | null): boolean =>
  target instanceof HTMLInputElement && target.type === "search";

/** F goes to the selection, or shows everything where nothing is selected. */
export function fit(view: View, store: Store): void {
  const { selected } = store.state;
  if (selected) view.fit(selected);
  else view.fitWhole();
}

/** Keys that work everywhere but where text is typed. */
export function connectKeys(view: View | null, store: Store): void {
  const actions: Record<string, () => void> = {
    "?": openHelp,
    "/": () => byId("search").focus(),
    Escape: () => store.select(null),
    l: () => store.next("labels", LABEL_CHOICES),
    p: () => store.next("parts", PART_LOOKS),
    f: () => view && fit(view, store),
  };
  DIRECTIONS.forEach((direction, at) => (actions[String(at + 1)] = () => view?.look(direction)));
  document.addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey || document.querySelector("dialog[open]")) return;
    if (isTyping(event.target)) return leaveSearch(event);
    const action = actions[event.key.length === 1 ? event.key.toLowerCase() : event.key];
    if (!action) return;
    event.preventDefault();
    action();
  });
  if (view) connectView(view, store);
}

function leaveSearch(event: KeyboardEvent): void {
  if (event.key === "Escape" || event.key === "Enter") byId("rows").focus();
}

/** Keys of the 3D view itself. */
function connectView(view: View, store: Store): void {
  const { controls, canvas } = view.stage;
  const arrow = (x: number, y: number) => (shift: boolean) => {
    if (shift) return controls.pan(-x * STEP, -y * STEP);
    if (x) controls.rotateLeft(-x * TURN);
    if (y) controls.rotateUp(-y * TURN);
  };
  const actions: Record<string, (shift: boolean) => void> = {
    ArrowLeft: arrow(-1, 0),
    ArrowRight: arrow(1, 0),
    ArrowUp: arrow(0, -1),
    ArrowDown: arrow(0, 1),
    "+": () => controls.dollyIn(ZOOM),
    "=": () => controls.dollyIn(ZOOM),
    "-": () => controls.dollyOut(ZOOM),
    Home: () => view.fitWhole(),
    Enter: () => fit(view, store),
  };
  canvas.addEventListener("keydown", (event) => {
    const action = actions[event.key];
    if (!action || event.ctrlKey || event.altKey || event.metaKey) return;
    event.preventDefault();
    action(event.shiftKey);
    view.stage.redraw();
  });
}
