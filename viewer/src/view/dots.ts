import { BufferGeometry, DynamicDrawUsage, Float32BufferAttribute, Points, ShaderMaterial } from "three";

import type { Weld } from "../scene/model";
import type { Theme } from "./theme";

const VERTEX = `
  attribute float radius;
  uniform float leastRadius;
  uniform float pixelsPerMetre;
  varying vec3 vColour;
  varying float vSoft;
  void main() {
    vColour = color;
    vec4 seen = modelViewMatrix * vec4(position, 1.0);
    float size = max(radius, leastRadius * -seen.z) * pixelsPerMetre / -seen.z;
    vSoft = 1.0 / max(size, 1.0);
    gl_PointSize = 2.0 * size;
    gl_Position = projectionMatrix * seen;
  }`;

/** A lit ball with a darker rim, so that it stands out on every part. */
const FRAGMENT = `
  varying vec3 vColour;
  varying float vSoft;
  uniform float strength;
  const vec3 LIGHT = vec3(-0.42, 0.76, 0.5);
  void main() {
    vec2 at = vec2(2.0, -2.0) * gl_PointCoord + vec2(-1.0, 1.0);
    float off = length(at);
    if (off > 1.0) discard;
    vec3 normal = vec3(at, sqrt(1.0 - off * off));
    vec3 lit = vColour * (0.72 + 0.42 * max(dot(normal, LIGHT), 0.0));
    gl_FragColor = vec4(lit * (1.0 - 0.45 * smoothstep(0.6, 1.0, off)), strength * smoothstep(1.0, 1.0 - 1.5 * vSoft, off));
    #include <colorspace_fragment>
  }`;

/** Shared by all that draws welds. */
export interface Scale {
  /** Radius of the smallest weld one metre before the eye, in metres. */
  least: { value: number };
  /** Pixels of the drawing buffer across one metre, one metre before the eye. */
  pixelsPerMetre: { value: number };
}

/** Of what is seen through something solid. */
const THROUGH = 0.4;

/** Round welds seen from afar: one point each, however many there are. */
export class WeldDots {
  readonly points: Points<BufferGeometry, ShaderMaterial>;
  /** The same once more, for those behind something solid. */
  readonly through: Points<BufferGeometry, ShaderMaterial>;

  constructor(
    private readonly welds: Weld[],
    scale: Scale,
    order: number,
  ) {
    const geometry = new BufferGeometry();
    for (const [name, width] of [["position", 3], ["color", 3], ["radius", 1]] as const) {
      const attribute = new Float32BufferAttribute(new Float32Array(welds.length * width), width);
      geometry.setAttribute(name, attribute.setUsage(DynamicDrawUsage));
    }
    this.points = new Points(geometry, dotMaterial(scale, 1));
    this.through = new Points(geometry, dotMaterial(scale, THROUGH));
    this.through.material.depthTest = false;
    for (const points of [this.points, this.through]) points.frustumCulled = false;
    this.through.renderOrder = order;
    this.points.renderOrder = order + 1;
  }

  fill(chosen: ReadonlySet<Weld>, theme: Theme): void {
    const { position, color, radius } = this.points.geometry.attributes;
    let count = 0;
    for (const weld of this.welds) {
      if (!chosen.has(weld)) continue;
      const { r, g, b } = theme.status[weld.status];
      position!.setXYZ(count, weld.centre.x, weld.centre.y, weld.centre.z);
      color!.setXYZ(count, r, g, b);
      radius!.setX(count++, weld.radius);
    }
    this.points.geometry.setDrawRange(0, count);
    for (const attribute of [position!, color!, radius!]) attribute.needsUpdate = true;
  }
}

function dotMaterial({ least, pixelsPerMetre }: Scale, strength: number): ShaderMaterial {
  return new ShaderMaterial({
    vertexShader: VERTEX, fragmentShader: FRAGMENT, vertexColors: true, transparent: true, depthWrite: strength === 1,
    uniforms: { leastRadius: least, pixelsPerMetre, strength: { value: strength } },
  });
}
