import { BufferGeometry, EdgesGeometry, Group, LineBasicMaterial, LineSegments, Vector3 } from "three";

import type { Part } from "../scene/model";
import type { Emphasis } from "./parts";
import type { Theme } from "./theme";

/** Degrees between two triangles from which on their border is drawn. */
const SHARP = 25;
/** Larger meshes are drawn without edges: finding them would hold the page up. */
const MOST_TRIANGLES = 60_000;

const STRENGTH: Record<Emphasis, number> = { plain: 1, faint: 0.22, strong: 1.6 };

/** Where the edges of a part stand in the buffer. */
interface Range {
  part: Part;
  first: number;
  count: number;
}

function edgePoints(part: Part): Vector3[] {
  const points: Vector3[] = [];
  for (const { geometry, matrix } of part.shapes) {
    if ((geometry.index ?? geometry.getAttribute("position")).count > 3 * MOST_TRIANGLES) continue;
    const edges = new EdgesGeometry(geometry, SHARP).getAttribute("position");
    for (let i = 0; i < edges.count; ++i) {
      points.push(new Vector3().fromBufferAttribute(edges, i).applyMatrix4(matrix));
    }
  }
  return points;
}

/** The edges of all parts in one buffer, drawn once for each emphasis. */
export class PartEdges {
  readonly group = new Group();
  private readonly ranges: Range[] = [];
  private readonly lines = {} as Record<Emphasis, LineSegments<BufferGeometry, LineBasicMaterial>>;

  constructor(parts: Part[]) {
    const points: Vector3[] = [];
    for (const part of parts) {
      const own = edgePoints(part);
      this.ranges.push({ part, first: points.length, count: own.length });
      for (const point of own) points.push(point);
    }
    const place = new BufferGeometry().setFromPoints(points).getAttribute("position");
    for (const emphasis of ["faint", "plain", "strong"] as const) {
      const geometry = new BufferGeometry().setAttribute("position", place);
      const material = new LineBasicMaterial({ transparent: true, depthWrite: false });
      this.lines[emphasis] = new LineSegments(geometry, material);
      this.lines[emphasis].frustumCulled = false;
      this.group.add(this.lines[emphasis]);
    }
  }

  show(shown: (part: Part) => boolean, emphasis: (part: Part) => Emphasis, theme: Theme): void {
    const indices: Record<Emphasis, number[]> = { faint: [], plain: [], strong: [] };
    for (const { part, first, count } of this.ranges) {
      if (!shown(part)) continue;
      const list = indices[emphasis(part)];
      for (let i = first; i < first + count; ++i) list.push(i);
    }
    for (const [how, lines] of Object.entries(this.lines) as [Emphasis, LineSegments<BufferGeometry, LineBasicMaterial>][]) {
      lines.geometry.setIndex(indices[how]);
      lines.visible = indices[how].length > 0;
      lines.material.color.copy(how === "strong" ? theme.accent : theme.edge);
      lines.material.opacity = Math.min(1, theme.edgeStrength * STRENGTH[how]);
    }
  }
}
