import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { after, before, test } from "node:test";
import type { Page } from "playwright-core";
import {
  comparePicture,
  difference,
  info,
  inRoot,
  ownDocument,
  Pages,
  picture,
  realDocument,
  type OpenPage,
} from "../support/browser";

const pages = new Pages();
before(() => pages.start());
after(() => pages.end());

const assembly = ownDocument("assembly.xml");
const rig = inRoot("examples/rig.xml");
const everyKind = inRoot("tests/golden/P_every_kind.xml");
const realNames = ["panda.xml", "fandisk.xml", "rocker-arm.xml"];

const row = (name: string): string => `.row:has(bdi:text-is("${name}"))`;
const selected = (page: Page): Promise<string> =>
  page.locator('.row[aria-selected="true"] .name').innerText();
const drawn = (page: Page): Promise<string> => page.evaluate(() => document.body.dataset.drawn!);
const quiet = (page: OpenPage): void => {
  assert.deepEqual(page.complaints, []);
};

/** Number of elements that the program counts. */
function counted(file: string): number {
  const { documents } = info(file) as { documents: [{ elements: Record<string, number> }] };
  return Object.values(documents[0].elements).reduce((sum, count) => sum + count, 0);
}

/** The middle of the picture, in pixels of the page. */
async function middle(page: Page): Promise<[number, number]> {
  const box = (await page.locator("#canvas").boundingBox())!;
  return [box.x + box.width / 2, box.y + box.height / 2];
}

for (const file of [...realNames.map(realDocument), everyKind, rig, assembly]) {
  const name = file?.split("/").pop() ?? "real documents";
  void test(
    `${name}: counts, no complaint, and the recorded picture`,
    { skip: !file && "they are not here" },
    async () => {
      const page = await pages.open(file!, { width: 640, height: 480 });
      assert.equal(await page.evaluate(() => Number(document.body.dataset.elements)), counted(file!));
      if (file === everyKind) {
        assert.equal(await drawn(page), "0"); // all of it is hidden
        await page.click("#show-all");
        assert.notEqual(await drawn(page), "0");
      }
      await page.click("#toggle-side");
      comparePicture(name.replace(".xml", ""), await picture(page));
      quiet(page);
      await page.close();
    },
  );
}

void test("the tree lists every element and follows the keys", async () => {
  const page = await pages.open(assembly);
  assert.equal(await page.locator('[role="treeitem"]').count(), counted(assembly));
  const rope = page.locator(row("rope"));
  assert.deepEqual(
    await Promise.all(["aria-level", "aria-posinset", "aria-setsize"].map((name) => rope.getAttribute(name))),
    ["2", "2", "4"],
  );
  await page.locator('[role="tree"]').focus();
  const press = async (key: string): Promise<string> => {
    await page.keyboard.press(key);
    return selected(page);
  };
  assert.equal(await press("ArrowDown"), "frame");
  assert.equal(await press("ArrowRight"), "pin");
  assert.equal(await press("End"), "wedge");
  assert.equal(await press("Home"), "frame");
  assert.equal(await press("b"), "ball");
  assert.equal(await press("ArrowLeft"), "frame");
  await press("ArrowLeft");
  assert.equal(await page.locator('[role="treeitem"]').count(), 4); // closed
  await press("ArrowRight");
  const active = await page.locator('[role="tree"]').getAttribute("aria-activedescendant");
  assert.equal(await page.locator(`#${active!} .name`).innerText(), "frame");
  const before = Number(await drawn(page));
  await page.keyboard.press(" ");
  assert.equal(Number(await drawn(page)), before - 3); // pin, rope and ball; the cover was hidden
  quiet(page);
  await page.close();
});

void test("hidden elements start hidden, and each can be switched on", async () => {
  const page = await pages.open(assembly);
  const nothingHidden = 6;
  assert.equal(await drawn(page), String(nothingHidden - 1));
  const eye = page.locator(`${row("cover")} .eye`);
  assert.equal(await eye.getAttribute("aria-pressed"), "false");
  const without = await picture(page);
  await eye.click();
  assert.equal(await drawn(page), String(nothingHidden));
  assert.ok(difference(without, await picture(page)) > 0.01);
  await page.click(row("wedge"));
  await page.getByRole("button", { name: "Show only this" }).click();
  assert.equal(await drawn(page), "2"); // both places of the template
  await page.close();
});

