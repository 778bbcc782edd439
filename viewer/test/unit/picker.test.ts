import assert from "node:assert/strict";
import { test } from "node:test";
import { Model } from "../../src/model/model";
import type { Page } from "../../src/model/page";
import type { Plane } from "../../src/model/section";
import { Shape } from "../../src/model/shape";
import { length, subtract } from "../../src/model/transform";
import { standardViews, type View } from "../../src/model/view";
import { nearestVertex, Picker, type Looking } from "../../src/picking/picker";
import { Placement } from "../../src/scene/placement";
import { cube, samplePage } from "../support/sample";

/** Cubes at the given places, far from the origin if wanted. */
function cubes(transforms: readonly (readonly number[])[], origin: readonly number[]): Picker {
  const page = samplePage();
  const count = transforms.length;
  const placed: Page = {
    ...page,
    items: {
      element: new Array<number>(count).fill(3),
      source: new Array<number>(count).fill(5),
      parent: new Array<number>(count).fill(-1),
      shape: new Array<number>(count).fill(0),
      color: new Array<null>(count).fill(null),
      visible: new Array<number>(count).fill(1),
      transform: transforms.flat(),
    },
    shapes: { kind: ["mesh"], origin, radius: [null], mesh: [0], vertices: [8], facets: [12] },
  };
  const model = new Model(placed);
  return new Picker(new Placement(model, [new Shape(model, 0, [cube])]));
}

const at = (x: number, y: number, z: number, mirror = 1): number[] => [
  mirror,
  0,
  0,
  x,
  0,
  1,
  0,
  y,
  0,
  0,
  1,
  z,
];

function looking(view: Partial<View>, visible: number, section: Plane | null = null): Looking {
  const whole: View = {
    target: [0, 0, 0],
    ...standardViews.front,
    height: 4,
    perspective: false,
    ...view,
  };
  return { view: whole, x: 0, y: 0, pixels: 800, visible: new Uint8Array(visible).fill(1), section };
}

void test("the nearest of two cubes is picked, the other one where the first is hidden", () => {
  const picker = cubes([at(0, 5, 0), at(0, 0, 0)], [0, 0, 0]);
  const from = looking({ target: [0.5, 0, 0.4] }, 2);
  assert.equal(picker.pick(from)!.item, 1);
  assert.equal(picker.pick({ ...from, visible: Uint8Array.of(1, 0) })!.item, 0);
  assert.equal(picker.pick({ ...from, visible: Uint8Array.of(0, 0) }), null);
});

void test("the section plane hides what it cuts off", () => {
  const picker = cubes([at(0, 0, 0)], [0, 0, 0]);
  const plane: Plane = { normal: [0, 1, 0], constant: -0.5 }; // hides y < 0.5
  const hit = picker.pick(looking({ target: [0.5, 0, 0.4] }, 1, plane))!;
  assert.ok(Math.abs(hit.place[1] - 1) < 1e-6); // the inner side of the back
});

void test("both ways of looking, mirrored placements, and nothing beside", () => {
  const picker = cubes([at(0, 0, 0, -1)], [0, 0, 0]);
  for (const perspective of [true, false]) {
    assert.equal(picker.pick(looking({ target: [-0.5, 0, 0.4], perspective }, 1))?.item, 0);
    assert.equal(picker.pick(looking({ target: [0.5, 0, 0.4], perspective }, 1)), null);
  }
});

void test("vertices are exact far from the origin", () => {
  const origin = [1e7, -1e7, 1e7];
  const picker = cubes([at(0.125, 0, 0)], origin);
  const ends = [
    [0.2, 0.2],
    [0.9, 0.9],
  ].map(([x, z]) => {
    const from = looking({ target: [1e7 + 0.125 + x!, -1e7, 1e7 + z!], height: 2 }, 1);
    return nearestVertex(picker.pick(from)!, from)!.place;
  });
  assert.deepEqual(ends[0], [1e7 + 0.125, -1e7, 1e7]);
  assert.equal(length(subtract(ends[1]!, ends[0])), Math.SQRT2);
});

void test("a vertex that the section plane hides is not offered", () => {
  const picker = cubes([at(0, 0, 0)], [0, 0, 0]);
  const from = looking({ target: [0.1, 0, 0.1] }, 1);
  const hit = picker.pick(from)!;
  assert.deepEqual(nearestVertex(hit, from)?.place, [0, 0, 0]);
  const half: Plane = { normal: [1, 0, 0], constant: -0.05 };
  assert.notDeepEqual(nearestVertex(hit, { ...from, section: half })?.place, [0, 0, 0]);
});
