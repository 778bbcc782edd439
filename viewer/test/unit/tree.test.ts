import assert from "node:assert/strict";
import { test } from "node:test";
import { Tree } from "../../src/model/tree";

//  0 ─ 1 ─ 2,  0 ─ 3,  4
const tree = new Tree([-1, 0, 1, 0, -1]);

void test("an empty tree lists nothing", () => {
  const empty = new Tree([]);
  assert.equal(empty.rows(new Uint8Array()).length, 0);
  assert.equal(empty.withHolders(new Uint8Array()).length, 0);
});

void test("levels, positions and ends follow from the parents", () => {
  assert.deepEqual([...tree.level], [1, 2, 3, 2, 1]);
  assert.deepEqual([...tree.position], [1, 1, 1, 2, 2]);
  assert.deepEqual([...tree.end], [4, 3, 3, 4, 5]);
  assert.deepEqual(
    [0, 1, 2, 3, 4].map((node) => tree.siblings(node)),
    [2, 2, 1, 2, 2],
  );
  assert.deepEqual(tree.ancestry(2), [0, 1, 2]);
});

void test("rows are the nodes whose holders are all expanded", () => {
  assert.deepEqual([...tree.rows(Uint8Array.of(0, 1, 0, 0, 0))], [0, 4]);
  assert.deepEqual([...tree.rows(Uint8Array.of(1, 0, 0, 0, 0))], [0, 1, 3, 4]);
  assert.deepEqual([...tree.rows(Uint8Array.of(1, 1, 1, 1, 1))], [0, 1, 2, 3, 4]);
});

void test("what is found is listed with its holders", () => {
  assert.deepEqual([...tree.withHolders(Uint8Array.of(0, 0, 1, 0, 0))], [0, 1, 2]);
});

void test("a parent after its child is refused", () => {
  assert.throws(() => new Tree([1, -1]));
  assert.throws(() => new Tree([0]));
});