void test("selection goes both ways between tree and picture", async () => {
  const page = await pages.open(assembly);
  const before = await picture(page);
  await page.click(row("ball"));
  assert.ok(difference(before, await picture(page)) > 0.001);
  assert.equal(await page.locator("#panel h2").innerText(), "ball");
  assert.match(page.url(), /#\/GMD\/structure%5B1%5D\/solid%5B1%5D$|#\/GMD\/structure\[1\]\/solid\[1\]$/);
  await page.locator("#canvas").focus();
  await page.keyboard.press("f"); // the ball is in the middle now
  await page.keyboard.press("Escape");
  assert.equal(await page.locator('.row[aria-selected="true"]').count(), 0);
  await page.mouse.click(...shifted(await middle(page), 40));
  assert.equal(await selected(page), "ball");
  // what a reference has placed selects the reference
  await page.click(row("left wedge"));
  await page.keyboard.press("Enter");
  await page.keyboard.press("Escape");
  await page.locator("#canvas").focus();
  await page.keyboard.press("Escape");
  await page.mouse.click(...shifted(await middle(page), 40));
  assert.equal(await selected(page), "left wedge");
  quiet(page);
  await page.close();
});

/** Beside the marker of a finding, which would be clicked first. */
function shifted([x, y]: [number, number], by: number): [number, number] {
  return [x + by, y + by];
}

void test("the address selects an element", async () => {
  const page = await pages.open(assembly, { hash: "#/GMD/structure[1]/line[1]" });
  assert.equal(await selected(page), "rope");
  await page.evaluate(() => (location.hash = encodeURIComponent("/GMD/solidRef[2]")));
  await page.waitForFunction(() => document.querySelector("#panel h2")!.textContent === "left wedge");
  await page.close();
});

void test(
  "the panel has every field, the mass and the local axes",
  { skip: !realDocument("panda.xml") && "no real documents" },
  async () => {
    const page = await pages.open(realDocument("panda.xml")!);
    await page.click(row("panda_link2"));
    const text = await page.locator("#panel").innerText();
    for (const wanted of ["0.646926", "0.333", "Ixy", "Declared", "Computed", "6.12323e-17", "detail[3]"])
      assert.ok(text.includes(wanted), `${wanted} is missing`);
    const copied = await page.evaluate(() => {
      getSelection()!.selectAllChildren(document.querySelector("#panel h2")!);
      return String(getSelection());
    });
    assert.equal(copied.trim(), "panda_link2");
    await page.close();
  },
);

void test("search lists what it finds, with its holders", async () => {
  const page = await pages.open(assembly);
  await page.fill("#search", "ROPE");
  await page.waitForFunction(() => document.querySelector("#search-count")!.textContent === "1 element");
  assert.deepEqual(await page.locator(".row .name").allInnerTexts(), ["frame", "rope"]);
  await page.locator("#search").press("Enter");
  assert.equal(await selected(page), "rope");
  await page.locator("#search").press("Escape");
  assert.equal(await page.locator('[role="treeitem"]').count(), counted(assembly));
  await page.close();
});

void test("findings are by severity; each leads to its element and shows its lines", async () => {
  const page = await pages.open(rig);
  await page.click("#findings-tab");
  assert.deepEqual(await page.locator("#findings-panel h2:has(+ ul)").allInnerTexts(), [
    "Errors (3)",
    "Warnings (3)",
    "Notes (1)",
  ]);
  const finding = page.locator('.finding[data-rule="bad-list-piece"]');
  assert.match(await finding.innerText(), /rig\.xml:8:7\s+bad-list-piece/);
  await finding.locator("button").click();
  assert.equal(await page.locator("#panel h2").innerText(), "plate");
  assert.match(
    await finding.locator("pre .here").innerText(),
    /^8\s+<vertices>0, 0, 0; 1, 0, 0; 1, 1, zero;<\/vertices>/,
  );
  const before = await picture(page);
  await page.locator("#canvas").focus();
  await page.keyboard.press("c"); // colours by findings
  assert.ok(difference(before, await picture(page)) > 0);
  quiet(page);
  await page.close();
});

void test("distances are right far from the origin, and the section plane hides vertices", async () => {
  const page = await pages.open(assembly);
  await page.locator("#canvas").focus();
  for (const key of ["p", "1", "m"]) await page.keyboard.press(key); // orthographic, front, measure
  const box = (await page.locator("#canvas").boundingBox())!;
  // the front view shows x from -3 to 4.5 and z from -0.5 to 3, with a margin, around 0.75 and 1.25
  const scale = box.height / (1.12 * Math.max(3.5, (7.5 * box.height) / box.width));
  const at = (x: number, z: number): [number, number] => [
    box.x + box.width / 2 + (x - 0.75) * scale,
    box.y + box.height / 2 - (z - 1.25) * scale,
  ];
  await page.mouse.click(...at(1.1, 0.1));
  await page.mouse.click(...at(1.1, 1.7));
  assert.match(
    await page.locator(".measured").innerText(),
    /^2 Δx 0, Δy 0, Δz 2\s+10000001, -10000000, 0 to 10000001, -10000000, 2$/,
  );
  await page.mouse.click(...at(0, 3)); // a point, which begins another measurement
  await page.mouse.click(...at(1.1, 0.1));
  assert.match(await page.locator(".measured .result").innerText(), /^3\.162277[67]/);
  await page.keyboard.press("s");
  await page.getByRole("button", { name: "Y", exact: true }).click();
  await page.getByRole("button", { name: "Flip" }).click();
  await page.mouse.click(...at(1.1, 0.1)); // the front of the wedge is hidden
  assert.match(await page.locator(".measured").innerText(), /^From 10000001, -9999999, 0\./);
  quiet(page);
  await page.close();
});

void test("mouse, wheel and keys move the picture and leave the selection", async () => {
  const page = await pages.open(assembly);
  const [x, y] = await middle(page);
  let last = await picture(page);
  const changes = async (what: string): Promise<void> => {
    const now = await picture(page);
    assert.ok(difference(last, now) > 0.002, `${what} changes nothing`);
    last = now;
  };
  const drag = async (button: "left" | "middle"): Promise<void> => {
    await page.mouse.move(x, y);
    await page.mouse.down({ button });
    await page.mouse.move(x + 60, y + 25, { steps: 3 });
    await page.mouse.up({ button });
  };
  await drag("left");
  await changes("turning");
  await drag("middle");
  await changes("panning");
  await page.mouse.wheel(0, -300);
  await page.waitForTimeout(50);
  await changes("the wheel");
  for (const key of ["f", "5", "ArrowLeft", "Shift+ArrowUp", "+", "p", "0", "e", "s"]) {
    await page.keyboard.press(key);
    await changes(key);
  }
  assert.equal(await page.locator('.row[aria-selected="true"]').count(), 0);
  quiet(page);
  await page.close();
});

void test("hostile texts come out as text", async () => {
  const hostile = ownDocument("hostile.xml");
  const page = await pages.open(hostile);
  assert.equal(await page.title(), "hostile.xml");
  const names = await page
    .locator(".row .name")
    .evaluateAll((cells) => cells.map((cell) => cell.textContent));
  assert.deepEqual(names, [
    "</script><script>document.title='broken'</script>",
    "<!--<script>",
    "quotes \" ' ` &amp; \\u003c ]]>",
    "left \u202Ethgir\u202C אבג \u2028end",
    "__proto__",
    "constructor",
  ]);
  assert.equal(await page.locator(".row .name bdi").count(), names.length); // directions stay inside
  await page.locator(".row").nth(1).click();
  assert.match(await page.locator("#panel").innerText(), /<img src=x onerror=alert\(1\)>/);
  await page.click("#findings-tab");
  assert.equal(await page.locator("#findings-panel .finding").count(), 2);
  quiet(page);
  await page.close();
});

void test("the policy of the page refuses scripts, styles and the network", async () => {
  const page = await pages.open(rig);
  const refused = await page.evaluate(async () => {
    const seen: string[] = [];
    document.addEventListener("securitypolicyviolation", (event) => seen.push(event.effectiveDirective));
    const script = document.createElement("script");
    script.textContent = "document.title = 'broken'";
    const image = document.createElement("img");
    image.src = "http://127.0.0.1:9/x.png";
    const style = document.createElement("style");
    style.textContent = "body { display: none }";
    document.body.append(script, image, style);
    await fetch("http://127.0.0.1:9/").catch(() => null);
    await new Promise((done) => setTimeout(done, 100));
    return seen.sort();
  });
  assert.deepEqual(refused, ["connect-src", "img-src", "script-src-elem", "style-src-elem"]);
  assert.equal(await page.title(), "rig.xml");
  await page.close();
});

void test("a document that failed to load shows its findings and the lines around them", async () => {
  const page = await pages.open(inRoot("tests/golden/N_110_truncated.xml"));
  assert.match(
    await page.locator('[role="alert"]').innerText(),
    /could not be loaded\s+.*line 5, column 4.*110/s,
  );
  assert.equal(await page.locator(".finding").count(), 1);
  assert.match(await page.locator("pre").innerText(), /4\s+<point name="Ёж"/);
  assert.equal(await page.locator("#canvas").isVisible(), false);
  await checkAccessibility(page);
  quiet(page);
  await page.close();
});

interface Axe {
  run(): Promise<{ violations: { id: string; nodes: { html: string; failureSummary?: string }[] }[] }>;
}

/** The rules of axe, contrast by WCAG AA among them. */
async function checkAccessibility(page: Page): Promise<void> {
  await page.evaluate(readFileSync(require.resolve("axe-core"), "utf8"));
  const violations = await page.evaluate(async () => {
    const { axe } = window as unknown as { axe: Axe };
    return (await axe.run()).violations.map(({ id, nodes }) => [
      id,
      ...nodes.map(({ html, failureSummary }) => [html, failureSummary]),
    ]);
  });
  assert.deepEqual(violations, []);
}

for (const colorScheme of ["light", "dark"] as const)
  void test(`the page is accessible, ${colorScheme}`, async () => {
    const page = await pages.open(rig, { colorScheme });
    await page.click(row("hinge"));
    await checkAccessibility(page);
    await page.click("#findings-tab");
    await page.locator(".finding button").first().click();
    await page.locator("#canvas").focus();
    for (const key of ["s", "m"]) await page.keyboard.press(key);
    await checkAccessibility(page);
    await page.keyboard.press("?");
    await checkAccessibility(page);
    await page.close();
  });

void test("fingers turn, pan and zoom", async () => {
  const page = await pages.open(assembly);
  const session = await page.context().newCDPSession(page);
  const [x, y] = await middle(page);
  const touch = (
    type: "touchStart" | "touchMove" | "touchEnd",
    points: readonly (readonly [number, number])[],
  ) =>
    session.send("Input.dispatchTouchEvent", {
      type,
      touchPoints: points.map(([dx, dy], id) => ({ x: x + dx, y: y + dy, id })),
    });
  const start = await picture(page);
  await touch("touchStart", [[0, 0]]);
  for (let step = 1; step <= 4; ++step) await touch("touchMove", [[20 * step, 0]]);
  await touch("touchEnd", []);
  const turned = await picture(page);
  assert.ok(difference(start, turned) > 0.002);
  const spread = (by: number): [number, number][] => [
    [-by, 0],
    [by, 0],
  ];
  await touch("touchStart", spread(30));
  for (let step = 1; step <= 4; ++step) await touch("touchMove", spread(30 + 20 * step));
  await touch("touchEnd", []);
  assert.ok(difference(turned, await picture(page)) > 0.01);
  assert.equal(await page.locator('.row[aria-selected="true"]').count(), 0);
  quiet(page);
  await page.close();
});

void test(
  "the picture of the guide",
  { skip: !process.env.ZTCAD_UPDATE_PICTURES && "only where pictures are recorded" },
  async () => {
    const arm = realDocument("panda.xml");
    if (!arm) return;
    const page = await pages.open(arm, { width: 1280, height: 800 });
    await page.click(row("panda_link4"));
    await page.locator("#canvas").focus();
    await page.keyboard.press("e");
    await page.waitForTimeout(300);
    writeFileSync(inRoot("docs/viewer.png"), await page.screenshot());
    await page.close();
  },
);
