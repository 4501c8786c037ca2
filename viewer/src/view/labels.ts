import type { Vector3 } from "three";

import { type Label, titleOf, type Weld } from "../scene/model";
import type { LabelChoice } from "../state";
import type { Projector, Spot } from "./picking";

const MOST = 160;
/** Pixels; a label that would stand on another is left out. */
const HEIGHT = 20;
const WIDTH_OF_LETTER = 6.6;
const PADDING = 14;
const RAISE = 12;
const RING = 11;

interface Tag {
  text: string;
  anchor: Vector3;
  weld: Weld | null;
}

interface Placed {
  tag: Tag;
  spot: Spot;
  width: number;
}

/** Texts in front of the picture: the nearest ones, as many as there is room for. */
export class LabelLayer {
  private readonly elements: HTMLElement[] = [];
  private readonly ring = document.createElement("div");
  private tags: Tag[] = [];
  private selected: Weld | null = null;

  constructor(
    private readonly layer: HTMLElement,
    private readonly projector: Projector,
  ) {
    this.ring.className = "ring";
    layer.append(this.ring);
  }

  show(choice: LabelChoice, labels: Label[], welds: readonly Weld[], selected: Weld | null): void {
    const chosen = new Set(welds);
    this.tags = [];
    if (choice !== "off") this.tags.push(...labels.filter(({ text, weld }) => text && (!weld || chosen.has(weld))));
    if (choice === "all") {
      const named = new Set(this.tags.map(({ weld }) => weld));
      for (const weld of welds) if (!named.has(weld)) this.tags.push(nameTag(weld));
    }
    this.selected = selected;
    if (selected && !this.tags.some(({ weld }) => weld === selected)) this.tags.push(nameTag(selected));
  }

  /** Before each frame; `metresPerPixel` one metre before the eye. */
  place(width: number, height: number, metresPerPixel: number): void {
    const seen = this.tags
      .map((tag) => ({ tag, spot: this.projector.spot(tag.anchor), width: tag.text.length * WIDTH_OF_LETTER + PADDING }))
      .filter(({ spot }) => spot.depth > 0 && spot.x > 0 && spot.x < width && spot.y > 0 && spot.y < height)
      .sort((left, right) => this.rank(left) - this.rank(right));
    const free = new Taken();
    const placed: Placed[] = [];
    for (const label of seen) {
      if (placed.length === MOST) break;
      if (free.take(label.spot.x - label.width / 2, label.spot.y - RAISE - HEIGHT, label.width)) placed.push(label);
    }
    placed.forEach((label, at) => this.put(this.element(at), label));
    for (let at = placed.length; at < this.elements.length; ++at) this.elements[at]!.hidden = true;
    this.placeRing(metresPerPixel);
  }

  private rank({ tag, spot }: Placed): number {
    return tag.weld && tag.weld === this.selected ? -1 : spot.depth;
  }

  private placeRing(metresPerPixel: number): void {
    const spot = this.selected && this.projector.spot(this.selected.centre);
    this.ring.hidden = !spot || spot.depth <= 0;
    if (!spot || !this.selected) return;
    const radius = Math.max(RING, this.selected.radius / (metresPerPixel * spot.depth) + 5);
    this.ring.style.setProperty("--radius", `${radius}px`);
    this.ring.style.transform = `translate(${spot.x}px, ${spot.y}px)`;
  }

  private put(element: HTMLElement, { tag, spot }: Placed): void {
    element.hidden = false;
    if (element.textContent !== tag.text) element.textContent = tag.text;
    element.classList.toggle("chosen", tag.weld !== null && tag.weld === this.selected);
    element.style.transform = `translate(${spot.x}px, ${spot.y - RAISE}px) translate(-50%, -100%)`;
  }

  private element(at: number): HTMLElement {
    let element = this.elements[at];
    if (!element) {
      element = document.createElement("span");
      element.className = "label";
      this.elements.push(element);
      this.layer.append(element);
    }
    return element;
  }
}

const nameTag = (weld: Weld): Tag => ({ text: titleOf(weld), anchor: weld.centre, weld });

/** The places that labels hold already, in rows of the picture. */
class Taken {
  private readonly rows = new Map<number, [number, number][]>();

  take(left: number, top: number, width: number): boolean {
    const touched = [Math.floor(top / HEIGHT), Math.floor((top + HEIGHT) / HEIGHT)];
    const right = left + width;
    const clash = touched.some((row) => this.rows.get(row)?.some(([from, to]) => left < to && right > from));
    if (clash) return false;
    for (const row of touched) {
      const spans = this.rows.get(row);
      if (spans) spans.push([left, right]);
      else this.rows.set(row, [[left, right]]);
    }
    return true;
  }
}
