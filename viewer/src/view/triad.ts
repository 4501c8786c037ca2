import { Matrix4, type PerspectiveCamera, Vector3 } from "three";

const AXES = ["x", "y", "z"] as const;
const REACH = 26;
const CENTRE = 36;
const SVG = "http://www.w3.org/2000/svg";

/** The axes of the vehicle in a corner of the picture. */
export class Triad {
  private readonly axes: { name: string; direction: Vector3; line: SVGElement; text: SVGElement }[];
  private readonly turn = new Matrix4();

  constructor(svg: SVGSVGElement, vehicle: (point: Vector3) => Vector3) {
    this.axes = AXES.map((name, at) => {
      const line = document.createElementNS(SVG, "line");
      const text = document.createElementNS(SVG, "text");
      for (const element of [line, text]) element.setAttribute("class", `axis-${name}`);
      text.textContent = name.toUpperCase();
      line.setAttribute("x1", String(CENTRE));
      line.setAttribute("y1", String(CENTRE));
      svg.append(line, text);
      return { name, direction: vehicle(new Vector3().setComponent(at, 1)).normalize(), line, text };
    });
  }

  draw(camera: PerspectiveCamera): void {
    this.turn.extractRotation(camera.matrixWorldInverse);
    for (const { direction, line, text } of this.axes) {
      const seen = direction.clone().applyMatrix4(this.turn);
      line.setAttribute("x2", String(CENTRE + seen.x * REACH));
      line.setAttribute("y2", String(CENTRE - seen.y * REACH));
      text.setAttribute("x", String(CENTRE + seen.x * (REACH + 8)));
      text.setAttribute("y", String(CENTRE - seen.y * (REACH + 8)));
    }
  }
}
