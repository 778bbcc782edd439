// Sizes and times of pages, with the limits that they keep on an otherwise idle machine of two cores without a
// graphics card.

import assert from "node:assert/strict";
import { mkdtempSync, rmSync, statSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import type { Page } from "playwright-core";
import { Pages } from "../support/browser";

const quick = process.env.ZTCAD_QUICK === "1";
const pages = new Pages();
const folder = mkdtempSync(join(tmpdir(), "viewer-bench-"));
before(() => pages.start());
after(async () => {
  await pages.end();
  rmSync(folder, { recursive: true });
});

const megabyte = 1e6;
const frames = 10;

function write(name: string, body: string): string {
  const file = join(folder, `${name}.xml`);
  writeFileSync(file, `<?xml version="1.0" encoding="UTF-8"?>\n<GMD>\n${body}</GMD>\n`);
  return file;
}

/** A ball with hills: numbers of six digits, as real meshes have them. */
function mesh(facets: number): string {
  const rings = Math.round(Math.sqrt(facets / 4));
  const steps = 2 * rings;
  const vertices: string[] = [];
  for (let ring = 0; ring <= rings; ++ring)
    for (let step = 0; step < steps; ++step) {
      const polar = (Math.PI * (ring + 0.5)) / (rings + 1);
      const round = (2 * Math.PI * step) / steps;
      const radius = 10 + Math.sin(7 * polar) * Math.cos(5 * round);
      const place = [Math.sin(polar) * Math.cos(round), Math.sin(polar) * Math.sin(round), Math.cos(polar)];
      vertices.push(place.map((value) => String(Number((radius * value).toPrecision(6)))).join(", "));
    }
  const faces: string[] = [];
  for (let ring = 0; ring < rings; ++ring)
    for (let step = 0; step < steps; ++step) {
      const [a, b] = [ring * steps + step, ring * steps + ((step + 1) % steps)];
      faces.push(`${a}, ${a + steps}, ${b}`, `${b}, ${a + steps}, ${b + steps}`);
    }
  const list = (rows: string[]): string => `${rows.join(";\n")};\n`;
  return `<solid name="hills" method="triangulation"><vertices>${list(vertices)}</vertices><faces>${list(faces)}</faces></solid>\n`;
}

function references(count: number): string {
  const side = Math.ceil(Math.sqrt(count));
  const rows = Array.from(
    { length: count },
    (_, at) =>
      `<solidRef name="bolt ${at}" template="bolt" MCS="CS, ${25 * (at % side)}, ${25 * Math.floor(at / side)}, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1"/>\n`,
  );
  return (
    rows.join("") +
    mesh(200)
      .replaceAll("solid ", "templateSolid ")
      .replaceAll("/solid", "/templateSolid")
      .replace("hills", "bolt")
  );
}

/** Seconds to draw a picture while it turns. */
async function secondsPerFrame(page: Page): Promise<number> {
  return page.evaluate(async (count) => {
    const canvas = document.querySelector<HTMLCanvasElement>("#canvas")!;
    const began = performance.now();
    for (let frame = 0; frame < count; ++frame) {
      canvas.dispatchEvent(new KeyboardEvent("keydown", { key: "ArrowLeft" }));
      await new Promise((done) => requestAnimationFrame(done));
    }
    const context = canvas.getContext("webgl2")!;
    context.readPixels(0, 0, 1, 1, context.RGBA, context.UNSIGNED_BYTE, new Uint8Array(4));
    return (performance.now() - began) / 1000 / count;
  }, frames);
}

async function measure(file: string): Promise<{ open: number; frame: number; bytes: number; xml: number }> {
  const bytes = statSync(pages.file(file)).size; // written before the clock starts
  const began = performance.now();
  const page = await pages.open(file);
  const open = (performance.now() - began) / 1000;
  const frame = await secondsPerFrame(page);
  await page.close();
  const xml = statSync(file).size;
  return { open, frame, bytes, xml };
}

for (const [facets, limit] of quick
  ? [[10_000, Infinity]]
  : ([
      [100_000, 2],
      [1_000_000, 5],
    ] as const))
  void test(`mesh of ${facets} facets`, async () => {
    const { open, frame, bytes, xml } = await measure(write(`mesh${facets}`, mesh(facets)));
    console.log(
      `${facets} facets: page ${(bytes / megabyte).toFixed(2)} MB for ${(xml / megabyte).toFixed(2)} MB of XML, opens in ${open.toFixed(2)} s, ${frame.toFixed(3)} s a frame`,
    );
    assert.ok(bytes <= 0.25 * xml + megabyte, "the page is too large");
    assert.ok(open <= limit, `opening takes more than ${limit} s`);
  });

void test("references of one template", async () => {
  const count = quick ? 100 : 10_000;
  const { open, frame, bytes } = await measure(write("references", references(count)));
  console.log(
    `${count} references: page ${(bytes / megabyte).toFixed(2)} MB, opens in ${open.toFixed(2)} s, ${frame.toFixed(3)} s a frame`,
  );
  if (!quick) assert.ok(open <= 5 && frame <= 0.5);
});
