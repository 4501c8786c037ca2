import { Box3, MathUtils, type PerspectiveCamera, Vector3 } from "three";

/** Where the camera stands: it looks from `eye` at `target`. */
export interface Outlook {
  eye: Vector3;
  target: Vector3;
}

export const DIRECTIONS = ["iso", "front", "side", "top"] as const;
export type Direction = (typeof DIRECTIONS)[number];

/** From the target to the eye, in the axes of the vehicle: x to the rear, y to the right, z up. */
const TO_EYE: Record<Direction, [number, number, number]> = {
  iso: [-0.62, -0.78, 0.5],
  front: [-1, 0, 0],
  side: [0, -1, 0],
  top: [0, -0.001, 1],
};

export const towards = (direction: Direction, vehicle: (point: Vector3) => Vector3): Vector3 =>
  vehicle(new Vector3(...TO_EYE[direction])).normalize();

function cornersOf({ min, max }: Box3): Vector3[] {
  const xs = [min.x, max.x];
  return xs.flatMap((x) => [min.y, max.y].flatMap((y) => [min.z, max.z].map((z) => new Vector3(x, y, z))));
}

/** The nearest outlook in a direction that has the whole box in the picture, with some air around it. */
export function fitBox(box: Box3, toEye: Vector3, camera: PerspectiveCamera): Outlook {
  const target = box.getCenter(new Vector3());
  const right = new Vector3(0, 1, 0).cross(toEye).normalize();
  const up = toEye.clone().cross(right).normalize();
  const tangent = Math.tan(MathUtils.degToRad(camera.fov / 2)) * 0.92;
  let distance = 0;
  for (const corner of cornersOf(box)) {
    corner.sub(target);
    const wide = Math.abs(corner.dot(right)) / (tangent * camera.aspect);
    const high = Math.abs(corner.dot(up)) / tangent;
    distance = Math.max(distance, Math.max(wide, high) + corner.dot(toEye));
  }
  return { target, eye: target.clone().addScaledVector(toEye, Math.max(distance, 1e-4)) };
}

/** Between two outlooks, `part` from 0 to 1: the eye swings around the target. */
export function between(from: Outlook, to: Outlook, part: number): Outlook {
  const target = from.target.clone().lerp(to.target, part);
  const start = from.eye.clone().sub(from.target);
  const end = to.eye.clone().sub(to.target);
  const length = MathUtils.lerp(start.length(), end.length(), part);
  const offset = start.normalize().lerp(end.normalize(), part);
  if (offset.lengthSq() < 1e-6) offset.copy(end);
  return { target, eye: offset.setLength(length).add(target) };
}
