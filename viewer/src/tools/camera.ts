import type { Box } from "../model/transform";
import { between, fit, pan, standardViews, turn, zoom, type StandardView, type View } from "../model/view";
import type { World } from "../scene/world";

const travelTime = 220; // milliseconds

/** Moves the view, at once or over a short time. */
export class Camera {
  private travel: { from: View; to: View; began: number } | null = null;

  constructor(
    private readonly world: World,
    /** What "everything" is: the box of what is shown. */
    private readonly shown: () => Box,
  ) {}

  get view(): View {
    return this.travel?.to ?? this.world.currentView;
  }

  /** At once: the hand leads. */
  set(view: View): void {
    this.travel = null;
    this.world.setView(view);
  }

  turn(right: number, up: number): void {
    this.set(turn(this.view, right, up));
  }

  pan(right: number, up: number): void {
    this.set(pan(this.view, right, up));
  }

  zoom(factor: number, x = 0, y = 0): void {
    this.set(zoom(this.view, factor, x, y));
  }

  look(name: StandardView): void {
    this.travelTo(fit({ ...this.view, ...standardViews[name] }, this.shown(), this.world.aspect));
  }

  fit(box = this.shown()): void {
    this.travelTo(fit(this.view, box.isEmpty ? this.shown() : box, this.world.aspect));
  }

  setPerspective(perspective: boolean): void {
    this.set({ ...this.view, perspective });
  }

  private travelTo(to: View): void {
    if (matchMedia("(prefers-reduced-motion: reduce)").matches) {
      this.set(to);
      return;
    }
    const travel = { from: this.world.currentView, to, began: performance.now() };
    this.travel = travel;
    const step = (): void => {
      if (this.travel !== travel) return;
      const part = Math.min(1, (performance.now() - travel.began) / travelTime);
      if (part === 1) this.travel = null;
      this.world.setView(between(travel.from, to, part * part * (3 - 2 * part)));
      if (part < 1) requestAnimationFrame(step);
    };
    requestAnimationFrame(step);
  }
}
