import { BatchedMesh, type BufferGeometry, type Color, DoubleSide, FrontSide, Group, type Intersection, MeshLambertMaterial, type Raycaster, Vector4 } from "three";

import type { Part } from "../scene/model";
import type { PartLook } from "../state";
import { PartEdges } from "./edges";
import { drawable } from "./geometry";
import type { Theme } from "./theme";

/** What a part is at the moment: as it should be, out of the way, or pointed out. */
export type Emphasis = "plain" | "faint" | "strong";

const OPACITY: Record<Emphasis, number> = { plain: 0.3, faint: 0.035, strong: 0.55 };

/** A box is closed: without its inner faces a camera that is in it sees what is there. */
const isBox = (geometry: BufferGeometry): boolean => geometry.index!.count <= 36;

/** The parts in the view: one mesh with all of them, and their edges. */
export class PartShapes {
  readonly group = new Group();
  private readonly mesh: BatchedMesh;
  private readonly edges: PartEdges;
  /** The part and the own colour of each instance. */
  private readonly instances: { part: Part; colour: Color }[] = [];

  constructor(parts: Part[]) {
    const shapes = parts.flatMap((part) => part.shapes.map((shape) => ({ part, shape })));
    const geometries = new Map(shapes.map(({ shape }) => [shape.geometry, drawable(shape.geometry)]));
    let points = 0;
    let corners = 0;
    for (const geometry of geometries.values()) {
      points += geometry.getAttribute("position").count;
      corners += geometry.index!.count;
    }
    const side = [...geometries.values()].every(isBox) ? FrontSide : DoubleSide;
    const material = new MeshLambertMaterial({ side, forceSinglePass: true });
    this.mesh = new BatchedMesh(Math.max(shapes.length, 1), Math.max(points, 1), Math.max(corners, 1), material);
    const ids = new Map([...geometries].map(([own, ready]) => [own, this.mesh.addGeometry(ready)]));
    for (const { part, shape } of shapes) {
      const instance = this.mesh.addInstance(ids.get(shape.geometry)!);
      this.mesh.setMatrixAt(instance, shape.matrix);
      this.instances[instance] = { part, colour: shape.colour };
    }
    this.edges = new PartEdges(parts);
    this.group.add(this.mesh, this.edges.group);
  }

  show(shown: (part: Part) => boolean, emphasis: (part: Part) => Emphasis, look: PartLook, theme: Theme): void {
    this.mesh.visible = look === "glass" || look === "solid";
    this.setMaterial(look === "glass");
    this.instances.forEach(({ part, colour }, instance) => {
      const how = emphasis(part);
      const solidButFaint = look === "solid" && how === "faint";
      this.mesh.setVisibleAt(instance, shown(part) && !solidButFaint);
      const tint = how === "strong" ? colour.clone().lerp(theme.accent, look === "glass" ? 0.4 : 0.2) : colour;
      this.mesh.setColorAt(instance, new Vector4(tint.r, tint.g, tint.b, look === "glass" ? OPACITY[how] : 1));
    });
    this.edges.show(look === "none" ? () => false : shown, emphasis, theme);
  }

  /** The nearest part under a ray. */
  hit(raycaster: Raycaster): Part | null {
    if (!this.mesh.visible) return null;
    const hits: Intersection[] = [];
    this.mesh.raycast(raycaster, hits);
    const nearest = hits.sort((left, right) => left.distance - right.distance)[0];
    return (nearest?.batchId !== undefined && this.instances[nearest.batchId]?.part) || null;
  }

  private setMaterial(glass: boolean): void {
    const material = this.mesh.material as MeshLambertMaterial;
    if (material.transparent === glass) return;
    material.transparent = glass;
    material.depthWrite = !glass;
    material.polygonOffset = !glass;
    material.polygonOffsetFactor = 1;
    material.polygonOffsetUnits = 1;
    material.needsUpdate = true;
  }
}
