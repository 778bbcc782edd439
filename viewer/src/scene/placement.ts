import type { Model } from "../model/model";
import type { Shape } from "../model/shape";
import { Box, transformPoint, type Transform, type Vec3 } from "../model/transform";

/** Where the shapes of the items are, in doubles and in the document's frame. */
export class Placement {
  constructor(
    readonly model: Model,
    readonly shapes: readonly Shape[],
  ) {}

  shapeOf(item: number): Shape | null {
    const shape = this.model.page.items.shape[item]!;
    return shape < 0 ? null : this.shapes[shape]!;
  }

  /** Of all meshes that are placed, each as often as it is placed. */
  get facetCount(): number {
    let count = 0;
    for (let item = 0; item < this.model.items.size; ++item) count += this.shapeOf(item)?.facetCount ?? 0;
    return count;
  }

  /** Maps positions relative to the shape's origin to the document's frame. */
  transform(item: number): Transform {
    const shape = this.shapeOf(item);
    const m = this.model.transform(item);
    if (!shape) return m;
    const [x, y, z] = transformPoint(m, shape.origin);
    return [m[0]!, m[1]!, m[2]!, x, m[4]!, m[5]!, m[6]!, y, m[8]!, m[9]!, m[10]!, z];
  }

  vertex(item: number, index: number): Vec3 {
    const shape = this.shapeOf(item)!;
    return transformPoint(this.transform(item), shape.vertex(index));
  }

  /** Around the shapes of those items that are switched on. */
  box(visible: Uint8Array, items?: Iterable<number>): Box {
    const box = new Box();
    const add = (item: number): void => {
      const shape = visible[item] ? this.shapeOf(item) : null;
      if (shape) box.addBox(shape.box.transformed(this.transform(item)));
    };
    if (items) for (const item of items) add(item);
    else for (let item = 0; item < this.model.items.size; ++item) add(item);
    return box;
  }

  /** The items and all that they hold. */
  *contents(items: Iterable<number>): Generator<number> {
    for (const item of items) for (let at = item; at < this.model.items.end[item]!; ++at) yield at;
  }
}
