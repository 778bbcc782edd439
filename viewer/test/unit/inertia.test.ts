import assert from "node:assert/strict";
import { test } from "node:test";
import { inertiaEllipsoid, principalAxes } from "../../src/model/inertia";
import type { MassProperties } from "../../src/model/page";
import { dot, length, type Vec3 } from "../../src/model/transform";

const near = (a: number, b: number, tolerance = 1e-9): void => {
  assert.ok(Math.abs(a - b) <= tolerance * Math.max(1, Math.abs(b)), `${a} is not ${b}`);
};

void test("the ellipsoid of a ball is the ball", () => {
  const moment = 0.4 * 5 * 3 * 3; // 2/5 m r^2
  const body: MassProperties = {
    mass: 5,
    center: [1, 2, 3],
    inertia: [
      [moment, 0, 0],
      [0, moment, 0],
      [0, 0, moment],
    ],
  };
  const ellipsoid = inertiaEllipsoid(body)!;
  for (const radius of ellipsoid.radii) near(radius, 3);
  assert.deepEqual(ellipsoid.center, [1, 2, 3]);
});

void test("a turned body has the axes of its turn", () => {
  // moments 1, 2, 2.5 about axes turned by 30 degrees about z
  const c = Math.cos(Math.PI / 6);
  const s = Math.sin(Math.PI / 6);
  const tensor = [
    [c * c + 2 * s * s, c * s - 2 * c * s, 0],
    [c * s - 2 * c * s, s * s + 2 * c * c, 0],
    [0, 0, 2.5],
  ];
  const { moments, axes } = principalAxes(tensor);
  near(moments[0], 1);
  near(moments[1], 2);
  near(moments[2], 2.5);
  near(Math.abs(dot(axes[0], [c, s, 0])), 1);
  for (const axis of axes) near(length(axis), 1);
});

void test("random tensors are rebuilt from their axes", () => {
  let seed = 12345;
  const random = (): number => (seed = (seed * 16807) % 2147483647) / 2147483647 - 0.5;
  for (let round = 0; round < 1000; ++round) {
    const [a, b, c, d, e, f] = Array.from({ length: 6 }, random) as [
      number,
      number,
      number,
      number,
      number,
      number,
    ];
    const tensor = [
      [a, d, e],
      [d, b, f],
      [e, f, c],
    ];
    const { moments, axes } = principalAxes(tensor);
    for (let axis = 0; axis < 3; ++axis) {
      const along = tensor.map((row) => dot(row as Vec3, axes[axis]!));
      for (let row = 0; row < 3; ++row) near(along[row]!, moments[axis]! * axes[axis]![row]!, 1e-12);
    }
  }
});

void test("without mass or with negative moments there is no ellipsoid", () => {
  const zero: MassProperties = {
    mass: 0,
    center: [0, 0, 0],
    inertia: [
      [0, 0, 0],
      [0, 0, 0],
      [0, 0, 0],
    ],
  };
  assert.equal(inertiaEllipsoid(zero), null);
  assert.equal(
    inertiaEllipsoid({
      ...zero,
      mass: 1,
      inertia: [
        [1, 0, 0],
        [0, 1, 0],
        [0, 0, -1],
      ],
    }),
    null,
  );
});

void test("without a density the volume serves as the mass", () => {
  const inertia: MassProperties["inertia"] = [
    [0.4, 0, 0],
    [0, 0.4, 0],
    [0, 0, 0.4],
  ];
  near(inertiaEllipsoid({ center: [0, 0, 0], volume: 1, inertia })!.radii[0], 1);
});
