import { formatWithin } from "../model/numbers";
import { add, length, scale, subtract, type Vec3 } from "../model/transform";
import { project } from "../model/view";
import { button, element } from "../panels/dom";
import type { Vertex } from "../picking/picker";
import type { World } from "../scene/world";
import type { Store } from "../store";

/** The distance between two picked vertices, in doubles. */
export class MeasureTool {
  readonly root = element("section", { class: "tool-panel", "aria-label": "Measuring", hidden: true });
  private readonly text = element("div", { class: "measured", "aria-live": "polite" });
  private readonly label = element("div", { class: "distance", "aria-hidden": "true", hidden: true });
  private ends: Vertex[] = [];

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

  pick(vertex: Vertex): void {
    this.ends = this.ends.length === 2 ? [vertex] : [...this.ends, vertex];
    this.show();
  }

  private show(): void {
    const [from, to] = this.ends;
    this.world.overlays.setMeasured(
      this.ends.map(({ place }) => place),
      this.world.theme.measure,
    );
    this.world.invalidate();
    const precision = Math.max(0, ...this.ends.map((end) => end.precision));
    const number = (value: number): string => formatWithin(value, precision);
    const text = ({ place }: Vertex): string => place.map(number).join(", ");
    if (!from) {
      this.text.replaceChildren("Pick the first vertex.");
    } else if (!to) {
      this.text.replaceChildren(`From ${text(from)}. Pick the second vertex.`);
    } else {
      const across = subtract(to.place, from.place);
      this.label.textContent = number(length(across));
      this.text.replaceChildren(
        element("strong", { class: "result" }, this.label.textContent),
        ` Δx ${number(across[0])}, Δy ${number(across[1])}, Δz ${number(across[2])}`,
        element("br"),
        `${text(from)} to ${text(to)}`,
      );
    }
    this.moveLabel();
  }

  /** Keeps the distance beside its line; called after each drawing. */
  moveLabel(): void {
    const [from, to] = this.ends;
    const { canvas, currentView } = this.world;
    const middle: Vec3 | null = from && to ? scale(add(from.place, to.place), 0.5) : null;
    const seen = middle ? project(currentView, middle) : null;
    this.label.hidden = !seen;
    if (!seen) return;
    const { clientWidth, clientHeight } = canvas;
    this.label.style.transform = `translate(${clientWidth / 2 + seen.x * clientHeight}px, ${clientHeight / 2 - seen.y * clientHeight}px)`;
  }
}
