import { byId, count, make } from "../dom";
import type { Process, Step } from "../scene/process";
import type { Store } from "../state";

/** A line of the tree; `id` is null in the one for all activities. */
interface Line {
  id: string | null;
  step: Step | null;
  element: HTMLElement;
}

const INDENT = 14;

/** The process as a tree; the chosen activity filters the welds. */
export class Tree {
  private readonly root = byId("tree");
  private readonly closed = new Set<string>();
  private lines: Line[] = [];

  constructor(
    private readonly process: Process,
    private readonly welds: number,
    private readonly store: Store,
  ) {
    this.build();
    this.root.addEventListener("click", (event) => this.clicked(event));
    this.root.addEventListener("keydown", (event) => this.pressed(event));
    store.subscribe((_state, changed) => {
      if (changed.has("activity")) this.mark();
    });
  }

  private build(): void {
    this.lines = [{ id: null, step: null, element: this.makeLine("All activities", this.welds, 0, null) }];
    const open = [...this.process.roots].reverse();
    for (let step = open.pop(); step; step = open.pop()) {
      const { id } = step.activity;
      this.lines.push({ id, step, element: this.stepLine(step) });
      if (!this.closed.has(id)) open.push(...[...step.children].reverse());
    }
    this.root.replaceChildren(...this.lines.map(({ element }) => element));
    this.mark();
  }

  private stepLine(step: Step): HTMLElement {
    const { activity, level, children, welds } = step;
    const expanded = children.length === 0 ? null : !this.closed.has(activity.id);
    const line = this.makeLine(this.process.nameOf(activity.id), welds, level + 1, expanded);
    line.classList.add(activity.kind);
    return line;
  }

  private makeLine(text: string, welds: number, level: number, expanded: boolean | null): HTMLElement {
    return make(
      "div",
      {
        class: "line", role: "treeitem", "aria-level": level + 1, tabindex: -1, title: text,
        "aria-expanded": expanded === null ? null : String(expanded), style: `--indent: ${level * INDENT}px`,
      },
      make("span", { class: "twist", "aria-hidden": "true" }),
      make("span", { class: "text" }, text),
      make("span", { class: "count" }, count(welds)),
    );
  }

  private mark(): void {
    const { activity } = this.store.state;
    const focused = this.lines.some(({ element }) => element === document.activeElement);
    for (const { id, element } of this.lines) {
      element.setAttribute("aria-selected", String(id === activity));
      element.tabIndex = id === activity ? 0 : -1;
    }
    if (!this.lines.some(({ id }) => id === activity)) this.lines[0]!.element.tabIndex = 0;
    if (focused) this.lines.find(({ id }) => id === activity)?.element.focus();
  }

  private clicked(event: MouseEvent): void {
    const target = event.target as HTMLElement;
    const line = this.lines.find(({ element }) => element.contains(target));
    if (!line) return;
    if (target.classList.contains("twist") && line.step?.children.length) return this.toggle(line.step);
    this.choose(line);
  }

  private choose({ id, element }: Line): void {
    this.store.set({ activity: id });
    element.focus();
  }

  private toggle(step: Step): void {
    const { id } = step.activity;
    if (!this.closed.delete(id)) this.closed.add(id);
    this.build();
    this.lines.find((line) => line.id === id)?.element.focus();
  }

  private pressed(event: KeyboardEvent): void {
    const at = this.lines.findIndex(({ element }) => element === event.target);
    const line = this.lines[at];
    if (!line || event.ctrlKey || event.altKey || event.metaKey) return;
    const moves: Record<string, () => void> = {
      ArrowDown: () => this.lines[at + 1]?.element.focus(),
      ArrowUp: () => this.lines[at - 1]?.element.focus(),
      Home: () => this.lines[0]?.element.focus(),
      End: () => this.lines.at(-1)?.element.focus(),
      ArrowRight: () => this.open(line, at),
      ArrowLeft: () => this.close(line),
      Enter: () => this.choose(line),
      " ": () => this.choose(line),
    };
    const move = moves[event.key];
    if (!move) return;
    event.preventDefault();
    event.stopPropagation();
    move();
  }

  private open({ id, step }: Line, at: number): void {
    if (!step?.children.length) return;
    if (this.closed.has(id!)) this.toggle(step);
    else this.lines[at + 1]?.element.focus();
  }

  private close({ id, step }: Line): void {
    if (step?.children.length && !this.closed.has(id!)) return this.toggle(step);
    this.lines.find((line) => line.id === step?.activity.parent)?.element.focus();
  }
}
