import { Mesh, type PerspectiveCamera, Raycaster, Vector2, Vector3 } from "three";

import type { Item, Weld } from "../scene/model";
import type { PartShapes } from "./parts";

/** Pixels beside a weld that still count as the weld. */
const SLACK = 4;

/** Where a point of the world stands in the picture, in pixels from its upper left corner. */
export interface Spot {
  x: number;
  y: number;
  /** Metres from the eye, along its line of sight; negative behind it. */
  depth: number;
}

export class Projector {
  private readonly seen = new Vector3();

  constructor(
    private readonly camera: PerspectiveCamera,
    private readonly canvas: HTMLCanvasElement,
  ) {}

  spot(point: Vector3): Spot {
    const seen = this.seen.copy(point).applyMatrix4(this.camera.matrixWorldInverse);
    const depth = -seen.z;
    seen.applyMatrix4(this.camera.projectionMatrix);
    return {
      x: ((seen.x + 1) / 2) * this.canvas.clientWidth,
      y: ((1 - seen.y) / 2) * this.canvas.clientHeight,
      depth,
    };
  }
}

/** Finds what stands at a place of the picture: welds come before the parts around them. */
export class Picker {
  private readonly raycaster = new Raycaster();
  private readonly ray = new Vector2();
  private readonly body = new Mesh();

  constructor(
    private readonly camera: PerspectiveCamera,
    private readonly canvas: HTMLCanvasElement,
    private readonly projector: Projector,
    private readonly parts: PartShapes,
  ) {
    this.body.matrixAutoUpdate = false;
  }

  at(x: number, y: number, welds: readonly Weld[], leastPixels: number, metresPerPixel: number): Item | null {
    let best: Weld | null = null;
    let bestMiss = Infinity;
    for (const weld of welds) {
      const miss = this.miss(weld, x, y, leastPixels, metresPerPixel);
      if (miss < bestMiss) [best, bestMiss] = [weld, miss];
    }
    if (best) return { kind: "weld", weld: best };
    this.aim(x, y);
    const part = this.parts.hit(this.raycaster);
    return part && { kind: "part", part };
  }

  /** By how many pixels a weld is missed; infinite where it is out of reach. */
  private miss(weld: Weld, x: number, y: number, leastPixels: number, metresPerPixel: number): number {
    const spot = this.projector.spot(weld.centre);
    if (spot.depth <= 0) return Infinity;
    const away = Math.hypot(spot.x - x, spot.y - y);
    const radius = Math.max(leastPixels, weld.radius / (metresPerPixel * spot.depth));
    if (away <= radius + SLACK) return away;
    return this.isLong(weld) && this.touches(weld, x, y) ? SLACK : Infinity;
  }

  private isLong(weld: Weld): boolean {
    return weld.shapes.some(({ geometry, matrix }) => {
      if (!geometry.boundingSphere) geometry.computeBoundingSphere();
      return geometry.boundingSphere!.radius * matrix.getMaxScaleOnAxis() > weld.radius * 2;
    });
  }

  /** Whether one of the rays around a place meets the weld itself. */
  private touches(weld: Weld, x: number, y: number): boolean {
    const around = [[0, 0], [SLACK, 0], [-SLACK, 0], [0, SLACK], [0, -SLACK]] as const;
    return around.some(([dx, dy]) => {
      this.aim(x + dx, y + dy);
      return weld.shapes.some(({ geometry, matrix }) => {
        this.body.geometry = geometry;
        this.body.matrixWorld.copy(matrix);
        return this.raycaster.intersectObject(this.body, false).length > 0;
      });
    });
  }

  private aim(x: number, y: number): void {
    this.ray.set((x / this.canvas.clientWidth) * 2 - 1, 1 - (y / this.canvas.clientHeight) * 2);
    this.raycaster.setFromCamera(this.ray, this.camera);
  }
}
