// Mouse, touch and keys on the picture, as other CAD viewers have them: left drag turns, middle, right or shift with
// left pans, the wheel zooms at the pointer, two fingers pan and zoom.

import type { Camera } from "./camera";

/** A press that moves less, in pixels, is a click. */
const clickReach = 3;
const turnPerHeight = Math.PI; // radians
const zoomPerPixel = 0.0015;

export interface ClickListener {
  /** Places are in heights of the picture from its middle, up and to the right. */
  click(x: number, y: number): void;
  doubleClick(x: number, y: number): void;
}

interface Finger {
  x: number;
  y: number;
}

export class Navigation {
  private readonly fingers = new Map<number, Finger>();
  private pans = false;
  private moved = 0;

  constructor(
    private readonly canvas: HTMLCanvasElement,
    private readonly camera: Camera,
    private readonly listener: ClickListener,
  ) {
    canvas.addEventListener("pointerdown", (event) => {
      this.pressed(event);
    });
    canvas.addEventListener("pointermove", (event) => {
      this.dragged(event);
    });
    canvas.addEventListener("pointerup", (event) => {
      this.released(event);
    });
    canvas.addEventListener("pointercancel", (event) => {
      this.fingers.delete(event.pointerId);
    });
    canvas.addEventListener("dblclick", (event) => {
      const { x, y } = this.place(event.clientX, event.clientY);
      listener.doubleClick(x, y);
    });
    canvas.addEventListener("contextmenu", (event) => {
      event.preventDefault(); // the right button pans
    });
    canvas.addEventListener(
      "wheel",
      (event) => {
        this.wheeled(event);
      },
      { passive: false },
    );
    canvas.addEventListener("keydown", (event) => {
      if (this.keyPressed(event)) event.preventDefault();
    });
  }

  private get height(): number {
    return Math.max(1, this.canvas.clientHeight);
  }

  private place(clientX: number, clientY: number): Finger {
    const { left, top, width, height } = this.canvas.getBoundingClientRect();
    return { x: (clientX - left - width / 2) / height, y: (top + height / 2 - clientY) / height };
  }

  private pressed(event: PointerEvent): void {
    this.canvas.setPointerCapture(event.pointerId);
    this.canvas.focus({ preventScroll: true });
    if (event.button === 1) event.preventDefault(); // no automatic scrolling
    if (this.fingers.size === 0) this.moved = 0;
    else this.moved = Infinity; // a second finger: no click
    this.pans = event.button !== 0 || event.shiftKey;
    this.fingers.set(event.pointerId, { x: event.clientX, y: event.clientY });
  }

  private dragged(event: PointerEvent): void {
    const finger = this.fingers.get(event.pointerId);
    if (!finger) return;
    const dx = event.clientX - finger.x;
    const dy = event.clientY - finger.y;
    const others = [...this.fingers].filter(([id]) => id !== event.pointerId).map(([, at]) => at);
    const other = others[0];
    this.moved += Math.hypot(dx, dy);
    if (other) {
      const before = Math.hypot(finger.x - other.x, finger.y - other.y);
      const after = Math.hypot(event.clientX - other.x, event.clientY - other.y);
      const middle = this.place((event.clientX + other.x) / 2, (event.clientY + other.y) / 2);
      this.camera.pan(dx / 2 / this.height, -dy / 2 / this.height);
      if (before > 0 && after > 0) this.camera.zoom(before / after, middle.x, middle.y);
    } else if (this.moved < clickReach) {
      return; // not yet a drag; the place of the press stays the start
    } else if (this.pans) {
      this.camera.pan(dx / this.height, -dy / this.height);
    } else {
      this.camera.turn((dx / this.height) * turnPerHeight, (dy / this.height) * turnPerHeight);
    }
    finger.x = event.clientX;
    finger.y = event.clientY;
  }

  private released(event: PointerEvent): void {
    if (!this.fingers.delete(event.pointerId)) return;
    if (this.moved >= clickReach || event.button !== 0) return;
    const { x, y } = this.place(event.clientX, event.clientY);
    this.listener.click(x, y);
  }

  private wheeled(event: WheelEvent): void {
    event.preventDefault();
    const pixels = event.deltaY * (event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 30 : 1);
    const { x, y } = this.place(event.clientX, event.clientY);
    this.camera.zoom(Math.exp(Math.max(-400, Math.min(400, pixels)) * zoomPerPixel), x, y);
  }

  private keyPressed({ key, shiftKey, ctrlKey, altKey, metaKey }: KeyboardEvent): boolean {
    if (ctrlKey || altKey || metaKey) return false;
    const step = Math.PI / 24;
    const move = (x: number, y: number): boolean => {
      if (shiftKey) this.camera.pan(-x * 0.05, -y * 0.05);
      else this.camera.turn(x * step, -y * step);
      return true;
    };
    switch (key) {
      case "ArrowLeft":
        return move(-1, 0);
      case "ArrowRight":
        return move(1, 0);
      case "ArrowUp":
        return move(0, 1);
      case "ArrowDown":
        return move(0, -1);
      case "+":
      case "=":
        this.camera.zoom(1 / 1.2);
        return true;
      case "-":
      case "_":
        this.camera.zoom(1.2);
        return true;
      default:
        return false;
    }
  }
}
