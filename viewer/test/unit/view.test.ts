import assert from "node:assert/strict";
import { test } from "node:test";
import { Box, dot, length, normalize, subtract, type Vec3 } from "../../src/model/transform";
import { isHidden, sectionAt, sectionPlane } from "../../src/model/section";
import {
  basis,
  between,
  fit,
  pan,
  project,
  rayThrough,
  standardViews,
  turn,
  zoom,
  type View,
} from "../../src/model/view";

const start: View = { target: [1e7, -1e7, 5], ...standardViews.isometric, height: 0.01, perspective: true };
const both = [start, { ...start, perspective: false }];

const box = new Box();
box.add([-1, -2, -3]);
box.add([1, 2, 3]);

void test("standard views look along the axes", () => {
  const axes = (name: keyof typeof standardViews) => basis({ ...start, ...standardViews[name] });
  const same = (actual: Vec3, expected: Vec3): void => {
    assert.ok(length(subtract(actual, expected)) < 1e-15);
  };
  same(axes("front").right, [1, 0, 0]);
  same(axes("front").up, [0, 0, 1]);
  same(axes("right").right, [0, 1, 0]);
  same(axes("back").right, [-1, 0, 0]);
  same(axes("left").right, [0, -1, 0]);
  same(axes("top").up, [0, 1, 0]);
  same(axes("top").right, [1, 0, 0]);
  same(axes("bottom").back, [0, 0, -1]);
});

void test("a ray through a place of the picture meets what is projected there, far from the origin too", () => {
  for (const view of both) {
    const { origin, direction } = rayThrough(view, 0.3, -0.2);
    const along = normalize(direction);
    const place: Vec3 = [0, 1, 2].map((axis) => origin[axis]! + 0.015 * along[axis]!) as Vec3;
    const seen = project(view, place)!;
    assert.ok(Math.abs(seen.x - 0.3) < 1e-6 && Math.abs(seen.y + 0.2) < 1e-6);
  }
});

void test("what is after the eye is not in the picture", () => {
  const { back } = basis(start);
  const after = start.target.map((value, axis) => value + back[axis]!) as Vec3;
  assert.equal(project(start, after), null);
});

void test("zooming keeps the place under the pointer", () => {
  for (const view of both) {
    const { origin, direction } = rayThrough(view, 0.4, 0.1);
    const away = view.perspective ? 1 : 0;
    const place = [0, 1, 2].map((axis) => origin[axis]! + away * direction[axis]!) as Vec3; // on the target's plane
    const seen = project(zoom(view, 0.25, 0.4, 0.1), place)!;
    assert.ok(Math.abs(seen.x - 0.4) < 1e-6 && Math.abs(seen.y - 0.1) < 1e-6);
  }
});

void test("zooming ends before numbers do", () => {
  let view = start;
  for (let step = 0; step < 10000; ++step) view = zoom(view, 0.9);
  assert.ok(view.height > 0 && view.height < 1e-3);
  for (let step = 0; step < 100000; ++step) view = zoom(view, 1.1);
  assert.ok(Number.isFinite(view.height));
});

void test("turning does not pass the poles", () => {
  assert.equal(turn(start, 0, 10).pitch, Math.PI / 2);
  assert.equal(turn(start, 0, -10).pitch, -Math.PI / 2);
});

void test("panning moves the picture with the hand", () => {
  const seen = project(pan({ ...start, target: [0, 0, 0], height: 2 }, 0.25, 0.5), [0, 0, 0])!;
  assert.ok(Math.abs(seen.x - 0.25) < 1e-12 && Math.abs(seen.y - 0.5) < 1e-12);
});

void test("a fitted box is in the picture as a whole", () => {
  for (const view of both)
    for (const aspect of [0.4, 1, 3])
      for (const angles of Object.values(standardViews)) {
        const fitted = fit({ ...view, ...angles }, box, aspect);
        for (let corner = 0; corner < 8; ++corner) {
          const seen = project(fitted, [corner & 1 ? 1 : -1, corner & 2 ? 2 : -2, corner & 4 ? 3 : -3])!;
          assert.ok(Math.abs(seen.x) <= aspect / 2 && Math.abs(seen.y) <= 0.5);
        }
      }
});

void test("one point is fitted, nothing changes nothing", () => {
  const point = new Box();
  point.add([1e7, 0, 0]);
  assert.ok(fit(start, point, 1).height > 0);
  assert.equal(fit(start, new Box(), 1), start);
});

void test("a way between views begins and ends at them, and turns the short way", () => {
  const to = { ...start, yaw: start.yaw + 1.9 * Math.PI, height: 1 };
  assert.equal(between(start, to, 1), to);
  assert.ok(Math.abs(between(start, to, 0.5).yaw - (start.yaw - 0.05 * Math.PI)) < 1e-9);
});

void test("a section plane hides one side, flipped the other", () => {
  const section = { axis: "y", place: 0.75, flipped: false } as const;
  assert.equal(sectionAt(section, box), 1);
  const plane = sectionPlane(section, box);
  assert.ok(isHidden(plane, [0, 1.5, 0]) && !isHidden(plane, [0, 0.5, 0]));
  const flipped = sectionPlane({ ...section, flipped: true }, box);
  assert.ok(!isHidden(flipped, [0, 1.5, 0]) && isHidden(flipped, [0, 0.5, 0]));
  assert.equal(isHidden(null, [0, 0, 0]), false);
  assert.equal(dot(plane.normal, [0, 1, 0]) + plane.constant, 0);
});
