// Writes a plant as a glTF binary, the way biwplan does: mm with Z up below one root that turns it.

const BOX_FACES = [[0, 1], [0, -1], [1, 1], [1, -1], [2, 1], [2, -1]];

function boxMesh([low, high]) {
  const positions = [], normals = [], indices = [];
  for (const [axis, side] of BOX_FACES) {
    const [u, v] = side > 0 ? [(axis + 1) % 3, (axis + 2) % 3] : [(axis + 2) % 3, (axis + 1) % 3];
    const first = positions.length / 3;
    for (const [a, b] of [[0, 0], [1, 0], [1, 1], [0, 1]]) {
      const point = [];
      point[axis] = side > 0 ? high[axis] : low[axis];
      point[u] = a ? high[u] : low[u];
      point[v] = b ? high[v] : low[v];
      positions.push(...point);
      normals.push(...[0, 1, 2].map((i) => (i === axis ? side : 0)));
    }
    indices.push(...[0, 1, 2, 0, 2, 3].map((i) => first + i));
  }
  return { positions, normals, indices };
}

/** A grid of points around an axis: a sphere, or a tube along x. */
function roundMesh(rings, sectors, point) {
  const positions = [], normals = [], indices = [];
  for (let ring = 0; ring <= rings; ++ring) {
    for (let sector = 0; sector <= sectors; ++sector) {
      const [place, normal] = point(ring / rings, (sector / sectors) * 2 * Math.PI);
      positions.push(...place);
      normals.push(...normal);
      if (ring === rings || sector === sectors) continue;
      const at = ring * (sectors + 1) + sector;
      const up = at + sectors + 1;
      indices.push(at, at + 1, up, at + 1, up + 1, up);
    }
  }
  return { positions, normals, indices };
}

const sphereMesh = (radius) => roundMesh(12, 16, (part, angle) => {
  const tilt = part * Math.PI;
  const normal = [Math.sin(tilt) * Math.cos(angle), Math.sin(tilt) * Math.sin(angle), Math.cos(tilt)];
  return [normal.map((value) => value * radius), normal];
});

const tubeMesh = (length, radius) => roundMesh(6, 10, (part, angle) => {
  const normal = [0, Math.cos(angle), Math.sin(angle)];
  return [[(part - 0.5) * length, normal[1] * radius, normal[2] * radius], normal];
});

class Writer {
  json = {
    asset: { version: "2.0" }, scene: 0, scenes: [], nodes: [], meshes: [], materials: [], accessors: [],
    bufferViews: [], buffers: [],
  };
  chunks = [];
  length = 0;

  accessor(values, type, target) {
    const array = target === 34963 ? new Uint32Array(values) : new Float32Array(values);
    this.json.bufferViews.push({ buffer: 0, byteOffset: this.length, byteLength: array.byteLength, target });
    this.chunks.push(Buffer.from(array.buffer));
    this.length += array.byteLength;
    const width = type === "VEC3" ? 3 : 1;
    const column = (i) => values.filter((_value, at) => at % width === i);
    const bounds = width === 3 ? {
      min: [0, 1, 2].map((i) => column(i).reduce((low, value) => Math.min(low, value), Infinity)),
      max: [0, 1, 2].map((i) => column(i).reduce((high, value) => Math.max(high, value), -Infinity)),
    } : {};
    const componentType = target === 34963 ? 5125 : 5126;
    return this.json.accessors.push({ bufferView: this.json.bufferViews.length - 1, componentType, count: values.length / width, type, ...bounds }) - 1;
  }

  mesh({ positions, normals, indices }, colour) {
    const material = this.json.materials.push({ pbrMetallicRoughness: { baseColorFactor: [...colour, 1] } }) - 1;
    const attributes = { POSITION: this.accessor(positions, "VEC3", 34962), NORMAL: this.accessor(normals, "VEC3", 34962) };
    return this.json.meshes.push({ primitives: [{ attributes, indices: this.accessor(indices, "SCALAR", 34963), material }] }) - 1;
  }

  bytes() {
    this.json.buffers = [{ byteLength: this.length }];
    const text = Buffer.from(JSON.stringify(this.json));
    const json = Buffer.concat([text, Buffer.alloc(-text.length & 3, " ")]);
    const binary = Buffer.concat(this.chunks);
    const head = Buffer.alloc(20);
    [0x46546c67, 2, 28 + json.length + binary.length, json.length, 0x4e4f534a].forEach((word, at) => head.writeUInt32LE(word, at * 4));
    const between = Buffer.alloc(8);
    [binary.length, 0x004e4942].forEach((word, at) => between.writeUInt32LE(word, at * 4));
    return Buffer.concat([head, json, between, binary]);
  }
}

export function writeGlb({ extras, parts, welds, labels }) {
  const writer = new Writer();
  const { nodes } = writer.json;
  nodes.push({ name: "plant", matrix: [0.001, 0, 0, 0, 0, 0, -0.001, 0, 0, 0.001, 0, 0, 0, 0, 0, 1], children: [] });
  const add = (node) => nodes[0].children.push(nodes.push(node) - 1);
  for (const { box, ...part } of parts) add({ name: part.name, mesh: writer.mesh(boxMesh(box), [0.6, 0.6, 0.6]), extras: part });
  const sphere = writer.mesh(sphereMesh(3), [0, 0.5, 0.4]);
  const tube = writer.mesh(tubeMesh(60, 2), [0, 0.5, 0.4]);
  for (const weld of welds) {
    add({ name: weld.name, mesh: weld.type === "seam" ? tube : sphere, translation: weld.position, extras: weld });
  }
  for (const label of labels) add({ name: label.text, translation: label.position, extras: label });
  writer.json.scenes.push({ nodes: [0], extras });
  return writer.bytes();
}
