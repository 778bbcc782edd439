import { formatNumber } from "../model/numbers";
import { sectionAt, type Section, type SectionAxis } from "../model/section";
import { button, element } from "../panels/dom";
import type { World } from "../scene/world";
import type { Store } from "../store";

const steps = 1000;

/** Moves the section plane. */
export class SectionPanel {
  readonly root = element("section", { class: "tool-panel", "aria-label": "Section plane", hidden: true });
  private readonly slider = element("input", {
    type: "range",
    min: 0,
    max: steps,
    "aria-label": "Place of the plane",
  });
  private readonly place = element("output", { class: "place" });
  private readonly axes: HTMLButtonElement[];

  constructor(
    private readonly store: Store,
    private readonly world: World,
  ) {
    this.axes = (["x", "y", "z"] as const).map((axis: SectionAxis) =>
      button(axis.toUpperCase(), () => {
        this.change({ axis });
      }),
    );
    this.slider.addEventListener("input", () => {
      this.change({ place: Number(this.slider.value) / steps });
    });
    const group = element(
      "div",
      { class: "segments", role: "group", "aria-label": "Axis of the section plane" },
      ...this.axes,
    );
    this.root.append(
      group,
      this.slider,
      this.place,
      button("Flip", () => {
        if (store.section) this.change({ flipped: !store.section.flipped });
      }),
      button("Close", () => {
        store.setSection(null);
      }),
    );
    store.listen(["section"], () => {
      this.draw();
    });
  }

  private change(change: Partial<Section>): void {
    if (this.store.section) this.store.setSection({ ...this.store.section, ...change });
  }

  private draw(): void {
    const { section } = this.store;
    this.root.hidden = !section;
    if (!section) return;
    this.slider.value = String(Math.round(section.place * steps));
    const text = `${section.axis} = ${formatNumber(sectionAt(section, this.world.wholeBox), 6)}`;
    this.place.textContent = text;
    this.slider.setAttribute("aria-valuetext", text);
    this.axes.forEach((axis, index) => {
      axis.setAttribute("aria-pressed", String("xyz"[index] === section.axis));
    });
  }
}
