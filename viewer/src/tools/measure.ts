import { formatNumber } from "../model/numbers";
import { length, subtract, type Vec3 } from "../model/transform";
import { project } from "../model/view";
import { button, element } from "../panels/dom";
import type { World } from "../scene/world";
import type { Store } from "../store";

/** The distance between two picked vertices, in doubles. */
export class MeasureTool {
  readonly root = element("section", { class: "tool-panel", "aria-label": "Measuring", hidden: true });
  private readonly text = element("div", { class: "measured", "aria-live": "polite" });
  private readonly label = element("div", { class: "distance", "aria-hidden": "true", hidden: true });
  private ends: Vec3[] = [];

  constructor(
    store: Store,
    private readonly world: World,
    stage: HTMLElement,
  ) {
    this.root.append(
      this.text,
      button("Clear", () => {
        this.clear();
      }),
      button("Close", () => {
        store.setTool("select");
      }),
    );
    stage.append(this.label);
    store.listen(["tool"], () => {
      const active = store.tool === "measure";
      this.root.hidden = !active;
      this.clear();
    });
  }

  private clear(): void {
    this.ends = [];
    this.show();
  }

  pick(vertex: Vec3): void {
    this.ends = this.ends.length === 2 ? [vertex] : [...this.ends, vertex];
    this.show();
  }

  private show(): void {
    this.world.overlays.setMeasured(this.ends, this.world.theme.measure);
    this.world.invalidate();
    const [from, to] = this.ends;
    const place = (at: Vec3): string => at.map((value) => formatNumber(value)).join(", ");
    if (!from) {
      this.text.replaceChildren("Pick the first vertex.");
    } else if (!to) {
      this.text.replaceChildren(`From ${place(from)}. Pick the second vertex.`);
    } else {
      const across = subtract(to, from);
      this.text.replaceChildren(
        element("strong", { class: "result" }, formatNumber(length(across))),
        ` Δx ${formatNumber(across[0])}, Δy ${formatNumber(across[1])}, Δz ${formatNumber(across[2])}`,
        element("br"),
        `${place(from)} to ${place(to)}`,
      );
      this.label.textContent = formatNumber(length(across), 6);
    }
    this.moveLabel();
  }

  /** Keeps the distance beside its line; called after each drawing. */
  moveLabel(): void {
    const [from, to] = this.ends;
    const { canvas, currentView } = this.world;
    const middle: Vec3 | null =
      from && to ? [(from[0] + to[0]) / 2, (from[1] + to[1]) / 2, (from[2] + to[2]) / 2] : null;
    const seen = middle ? project(currentView, middle) : null;
    this.label.hidden = !seen;
    if (!seen) return;
    const { clientWidth, clientHeight } = canvas;
    this.label.style.transform = `translate(${clientWidth / 2 + seen.x * clientHeight}px, ${clientHeight / 2 - seen.y * clientHeight}px)`;
  }
}
