import { BufferAttribute, BufferGeometry } from "three";

/**
 * A copy with positions, normals and an index alone, so that all parts can lie in one mesh. Where a
 * file gives no normals its faces are flat.
 */
export function drawable(given: BufferGeometry): BufferGeometry {
  const geometry = given.index && !given.getAttribute("normal") ? given.toNonIndexed() : given;
  const points = geometry.getAttribute("position");
  const own = new BufferGeometry();
  const place = new Float32Array(points.count * 3);
  for (let i = 0; i < points.count; ++i) place.set([points.getX(i), points.getY(i), points.getZ(i)], i * 3);
  own.setAttribute("position", new BufferAttribute(place, 3));
  own.setIndex(geometry.index?.clone() ?? [...Array(points.count).keys()]);
  const normals = geometry.getAttribute("normal");
  if (normals) own.setAttribute("normal", new BufferAttribute(Float32Array.from(normals.array), 3));
  else own.computeVertexNormals();
  return own;
}
