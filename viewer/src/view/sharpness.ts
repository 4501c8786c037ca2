import type { WebGLRenderer } from "three";

const SLOW_MS = 36;
const REST_MS = 180;
const LEAST = 0.5;

/** Draws coarser while things move on a machine that cannot keep up, and sharp again once they rest. */
export class Sharpness {
  private last = 0;
  private mean = 16;
  private ratio: number;
  private rest = 0;

  constructor(
    private readonly renderer: WebGLRenderer,
    private readonly redraw: () => void,
  ) {
    this.ratio = this.full;
    renderer.setPixelRatio(this.ratio);
  }

  /** To be called before each frame. */
  frame(now: number): void {
    const passed = now - this.last;
    this.last = now;
    if (passed < REST_MS) this.mean += (passed - this.mean) * 0.25;
    if (this.mean > SLOW_MS && this.ratio > LEAST) {
      this.use(Math.max(LEAST, this.ratio * 0.75));
      this.mean = SLOW_MS * 0.8;
    }
    clearTimeout(this.rest);
    if (this.ratio < this.full) this.rest = window.setTimeout(() => this.sharpen(), REST_MS);
  }

  private get full(): number {
    return Math.min(window.devicePixelRatio, 2);
  }

  private sharpen(): void {
    this.use(this.full);
    this.mean = 16;
    this.redraw();
  }

  private use(ratio: number): void {
    this.ratio = ratio;
    this.renderer.setPixelRatio(ratio);
  }
}
