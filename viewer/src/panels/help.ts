import { byId, make } from "../dom";

const KEYS: [string, string][] = [
  ["Drag", "turn"],
  ["Right drag, Shift + drag", "move"],
  ["Wheel, + and −", "zoom"],
  ["Click", "select a weld or a part"],
  ["Double click, Enter", "go close to it"],
  ["Arrow keys in the view", "turn; with Shift: move"],
  ["Arrow keys in the table", "previous and next weld"],
  ["Arrow keys in the process", "walk, open and close; Enter filters"],
  ["F", "show the selection, or everything"],
  ["Home", "show everything (in the view)"],
  ["1  2  3  4", "look from the corner, front, side, top"],
  ["P", "parts: glass, solid, outline, none"],
  ["L", "labels: off, of the plan, all welds"],
  ["/", "search"],
  ["Escape", "clear the selection"],
];

const dialog = (): HTMLDialogElement => byId<HTMLDialogElement>("help");

export function makeHelp(): void {
  const list = make("dl");
  for (const [key, does] of KEYS) list.append(make("dt", {}, key), make("dd", {}, does));
  const close = make("button", { type: "button" }, "Close");
  close.addEventListener("click", () => dialog().close());
  dialog().prepend(make("h2", { id: "help-title" }, "Mouse and keys"), list);
  dialog().append(close);
  byId("help-button").addEventListener("click", openHelp);
}

export const openHelp = (): void => dialog().showModal();
