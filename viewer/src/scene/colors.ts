import { Color } from "three";
import type { Store } from "../store";
import type { Theme } from "./theme";

/** Marks selected items and all that they hold. */
export function markSelected(store: Store): Uint8Array {
  const { items } = store.model;
  const marked = new Uint8Array(items.size);
  for (const item of store.selectedItems) marked.fill(1, item, items.end[item]);
  return marked;
}

/** The colour of each item, as three numbers in linear light. */
export class ItemColors {
  private readonly values: Float32Array;

  constructor(store: Store, theme: Theme) {
    const { model, display } = store;
    const known = new Map<string, Color>();
    const parse = (text: string): Color => {
      let color = known.get(text);
      if (!color) known.set(text, (color = new Color(text)));
      return color;
    };
    const selected = markSelected(store);
    const { element, source, color, shape } = model.page.items;
    this.values = new Float32Array(3 * model.items.size);
    for (let item = 0; item < model.items.size; ++item) {
      if (shape[item]! < 0) continue;
      const kind = model.shapeKind(item);
      let text =
        color[item] ?? (kind === "polyline" ? theme.line : kind === "point" ? theme.point : theme.solid);
      if (display.coloring === "findings") {
        const own = element[item]!;
        const template = source[item]!;
        const severity =
          (own >= 0 ? model.severity(own) : null) ?? (template >= 0 ? model.severity(template) : null);
        text = severity ? theme[severity] : theme.plain;
      }
      const value = parse(selected[item] ? theme.selection : text);
      this.values[3 * item] = value.r;
      this.values[3 * item + 1] = value.g;
      this.values[3 * item + 2] = value.b;
    }
  }

  put(item: number, target: Float32Array, at: number): void {
    target[at] = this.values[3 * item]!;
    target[at + 1] = this.values[3 * item + 1]!;
    target[at + 2] = this.values[3 * item + 2]!;
  }
}
