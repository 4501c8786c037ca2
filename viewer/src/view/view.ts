import { Box3, Vector3 } from "three";

import type { Item, Part, Scene, Weld } from "../scene/model";
import type { Process } from "../scene/process";
import type { State } from "../state";
import { type Direction, fitBox, towards } from "./camera";
import { LabelLayer } from "./labels";
import { type Emphasis, PartShapes } from "./parts";
import { Picker, Projector } from "./picking";
import { Stage } from "./stage";
import { readTheme } from "./theme";
import { Triad } from "./triad";
import { WeldShapes } from "./welds";

/** Half the width, in metres, of a box around a single point. */
const LEAST = 0.05;

/** The 3D view of a scene. */
export class View {
  readonly stage: Stage;
  private readonly parts: PartShapes;
  private readonly welds: WeldShapes;
  private readonly labels: LabelLayer;
  private readonly picker: Picker;
  private readonly boxes = new Map<Part | Weld, Box3>();
  private theme = readTheme();
  private shownWelds: Weld[] = [];

  constructor(
    private readonly scene: Scene,
    private readonly process: Process,
    canvas: HTMLCanvasElement,
    overlay: HTMLElement,
    triad: SVGSVGElement,
  ) {
    this.stage = new Stage(canvas);
    this.parts = new PartShapes(scene.parts);
    this.welds = new WeldShapes(scene.welds);
    this.stage.scene.add(this.parts.group, this.welds.group);
    const projector = new Projector(this.stage.camera, canvas);
    this.labels = new LabelLayer(overlay, projector);
    this.picker = new Picker(this.stage.camera, canvas, projector, this.parts);
    const axes = new Triad(triad, (point) => this.vehicle(point));
    this.stage.setBounds(this.boxOf([...scene.parts, ...scene.welds]));
    this.stage.onDrawn(() => {
      this.stage.camera.updateMatrixWorld();
      this.welds.adapt(this.stage.camera.position, this.stage.metresPerPixel, this.stage.ratio);
      this.labels.place(canvas.clientWidth, canvas.clientHeight, this.stage.metresPerPixel);
      axes.draw(this.stage.camera);
    });
    this.stage.stand(fitBox(this.wholeBox(), this.towards("iso"), this.stage.camera));
  }

  readTheme(): void {
    this.theme = readTheme();
  }

  show(state: State, filtered: Weld[]): void {
    const selected = state.selected?.kind === "weld" ? state.selected.weld : null;
    this.shownWelds = filtered.filter((weld) => weld.shown || state.hidden || weld === selected);
    this.welds.show(this.shownWelds, state.parts === "solid", this.theme);
    this.parts.show((part) => part.shown || state.hidden, this.emphasis(state), state.parts, this.theme);
    this.labels.show(state.labels, this.scene.labels, this.shownWelds, selected);
    this.stage.redraw();
  }

  at(x: number, y: number): Item | null {
    return this.picker.at(x, y, this.shownWelds, this.welds.leastPixels, this.stage.metresPerPixel);
  }

  fitWhole(): void {
    this.stage.fit(this.wholeBox());
  }

  fit(item: Item): void {
    this.stage.fit(this.framed(item));
  }

  /** Brings an item into the middle, from no farther away than is good for seeing it. */
  reveal(item: Item): void {
    const { eye, target } = this.stage.outlook;
    const centre = this.framed(item).getCenter(target.clone());
    const distance = Math.min(eye.distanceTo(target), this.stage.size * 1.6);
    const offset = eye.sub(target).setLength(distance);
    this.stage.fly({ target: centre, eye: offset.add(centre) });
  }

  look(direction: Direction): void {
    this.stage.fit(this.wholeBox(), this.towards(direction));
  }

  private towards(direction: Direction): Vector3 {
    return towards(direction, (point) => this.vehicle(point));
  }

  /** Turns a direction of the vehicle into one of the world. */
  private vehicle(point: Vector3): Vector3 {
    return point.transformDirection(this.scene.toWorld);
  }

  private emphasis(state: State): (part: Part) => Emphasis {
    const strong = new Set<Part>();
    if (state.selected?.kind === "part") strong.add(state.selected.part);
    if (state.selected?.kind === "weld") {
      for (const part of this.process.partsOf.get(state.selected.weld) ?? []) strong.add(part);
    }
    const present = this.presentAt(state.activity);
    return (part) => (strong.has(part) ? "strong" : present && !present.has(part) ? "faint" : "plain");
  }

  /** The parts that an activity takes in or welds; null for all. */
  private presentAt(activity: string | null): Set<Part> | null {
    if (activity === null) return null;
    const below = this.process.below(activity);
    const has = ({ activities }: Part | Weld): boolean => activities.some((id) => below.has(id));
    const welded = this.scene.welds.filter(has).flatMap((weld) => this.process.partsOf.get(weld) ?? []);
    return new Set([...this.scene.parts.filter(has), ...welded]);
  }

  private wholeBox(): Box3 {
    const shown = [...this.scene.parts, ...this.scene.welds].filter((item) => item.shown);
    return this.boxOf(shown.length > 0 ? shown : [...this.scene.parts, ...this.scene.welds]);
  }

  /** The box to look at for an item: a weld with what is around it. */
  private framed(item: Item): Box3 {
    if (item.kind === "part") return this.boxOf([item.part]);
    const box = this.boxOf([item.weld]).clone();
    return box.expandByScalar(Math.max(item.weld.radius * 25, this.stage.size * 0.035));
  }

  private boxOf(items: (Part | Weld)[]): Box3 {
    const box = new Box3();
    for (const item of items) box.union(this.ownBox(item));
    if (box.isEmpty()) box.expandByPoint(new Vector3());
    return box.max.distanceTo(box.min) > 0 ? box : box.expandByScalar(LEAST);
  }

  private ownBox(item: Part | Weld): Box3 {
    let box = this.boxes.get(item);
    if (!box) {
      box = new Box3();
      for (const { geometry, matrix } of item.shapes) {
        if (!geometry.boundingBox) geometry.computeBoundingBox();
        box.union(geometry.boundingBox!.clone().applyMatrix4(matrix));
      }
      if (!Number.isFinite(box.min.length() + box.max.length())) box.makeEmpty();
      if (box.isEmpty() && "centre" in item) box.expandByPoint(item.centre);
      this.boxes.set(item, box);
    }
    return box;
  }
}
