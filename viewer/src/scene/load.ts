import { Box3, Color, Matrix4, Mesh, type Object3D, Vector3 } from "three";
import { GLTFLoader } from "three/addons/loaders/GLTFLoader.js";

import { type Extras, isRecord, numberOrNull, pointOrNull, textOf, textOrNull, textsOf } from "./extras";
import { type Activity, type Part, type Scene, type Shape, type Status, STATUSES, type Weld } from "./model";
import { brokenScene } from "./payload";

function colourOf(extras: Extras, mesh: Mesh): Color {
  const given = textOf(extras.color);
  if (/^#[0-9a-f]{6}$/i.test(given)) return new Color(given);
  const material = Array.isArray(mesh.material) ? mesh.material[0] : mesh.material;
  const colour = (material as { color?: unknown } | undefined)?.color;
  return colour instanceof Color ? colour : new Color("#9aa5b1");
}

function shapesOf(node: Object3D): Shape[] {
  const shapes: Shape[] = [];
  node.traverse((below) => {
    if (!(below instanceof Mesh) || !below.geometry.getAttribute("position")) return;
    shapes.push({ geometry: below.geometry, matrix: below.matrixWorld, colour: colourOf(node.userData, below) });
  });
  return shapes;
}

const isFinitePoint = ({ x, y, z }: Vector3): boolean => Number.isFinite(x + y + z);

function placeOf(node: Object3D, toWorld: Matrix4): Vector3 {
  const position = pointOrNull(node.userData.position);
  const place = position
    ? new Vector3(...position).applyMatrix4(toWorld)
    : new Vector3().setFromMatrixPosition(node.matrixWorld);
  return isFinitePoint(place) ? place : new Vector3();
}

function centreOf(shapes: Shape[], fallback: Vector3): Vector3 {
  const box = new Box3();
  for (const { geometry, matrix } of shapes) {
    if (!geometry.boundingBox) geometry.computeBoundingBox();
    box.union(geometry.boundingBox!.clone().applyMatrix4(matrix));
  }
  const centre = box.getCenter(new Vector3());
  return box.isEmpty() || !isFinitePoint(centre) ? fallback : centre;
}

function statusOf(extras: Extras): Status {
  const given = STATUSES.find((status) => status === extras.status);
  if (given) return given;
  const count = textsOf(extras.activities).length;
  if (count > 1) return "several";
  return count === 1 || extras.assigned === true ? "assigned" : "unassigned";
}

function readPart(node: Object3D, index: number): Part {
  const extras: Extras = node.userData;
  return {
    index,
    id: textOf(extras.id) || textOf(extras.name) || `part ${index + 1}`,
    name: textOf(extras.name),
    number: textOf(extras.number),
    activities: textsOf(extras.activities),
    shown: extras.shown !== false,
    shapes: shapesOf(node),
  };
}

function readWeld(node: Object3D, index: number, toWorld: Matrix4): Weld {
  const extras: Extras = node.userData;
  const diameter = numberOrNull(extras.diameter);
  const shapes = shapesOf(node);
  return {
    index,
    id: textOf(extras.id) || textOf(extras.name) || `weld ${index + 1}`,
    name: textOf(extras.name),
    type: textOf(extras.type) || "weld",
    position: pointOrNull(extras.position),
    diameter,
    parts: textsOf(extras.parts),
    processType: textOrNull(extras.processType),
    activities: textsOf(extras.activities),
    status: statusOf(extras),
    shown: extras.shown !== false,
    shapes,
    centre: centreOf(shapes, placeOf(node, toWorld)),
    radius: ((diameter ?? 5) / 2) * toWorld.getMaxScaleOnAxis(),
  };
}

function readActivities(extras: Extras): Activity[] {
  const list = Array.isArray(extras.activities) ? extras.activities.filter(isRecord) : [];
  return list.map((activity) => ({
    id: textOf(activity.id) || textOf(activity.name),
    name: textOf(activity.name),
    kind: textOf(activity.kind) || "other",
    parent: textOrNull(activity.parent),
  }));
}

function readNodes(root: Object3D): Scene {
  root.updateMatrixWorld(true);
  const nodes: Record<string, Object3D[]> = { part: [], weld: [], label: [] };
  root.traverse((node) => nodes[textOf(node.userData.kind)]?.push(node));
  const first = nodes.part![0] ?? nodes.weld![0] ?? nodes.label![0];
  const toWorld = first?.parent?.matrixWorld ?? new Matrix4();
  const welds = nodes.weld!.map((node, index) => readWeld(node, index, toWorld));
  const byId = new Map(welds.map((weld) => [weld.id, weld]));
  const extras: Extras = root.userData;
  return {
    document: textOf(extras.document) || "Scene",
    program: textOf(extras.program),
    activities: readActivities(extras),
    parts: nodes.part!.map(readPart),
    welds,
    labels: nodes.label!.map((node) => {
      const weld = byId.get(textOf(node.userData.weld)) ?? null;
      return { text: textOf(node.userData.text), weld, anchor: weld?.centre ?? placeOf(node, toWorld) };
    }),
    toWorld,
  };
}

/** Fails with a SceneError when the file is no scene. */
export async function loadScene(file: ArrayBuffer): Promise<Scene> {
  try {
    const { scene } = await new GLTFLoader().parseAsync(file, "");
    return readNodes(scene);
  } catch (error) {
    const reason = error instanceof Error ? error.message.replace(/\.$/, "") : String(error);
    throw brokenScene(reason.replace(/^THREE\.GLTFLoader: /, ""));
  }
}
