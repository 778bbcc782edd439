import assert from "node:assert/strict";
import { test } from "node:test";
import { Model } from "../../src/model/model";
import { parsePage, type Page } from "../../src/model/page";
import { Store } from "../../src/store";
import { samplePage } from "../support/sample";

const model = new Model(samplePage());

void test("data of another schema is refused", () => {
  assert.throws(() => parsePage('{"schema": 2}'), /schema 2/);
});

void test("paths follow from tags and numbers; an element that is not saved has none", () => {
  assert.equal(model.path(2), "/GMD/structure[1]/point[2]");
  assert.equal(model.path(5), null);
});

void test("a path leads to its element, and that of a finding where no element has it", () => {
  assert.equal(model.elementAt("/GMD/solidRef[2]"), 4);
  assert.equal(model.elementAt("/GMD/point[9]"), 2);
  assert.equal(model.elementAt("/GMD/nothing[1]"), -1);
});

void test("a template is placed by its references", () => {
  assert.deepEqual([...model.itemsOf(5)], [3, 4]);
  assert.deepEqual([...model.itemsOf(3)], [3]);
});

void test("findings are by severity, and the worst one marks the element", () => {
  assert.deepEqual(
    model.findings.map(({ severity }) => severity),
    ["error", "warning", "note"],
  );
  assert.equal(model.severity(2), "error");
  assert.equal(model.severity(0), null);
});

void test("search ignores the case", () => {
  assert.deepEqual([...model.search("pIN")], [0, 1, 0, 0, 0, 0]);
});

void test("hidden elements start hidden, and hide what they hold", () => {
  const store = new Store(model);
  assert.deepEqual([...store.visibleItems], [1, 0, 1, 1, 1]);
  store.setShown(0, false);
  assert.deepEqual([...store.visibleItems], [0, 0, 0, 1, 1]);
  store.setShown(5, false); // the template: both references
  assert.deepEqual([...store.visibleItems], [0, 0, 0, 0, 0]);
  store.showAll();
  assert.deepEqual([...store.visibleItems], [1, 1, 1, 1, 1]);
  store.resetVisibility();
  assert.deepEqual([...store.visibleItems], [1, 0, 1, 1, 1]);
});

void test("an isolated reference brings its template", () => {
  const store = new Store(model);
  store.isolate(4);
  assert.deepEqual([...store.visibleItems], [0, 0, 0, 0, 1]);
  store.isolate(2);
  assert.deepEqual([...store.visibleItems], [1, 0, 1, 0, 0]);
});

void test("what is selected is announced once", () => {
  const store = new Store(model);
  let heard = 0;
  store.listen(["selection"], () => ++heard);
  store.select(5);
  store.select(5);
  assert.equal(heard, 1);
  assert.deepEqual([...store.selectedItems], [3, 4]);
  store.select(4, 4);
  assert.deepEqual([...store.selectedItems], [4]);
});

void test("a click on what a reference placed selects the reference", () => {
  const page = samplePage();
  const nested: Page = {
    ...page,
    items: {
      ...page.items,
      element: [3, 5, -1],
      source: [5, 5, -1],
      parent: [-1, 0, 1],
      shape: [-1, 2, 2],
      visible: [1, 1, 0],
      transform: null,
    },
  };
  const placed = new Model(nested);
  assert.equal(placed.selectable(1), 0);
  assert.equal(placed.selectable(2), 0);
  // hidden in its own file, of which nothing else is known
  assert.deepEqual([...placed.visibleItems(new Uint8Array(6).fill(1))], [1, 1, 0]);
});
