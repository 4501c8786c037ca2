import { byId, count, make } from "../dom";
import { isWeld, type Scene, type Status, STATUSES } from "../scene/model";
import type { State, Store } from "../state";
import { capital, STATUS_WORDS, statusMark } from "./words";

const TYPING_MS = 120;

/** A check box for each value; answers what sets them from a set of values. */
function makeChecks<T extends string>(
  place: HTMLElement,
  values: readonly T[],
  row: (value: T) => (Node | string)[],
  changed: (chosen: Set<T>) => void,
): (chosen: ReadonlySet<T>) => void {
  const boxes = values.map((value) => make("input", { type: "checkbox", value }));
  boxes.forEach((box, at) => {
    box.addEventListener("change", () => changed(new Set(values.filter((_value, i) => boxes[i]!.checked))));
    place.append(make("label", { class: "check" }, box, ...row(values[at]!)));
  });
  return (chosen) => boxes.forEach((box, at) => (box.checked = chosen.has(values[at]!)));
}

const withCount = (text: string, number: number): HTMLElement[] => [
  make("span", { class: "text" }, text),
  make("span", { class: "count" }, count(number)),
];

function makeStatuses(scene: Scene, store: Store): (state: State) => void {
  const numberOf = (status: Status): number => scene.welds.filter((weld) => isWeld(weld) && weld.status === status).length;
  const set = makeChecks(
    byId("statuses"),
    STATUSES,
    (status) => [statusMark(status), ...withCount(STATUS_WORDS[status], numberOf(status))],
    (statuses) => store.set({ statuses }),
  );
  return (state) => set(state.statuses);
}

function makeTypes(scene: Scene, store: Store): (state: State) => void {
  const numberOf = (type: string): number => scene.welds.filter((weld) => weld.type === type).length;
  const set = makeChecks(
    byId("types"),
    store.typeNames,
    (type) => withCount(capital(type), numberOf(type)),
    (types) => store.set({ types }),
  );
  return (state) => set(state.types);
}

function makeHidden(scene: Scene, store: Store): (state: State) => void {
  const hidden = [...scene.parts, ...scene.welds].filter((item) => !item.shown).length;
  const box = make("input", { type: "checkbox" });
  box.addEventListener("change", () => store.set({ hidden: box.checked }));
  if (hidden > 0) {
    byId("types").parentElement!.after(make("label", { class: "check alone" }, box, ...withCount("View what is hidden", hidden)));
  }
  return (state) => (box.checked = state.hidden);
}

/** Search, status, type and what is hidden. */
export function makeFilters(scene: Scene, store: Store): void {
  const search = byId<HTMLInputElement>("search");
  const clear = byId<HTMLButtonElement>("clear");
  let typing = 0;
  search.addEventListener("input", () => {
    clearTimeout(typing);
    typing = window.setTimeout(() => store.set({ text: search.value.trim() }), TYPING_MS);
  });
  clear.addEventListener("click", () => store.clearFilters());
  const setters = [makeStatuses, makeTypes, makeHidden].map((maker) => maker(scene, store));
  const update = (state: State): void => {
    for (const set of setters) set(state);
    if (search.value.trim() !== state.text) search.value = state.text;
    clear.disabled =
      state.statuses.size === STATUSES.length &&
      state.types.size === store.typeNames.length &&
      state.activity === null &&
      state.text === "";
  };
  store.subscribe(update);
  update(store.state);
}
