import { type Activity, isWeld, type Part, type Scene, type Weld } from "./model";

/** An activity with its place in the tree. */
export interface Step {
  activity: Activity;
  level: number;
  children: Step[];
  /** Welds of the activity and of those below it, each once. */
  welds: number;
}

/** Who is below whom, and who has which weld. */
export class Process {
  readonly roots: Step[] = [];
  readonly partsOf = new Map<Weld, Part[]>();
  private readonly steps = new Map<string, Step>();
  private readonly partNames = new Map<string, Part>();

  constructor(private readonly scene: Scene) {
    for (const activity of scene.activities) {
      this.steps.set(activity.id, { activity, level: 0, children: [], welds: 0 });
    }
    for (const step of this.steps.values()) this.siblingsOf(step).push(step);
    this.setLevels();
    this.countWelds();
    this.nameParts();
  }

  nameOf(id: string): string {
    const activity = this.steps.get(id)?.activity;
    return activity?.name && activity.name !== id ? `${id}  ${activity.name}` : id;
  }

  /** Identifiers of an activity and of all below it. */
  below(id: string): Set<string> {
    const found = new Set([id]);
    const open = [this.steps.get(id)];
    for (let step = open.pop(); step; step = open.pop()) {
      for (const child of step.children) {
        found.add(child.activity.id);
        open.push(child);
      }
    }
    return found;
  }

  partNamed(name: string): Part | undefined {
    return this.partNames.get(name);
  }

  private siblingsOf(step: Step): Step[] {
    const parent = this.steps.get(step.activity.parent ?? "");
    return parent && !this.isAbove(step, parent) ? parent.children : this.roots;
  }

  /** Whether a step is the given one or above it: a ring in the file must not become one here. */
  private isAbove(step: Step, below: Step): boolean {
    const seen = new Set<Step>();
    for (let at: Step | undefined = below; at && !seen.has(at); at = this.steps.get(at.activity.parent ?? "")) {
      if (at === step) return true;
      seen.add(at);
    }
    return false;
  }

  private setLevels(): void {
    const open = [...this.roots];
    for (let step = open.pop(); step; step = open.pop()) {
      for (const child of step.children) child.level = step.level + 1;
      open.push(...step.children);
    }
  }

  private countWelds(): void {
    for (const weld of this.scene.welds.filter(isWeld)) {
      const counted = new Set<Step>();
      for (const id of weld.activities) {
        for (let step = this.steps.get(id); step && !counted.has(step); step = this.steps.get(step.activity.parent ?? "")) {
          counted.add(step);
        }
      }
      for (const step of counted) ++step.welds;
    }
  }

  private nameParts(): void {
    for (const part of this.scene.parts) {
      for (const name of [part.name, part.number, part.id]) if (name) this.partNames.set(name, part);
    }
    for (const weld of this.scene.welds) {
      this.partsOf.set(weld, weld.parts.flatMap((name) => this.partNames.get(name) ?? []));
    }
  }
}
