import assert from "node:assert/strict";
import { test } from "node:test";
import { Box, determinant, identity, invert, transformPoint, type Vec3 } from "../../src/model/transform";

const turned = [0, -2, 0, 1e7, 1, 0, 0, -3, 0, 0, 3, 5];

void test("an inverse undoes its map", () => {
  const inverse = invert(turned)!;
  const there = transformPoint(turned, [0.25, 0.5, 0.75]);
  for (const [axis, value] of transformPoint(inverse, there).entries())
    assert.ok(Math.abs(value - [0.25, 0.5, 0.75][axis]!) < 1e-8);
});

void test("a map that flattens has no inverse", () => {
  assert.equal(invert([1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0]), null);
  assert.equal(invert([NaN, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0]), null);
});

void test("a mirror has a negative determinant", () => {
  assert.equal(determinant(identity), 1);
  assert.equal(determinant([-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0]), -1);
});

void test("a box ignores what is not finite", () => {
  const box = new Box();
  box.add([NaN, 0, 0]);
  box.add([Infinity, 0, 0]);
  assert.ok(box.isEmpty);
  assert.deepEqual(box.center, [0, 0, 0]);
  assert.equal(box.radius, 0);
});

void test("the image of a box contains the images of its corners", () => {
  const box = new Box();
  box.add([-1, -2, -3]);
  box.add([3, 2, 1]);
  const image = box.transformed(turned);
  for (let corner = 0; corner < 8; ++corner) {
    const place: Vec3 = [corner & 1 ? 3 : -1, corner & 2 ? 2 : -2, corner & 4 ? 1 : -3];
    for (const [axis, value] of transformPoint(turned, place).entries())
      assert.ok(image.low[axis]! <= value && value <= image.high[axis]!);
  }
  assert.ok(new Box().transformed(turned).isEmpty);
});
