import { byId, make, plural } from "../dom";
import { isWeld, type Item, type Part, type Scene, titleOf, type Weld } from "../scene/model";
import type { Process } from "../scene/process";
import type { Store } from "../state";
import { capital, STATUS_WORDS, statusMark } from "./words";

type Cell = Node | string;

const NARROW = "\u202f";

/** The data of what is selected. */
export class Details {
  private readonly card = byId("details");

  constructor(
    private readonly scene: Scene,
    private readonly process: Process,
    private readonly store: Store,
    private readonly focusOn: (item: Item) => void,
  ) {}

  show(item: Item | null): void {
    this.card.hidden = item === null;
    if (item?.kind === "weld") this.showWeld(item.weld);
    if (item?.kind === "part") this.showPart(item.part);
  }

  private showWeld(weld: Weld): void {
    this.fill({ kind: "weld", weld }, titleOf(weld), [
      ["Status", isWeld(weld) ? [statusMark(weld.status), STATUS_WORDS[weld.status]] : [""]],
      ["Type", [capital(weld.type)]],
      ["Process", [weld.processType ?? ""]],
      ["Position", [weld.position ? `${weld.position.map((value) => value.toFixed(1)).join("  ")}${NARROW}mm` : ""]],
      ["Diameter", [weld.diameter === null ? "" : `${weld.diameter}${NARROW}mm`]],
      ["Activity", weld.activities.map((id) => this.activityLink(id))],
      ["Parts", weld.parts.map((name) => this.partLink(name))],
      ["Hidden", [weld.shown ? "" : "in the plan"]],
    ]);
  }

  private showPart(part: Part): void {
    const welds = this.scene.welds.filter((weld) => isWeld(weld) && this.process.partsOf.get(weld)?.includes(part)).length;
    const search = this.link(plural(welds, "weld"), "Show these in the table", () =>
      this.store.set({ text: (part.number || part.id).toLowerCase() }));
    this.fill({ kind: "part", part }, titleOf(part), [
      ["Part", [part.number || part.id]],
      ["Activity", part.activities.map((id) => this.activityLink(id))],
      ["Joined by", [welds > 0 ? search : "no weld"]],
      ["Hidden", [part.shown ? "" : "in the plan"]],
    ]);
  }

  private fill(item: Item, title: string, rows: [string, Cell[]][]): void {
    const list = make("dl");
    for (const [term, cells] of rows) {
      if (cells.every((cell) => cell === "")) continue;
      list.append(make("dt", {}, term), make("dd", {}, ...cells));
    }
    const close = make("button", { type: "button", class: "close", "aria-label": "Close", title: "Close (Escape)" }, "×");
    close.addEventListener("click", () => this.store.select(null));
    const focus = make("button", { type: "button", class: "focus", title: "Go close (F)" }, "Focus");
    focus.addEventListener("click", () => this.focusOn(item));
    this.card.replaceChildren(make("div", { class: "card-head" }, make("h2", {}, title), focus, close), list);
  }

  private link(text: string, title: string, action: () => void): HTMLElement {
    const button = make("button", { type: "button", class: "link", title }, text);
    button.addEventListener("click", action);
    return button;
  }

  private activityLink(id: string): HTMLElement {
    return this.link(this.process.nameOf(id), "Show the welds of this activity", () => this.store.set({ activity: id }));
  }

  private partLink(name: string): Cell {
    const part = this.process.partNamed(name);
    if (!part) return make("span", {}, name);
    const title = part.name && part.number ? `${part.number}  ${part.name}` : titleOf(part);
    return this.link(title, "Select this part", () => this.store.select({ kind: "part", part }));
  }
}
