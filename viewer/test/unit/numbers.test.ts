import assert from "node:assert/strict";
import { test } from "node:test";
import { counted, formatNumber, formatWithin } from "../../src/model/numbers";

void test("numbers have no digits that nobody knows", () => {
  assert.equal(formatNumber(0.1 + 0.2), "0.3");
  assert.equal(formatNumber(NaN), "NaN");
  assert.equal(formatWithin(4.827899966, 5e-7), "4.8279");
  assert.equal(formatWithin(-3.3e-8, 5e-7), "0");
  assert.equal(formatWithin(10000000.125, 0), "10000000.125");
  assert.equal(formatWithin(1e300, 1), "1e+300");
});

void test("counts have their plural", () => {
  assert.equal(counted(1, "error"), "1 error");
  assert.equal(counted(1234, "note"), "1,234 notes");
});
