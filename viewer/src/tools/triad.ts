import { basis, type View } from "../model/view";
import { svg } from "../panels/dom";

const reach = 30;
const half = 44;

/** The axes of the document in a corner of the picture. */
export class Triad {
  readonly root = svg("svg", {
    class: "triad",
    viewBox: `${-half} ${-half} ${2 * half} ${2 * half}`,
    "aria-hidden": "true",
  });
  private readonly arms = ["x", "y", "z"].map((axis) => {
    const line = svg("line", { x1: 0, y1: 0, class: axis });
    const label = svg("text", { class: axis }, document.createTextNode(axis.toUpperCase()));
    return { line, label, group: svg("g", {}, line, label) };
  });

  draw(view: View): void {
    const { right, up, back } = basis(view);
    this.arms.forEach(({ line, label }, axis) => {
      const x = reach * right[axis]!;
      const y = -reach * up[axis]!;
      line.setAttribute("x2", String(x));
      line.setAttribute("y2", String(y));
      label.setAttribute("x", String(1.28 * x));
      label.setAttribute("y", String(1.28 * y));
    });
    // what is nearer is drawn last
    const order = [...this.arms.keys()].sort((a, b) => back[a]! - back[b]!);
    this.root.replaceChildren(...order.map((axis) => this.arms[axis]!.group));
  }
}
