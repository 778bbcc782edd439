import assert from "node:assert/strict";
import { test } from "node:test";
import { featureEdges, signedVolume, smoothNormals } from "../../src/model/surface";
import { ball, cube } from "../support/sample";

void test("a cube has twelve edges and a volume", () => {
  assert.equal(featureEdges(cube.positions, cube.indices).length, 24);
  assert.equal(signedVolume(cube.positions, cube.indices), 6);
  assert.equal(signedVolume(cube.positions, Uint32Array.from(cube.indices).reverse()), -6);
});

void test("the corners of a cube are split: each side has its own normal", () => {
  const { positions, normals, indices } = smoothNormals(cube.positions, cube.indices);
  assert.equal(positions.length / 3, 24);
  for (let corner = 0; corner < indices.length; ++corner) {
    const vertex = indices[corner]!;
    const original = cube.indices[corner]!;
    for (let axis = 0; axis < 3; ++axis)
      assert.equal(positions[3 * vertex + axis], cube.positions[3 * original + axis]);
    const normal = [...normals.subarray(4 * vertex, 4 * vertex + 3)];
    assert.deepEqual(normal.map(Math.abs).sort(), [0, 0, 127]);
  }
});

void test("a ball has no edges, and normals that point outwards", () => {
  const { positions, indices } = ball(24);
  assert.equal(featureEdges(positions, indices).length, 0);
  const smooth = smoothNormals(positions, indices);
  assert.equal(smooth.positions.length, positions.length);
  for (let vertex = 0; vertex < positions.length / 3; ++vertex) {
    const along = [0, 1, 2].map((axis) => smooth.normals[4 * vertex + axis]! * positions[3 * vertex + axis]!);
    assert.ok(along[0]! + along[1]! + along[2]! > 124);
  }
});

void test("an open side and a side with three facets are edges", () => {
  const positions = Float32Array.from([0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 0.5, 0.5, 0]);
  assert.equal(featureEdges(positions, Uint32Array.of(0, 1, 2)).length, 6);
  assert.equal(featureEdges(positions, Uint32Array.of(0, 1, 2, 1, 3, 2)).length, 8);
  const three = featureEdges(positions, Uint32Array.of(0, 1, 2, 1, 3, 2, 1, 4, 2));
  assert.ok(pairs(three).includes("1-2"));
});

void test("vertices at one position count as one", () => {
  const positions = Float32Array.from([0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0]);
  assert.deepEqual(pairs(featureEdges(positions, Uint32Array.of(0, 1, 2, 3, 4, 5))).sort(), [
    "0-1",
    "0-2",
    "1-4",
    "2-4",
  ]);
});

void test("facets without area and meshes without facets are harmless", () => {
  const { normals } = smoothNormals(Float32Array.of(0, 0, 0, 1, 1, 1, 2, 2, 2), Uint32Array.of(0, 1, 2));
  assert.ok(normals.every((value) => value === 0));
  assert.equal(smoothNormals(new Float32Array(), new Uint32Array()).indices.length, 0);
  assert.equal(featureEdges(new Float32Array(), new Uint32Array()).length, 0);
});

function pairs(edges: Uint32Array): string[] {
  return Array.from({ length: edges.length / 2 }, (_, at) =>
    [edges[2 * at]!, edges[2 * at + 1]!].sort((a, b) => a - b).join("-"),
  );
}
