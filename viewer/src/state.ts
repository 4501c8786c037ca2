import { isWeld, type Item, type Scene, type Status, STATUSES, type Weld } from "./scene/model";
import type { Process } from "./scene/process";

export const PART_LOOKS = ["glass", "solid", "outline", "none"] as const;
export type PartLook = (typeof PART_LOOKS)[number];
export const LABEL_CHOICES = ["off", "plan", "all"] as const;
export type LabelChoice = (typeof LABEL_CHOICES)[number];

export interface State {
  statuses: ReadonlySet<Status>;
  types: ReadonlySet<string>;
  /** The chosen activity; null for all. */
  activity: string | null;
  text: string;
  /** Whether the view also has what the plan hides. */
  hidden: boolean;
  parts: PartLook;
  labels: LabelChoice;
  selected: Item | null;
}

type Listener = (state: State, changed: ReadonlySet<keyof State>) => void;

/** What is chosen on the page; whoever shows it subscribes. */
export class Store {
  readonly typeNames: string[];
  state: State;
  private readonly listeners: Listener[] = [];

  constructor(scene: Scene) {
    this.typeNames = [...new Set(scene.welds.map((weld) => weld.type))];
    this.state = {
      statuses: new Set(STATUSES),
      types: new Set(this.typeNames),
      activity: null,
      text: "",
      hidden: false,
      parts: "glass",
      labels: "off",
      selected: null,
    };
  }

  subscribe(listener: Listener): void {
    this.listeners.push(listener);
  }

  set(change: Partial<State>): void {
    const keys = (Object.keys(change) as (keyof State)[]).filter((key) => change[key] !== this.state[key]);
    if (keys.length === 0) return;
    this.state = { ...this.state, ...change };
    const changed = new Set(keys);
    for (const listener of this.listeners) listener(this.state, changed);
  }

  select(item: Item | null): void {
    if (!sameItem(item, this.state.selected)) this.set({ selected: item });
  }

  clearFilters(): void {
    this.set({ statuses: new Set(STATUSES), types: new Set(this.typeNames), activity: null, text: "" });
  }

  next<K extends "parts" | "labels">(key: K, choices: readonly State[K][]): void {
    const at = choices.indexOf(this.state[key]);
    this.set({ [key]: choices[(at + 1) % choices.length] } as Partial<State>);
  }
}

function sameItem(left: Item | null, right: Item | null): boolean {
  if (left === null || right === null) return left === right;
  if (left.kind === "weld") return right.kind === "weld" && left.weld === right.weld;
  return right.kind === "part" && left.part === right.part;
}

/** What a filter looks at; a change of anything else leaves the chosen welds as they are. */
export const FILTER_KEYS: readonly (keyof State)[] = ["statuses", "types", "activity", "text"];

function wordsOf(weld: Weld, process: Process): string {
  const parts = process.partsOf.get(weld) ?? [];
  const words = [weld.id, weld.name, weld.type, weld.processType ?? "", ...weld.parts, ...weld.activities];
  for (const part of parts) words.push(part.name, part.number);
  return words.join("\n").toLowerCase();
}

/** Answers which welds pass the filters. */
export class Filter {
  private readonly words: string[];

  constructor(
    private readonly scene: Scene,
    private readonly process: Process,
  ) {
    this.words = scene.welds.map((weld) => wordsOf(weld, process));
  }

  /** In the order of the file. A search finds the welds that have every one of its words. */
  welds(state: State): Weld[] {
    const below = state.activity === null ? null : this.process.below(state.activity);
    const sought = state.text.toLowerCase().split(/\s+/).filter(Boolean);
    return this.scene.welds.filter((weld) => {
      // A point is assigned to nothing, so it is there unless the planner looks for a status.
      const status = isWeld(weld) ? state.statuses.has(weld.status) : state.statuses.size === STATUSES.length;
      if (!status || !state.types.has(weld.type)) return false;
      if (below && !weld.activities.some((id) => below.has(id))) return false;
      const words = this.words[weld.index]!;
      return sought.every((word) => words.includes(word));
    });
  }
}
