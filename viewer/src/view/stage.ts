import {
  type Box3,
  DirectionalLight,
  HemisphereLight,
  PerspectiveCamera,
  Scene,
  Sphere,
  Vector3,
  WebGLRenderer,
} from "three";
import { OrbitControls } from "three/addons/controls/OrbitControls.js";

import { between, fitBox, type Outlook } from "./camera";
import { Sharpness } from "./sharpness";

const FLIGHT_MS = 380;

const calm = matchMedia("(prefers-reduced-motion: reduce)");
const eased = (part: number): number => 1 - (1 - part) ** 3;

interface Flight {
  from: Outlook;
  to: Outlook;
  start: number;
}

/** Whether there is no GPU: smooth edges would take longer than everything else. */
function drawnBySoftware(): boolean {
  const gl = document.createElement("canvas").getContext("webgl2");
  const names = gl?.getExtension("WEBGL_debug_renderer_info");
  const name: unknown = names && gl?.getParameter(names.UNMASKED_RENDERER_WEBGL);
  gl?.getExtension("WEBGL_lose_context")?.loseContext();
  return /swiftshader|llvmpipe|software|basic render/i.test(String(name));
}

/** Camera, lights and the canvas; draws only when something changed. */
export class Stage {
  readonly scene = new Scene();
  readonly camera = new PerspectiveCamera(30, 1, 0.01, 100);
  readonly controls: OrbitControls;
  private readonly renderer: WebGLRenderer;
  private readonly sharpness: Sharpness;
  private readonly drawn: (() => void)[] = [];
  private readonly bounds = new Sphere(new Vector3(), 1);
  private flight: Flight | null = null;
  private waiting = false;

  /** Fails where the browser has no WebGL. */
  constructor(readonly canvas: HTMLCanvasElement) {
    this.renderer = new WebGLRenderer({ canvas, antialias: !drawnBySoftware(), alpha: true });
    this.sharpness = new Sharpness(this.renderer, () => this.redraw());
    this.controls = new OrbitControls(this.camera, canvas);
    this.controls.enableDamping = !calm.matches;
    this.controls.dampingFactor = 0.14;
    this.controls.zoomToCursor = true;
    this.controls.addEventListener("change", () => this.redraw());
    this.controls.addEventListener("start", () => (this.flight = null));
    this.light();
    new ResizeObserver(() => this.resize()).observe(canvas.parentElement!);
    this.resize();
  }

  onDrawn(listener: () => void): void {
    this.drawn.push(listener);
  }

  redraw(): void {
    if (this.waiting) return;
    this.waiting = true;
    requestAnimationFrame((now) => this.frame(now));
  }

  /** Everything the camera may come to see. */
  setBounds(box: Box3): void {
    box.getBoundingSphere(this.bounds);
    this.controls.minDistance = this.bounds.radius * 0.004;
    this.controls.maxDistance = this.bounds.radius * 12;
  }

  get size(): number {
    return this.bounds.radius;
  }

  get outlook(): Outlook {
    return { eye: this.camera.position.clone(), target: this.controls.target.clone() };
  }

  fit(box: Box3, toEye = this.toEye()): void {
    this.fly(fitBox(box, toEye, this.camera));
  }

  toEye(): Vector3 {
    return this.camera.position.clone().sub(this.controls.target).normalize();
  }

  fly(to: Outlook): void {
    if (calm.matches) return this.stand(to);
    this.flight = { from: this.outlook, to, start: performance.now() };
    this.redraw();
  }

  stand({ eye, target }: Outlook): void {
    this.flight = null;
    this.camera.position.copy(eye);
    this.controls.target.copy(target);
    this.controls.update();
    this.redraw();
  }

  /** World metres across one pixel, one metre before the camera. */
  get metresPerPixel(): number {
    return (2 * Math.tan((this.camera.fov * Math.PI) / 360)) / Math.max(this.canvas.clientHeight, 1);
  }

  /** Pixels of the drawing buffer for one of the page. */
  get ratio(): number {
    return this.renderer.getPixelRatio();
  }

  /** The picture as it is now, for paper. */
  picture(): string {
    this.draw();
    return this.canvas.toDataURL();
  }

  private light(): void {
    const key = new DirectionalLight(0xffffff, 1.7);
    key.position.set(-0.7, 1, 0.45);
    const fill = new DirectionalLight(0xffffff, 0.5);
    fill.position.set(0.8, -0.2, 0.6);
    this.camera.add(key, key.target, fill, fill.target);
    this.scene.add(this.camera, new HemisphereLight(0xffffff, 0x8c96a4, 1.25));
  }

  private resize(): void {
    const { clientWidth, clientHeight } = this.canvas.parentElement!;
    if (clientWidth === 0 || clientHeight === 0) return;
    this.renderer.setSize(clientWidth, clientHeight);
    this.camera.aspect = clientWidth / clientHeight;
    this.camera.updateProjectionMatrix();
    this.redraw();
  }

  private frame(now: number): void {
    this.waiting = false;
    this.advance(now);
    this.controls.update();
    this.sharpness.frame(now);
    this.draw();
  }

  private advance(now: number): void {
    if (!this.flight) return;
    const { from, to, start } = this.flight;
    const part = Math.min((now - start) / FLIGHT_MS, 1);
    const { eye, target } = between(from, to, eased(Math.max(part, 0)));
    this.camera.position.copy(eye);
    this.controls.target.copy(target);
    if (part >= 1) this.flight = null;
    this.redraw();
  }

  private draw(): void {
    const distance = this.camera.position.distanceTo(this.bounds.center);
    this.camera.near = Math.max(distance - this.bounds.radius * 1.1, this.bounds.radius * 0.001);
    this.camera.far = distance + this.bounds.radius * 1.1;
    this.camera.updateProjectionMatrix();
    for (const listener of this.drawn) listener();
    this.renderer.render(this.scene, this.camera);
  }
}
