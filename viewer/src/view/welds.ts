import {
  type BufferGeometry,
  DynamicDrawUsage,
  Group,
  InstancedBufferAttribute,
  InstancedMesh,
  MeshLambertMaterial,
  type Vector3,
} from "three";

import type { Shape, Weld } from "../scene/model";
import { type Scale, WeldDots } from "./dots";
import type { Theme } from "./theme";

/** How thick a seam is at least, beside the smallest spot. */
const TUBE_SHARE = 0.5;
/** Pixels of radius from which on a ball is drawn with its own triangles. */
const NEAR = 12;
/** Welds are drawn after the parts around them. */
const ORDER = 2;

interface Piece {
  weld: Weld;
  shape: Shape;
}

/** All pieces of one geometry, drawn at once; only the chosen ones are in the buffers. */
class Batch {
  readonly group = new Group();
  private readonly mesh: InstancedMesh;
  private readonly radius: InstancedBufferAttribute;
  /** In place of balls that are far away. */
  private readonly dots: WeldDots | null;

  constructor(
    geometry: BufferGeometry,
    private readonly pieces: Piece[],
    material: MeshLambertMaterial,
    scale: Scale,
  ) {
    this.radius = new InstancedBufferAttribute(new Float32Array(2 * pieces.length), 2);
    this.radius.setUsage(DynamicDrawUsage);
    const own = geometry.clone();
    if (!own.getAttribute("normal")) own.computeVertexNormals();
    own.setAttribute("weldRadius", this.radius);
    this.mesh = new InstancedMesh(own, material, pieces.length);
    this.mesh.frustumCulled = false;
    this.mesh.renderOrder = ORDER + 1;
    this.group.add(this.mesh);
    this.dots = isBall(geometry) ? new WeldDots(pieces.map(({ weld }) => weld), scale, ORDER) : null;
    if (this.dots) this.group.add(this.dots.through, this.dots.points);
  }

  fill(chosen: ReadonlySet<Weld>, theme: Theme): void {
    let count = 0;
    for (const { weld, shape } of this.pieces) {
      if (!chosen.has(weld)) continue;
      this.mesh.setMatrixAt(count, shape.matrix);
      this.mesh.setColorAt(count, theme.status[weld.status]);
      this.radius.setXY(count++, weld.radius, this.dots ? 1 : TUBE_SHARE);
    }
    this.mesh.count = count;
    this.mesh.instanceMatrix.needsUpdate = true;
    this.radius.needsUpdate = true;
    if (this.mesh.instanceColor) this.mesh.instanceColor.needsUpdate = true;
    this.dots?.fill(chosen, theme);
  }

  setThrough(through: boolean): void {
    if (this.dots) this.dots.through.visible = through;
  }

  setNear(near: boolean): void {
    if (!this.dots) return;
    this.mesh.visible = near;
    this.dots.points.visible = !near;
  }
}

/** Whether all corners lie as far from the centre. */
function isBall(geometry: BufferGeometry): boolean {
  geometry.computeBoundingBox();
  const { min, max } = geometry.boundingBox!;
  const centre = min.clone().add(max).multiplyScalar(0.5);
  const points = geometry.getAttribute("position");
  const radius = (max.x - min.x) / 2;
  const point = min.clone();
  for (let i = 0; i < points.count; ++i) {
    const off = Math.abs(point.fromBufferAttribute(points, i).distanceTo(centre) - radius);
    if (off > radius * 0.05) return false;
  }
  return radius > 0;
}

/** Welds keep a size that can be seen, however far away they are: they grow along their normals. */
function growingMaterial({ least }: Scale): MeshLambertMaterial {
  const material = new MeshLambertMaterial({ transparent: true });
  material.onBeforeCompile = (shader) => {
    shader.uniforms.leastRadius = least;
    shader.vertexShader = shader.vertexShader
      .replace("void main() {", "attribute vec2 weldRadius;\nuniform float leastRadius;\nvoid main() {")
      .replace("#include <project_vertex>", `#include <project_vertex>
        float grown = max(0.0, leastRadius * weldRadius.y * -mvPosition.z - weldRadius.x);
        mvPosition.xyz += normalize(transformedNormal) * grown;
        gl_Position = projectionMatrix * mvPosition;`);
  };
  return material;
}

/** The welds in the view. */
export class WeldShapes {
  readonly group = new Group();
  /** Of the smallest weld, in pixels. */
  readonly leastPixels: number;
  private readonly scale: Scale = { least: { value: 0 }, pixelsPerMetre: { value: 1 } };
  private readonly batches: Batch[] = [];
  private chosen: Weld[] = [];

  constructor(welds: Weld[]) {
    this.leastPixels = welds.length <= 300 ? 4.5 : welds.length <= 1500 ? 3.6 : 2.8;
    const pieces = new Map<BufferGeometry, Piece[]>();
    for (const weld of welds) {
      for (const shape of weld.shapes) {
        const alike = pieces.get(shape.geometry);
        if (alike) alike.push({ weld, shape });
        else pieces.set(shape.geometry, [{ weld, shape }]);
      }
    }
    const material = growingMaterial(this.scale);
    for (const [geometry, alike] of pieces) this.batches.push(new Batch(geometry, alike, material, this.scale));
    for (const batch of this.batches) this.group.add(batch.group);
  }

  /** `through`: whether those behind something solid are seen through it. */
  show(welds: Weld[], through: boolean, theme: Theme): void {
    this.chosen = welds;
    const chosen = new Set(welds);
    for (const batch of this.batches) {
      batch.fill(chosen, theme);
      batch.setThrough(through);
    }
  }

  /**
   * Before each frame: `metresPerPixel` one metre before the eye, and how many pixels of the drawing
   * buffer make one of the page.
   */
  adapt(eye: Vector3, metresPerPixel: number, ratio: number): void {
    this.scale.least.value = this.leastPixels * metresPerPixel;
    this.scale.pixelsPerMetre.value = ratio / metresPerPixel;
    const near = this.chosen.some((weld) => weld.radius > NEAR * metresPerPixel * weld.centre.distanceTo(eye));
    for (const batch of this.batches) batch.setNear(near);
  }
}
