import type { BufferGeometry, Color, Matrix4, Vector3 } from "three";

export const STATUSES = ["unassigned", "assigned", "several"] as const;
export type Status = (typeof STATUSES)[number];

export interface Activity {
  id: string;
  name: string;
  kind: string;
  parent: string | null;
}

/** Triangles as they stand in the world (metres, Y up); many shapes share one geometry. */
export interface Shape {
  geometry: BufferGeometry;
  matrix: Matrix4;
  colour: Color;
}

export interface Part {
  index: number;
  id: string;
  name: string;
  number: string;
  activities: string[];
  shown: boolean;
  shapes: Shape[];
}

export interface Weld {
  index: number;
  id: string;
  name: string;
  type: string;
  /** In mm, in the axes of the vehicle. */
  position: [number, number, number] | null;
  /** In mm. */
  diameter: number | null;
  parts: string[];
  processType: string | null;
  activities: string[];
  status: Status;
  shown: boolean;
  shapes: Shape[];
  /** In the world. */
  centre: Vector3;
  /** Of the sphere or of the seam's tube, in the world. */
  radius: number;
}

export interface Label {
  text: string;
  weld: Weld | null;
  anchor: Vector3;
}

export interface Scene {
  document: string;
  program: string;
  activities: Activity[];
  parts: Part[];
  welds: Weld[];
  labels: Label[];
  /** From mm, Z up, to the world. */
  toWorld: Matrix4;
}

export type Item = { kind: "weld"; weld: Weld } | { kind: "part"; part: Part };

/** Locating and clamping points stand in the scene like welds, but are none. */
export const isWeld = (weld: Weld): boolean => weld.type !== "locating" && weld.type !== "clamping";

export const titleOf = (item: { id: string; name: string }): string => item.name || item.id;
