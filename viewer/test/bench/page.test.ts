// Sizes and times of pages. The limits of times are for an otherwise idle machine of two cores without a graphics card;
// the processor time shows how much of the time on the clock other work took.

import assert from "node:assert/strict";
import { mkdtempSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync } from "node:fs";
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
const frames = 5;

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
    mesh(50)
      .replaceAll("solid ", "templateSolid ")
      .replaceAll("/solid", "/templateSolid")
      .replace("hills", "bolt")
  );
}

/** Draws the picture a few times while it turns. */
async function turn(page: Page): Promise<void> {
  await page.evaluate(async (count) => {
    const canvas = document.querySelector<HTMLCanvasElement>("#canvas")!;
    for (let frame = 0; frame < count; ++frame) {
      canvas.dispatchEvent(new KeyboardEvent("keydown", { key: "ArrowLeft" }));
      await new Promise((done) => requestAnimationFrame(done));
    }
    const context = canvas.getContext("webgl2")!;
    context.readPixels(0, 0, 1, 1, context.RGBA, context.UNSIGNED_BYTE, new Uint8Array(4)); // waits for the drawing
  }, frames);
}

/** Of all processes that descend from this one. */
function processorSeconds(): number {
  const processes = new Map<number, { parent: number; ticks: number }>();
  for (const name of readdirSync("/proc")) {
    if (!/^\d+$/.test(name)) continue;
    try {
      // after the name in parentheses: state, parent, ... , user and system time as the 12th and 13th
      const fields = readFileSync(`/proc/${name}/stat`, "latin1")
        .replace(/^.*\) /s, "")
        .split(" ");
      processes.set(Number(name), {
        parent: Number(fields[1]),
        ticks: Number(fields[11]) + Number(fields[12]),
      });
    } catch {
      // has ended meanwhile
    }
  }
  const isOurs = (id: number): boolean => {
    const parent = processes.get(id)?.parent;
    return parent === process.pid || (parent !== undefined && parent > 1 && isOurs(parent));
  };
  let ticks = 0;
  for (const [id, { ticks: own }] of processes) if (isOurs(id)) ticks += own;
  return ticks / 100;
}

interface Cost {
  /** Seconds on the clock, and of processor time. */
  readonly wall: number;
  readonly processor: number;
}

/** Runs something in the browser, and counts what all of its processes do. */
async function cost<T>(run: () => Promise<T>): Promise<[T, Cost]> {
  const [began, used] = [performance.now(), processorSeconds()];
  const result = await run();
  return [result, { wall: (performance.now() - began) / 1000, processor: processorSeconds() - used }];
}

const seconds = ({ wall, processor }: Cost): string =>
  `${wall.toFixed(2)} s (${processor.toFixed(2)} s of processor time)`;

async function measure(file: string): Promise<{ open: Cost; frame: Cost }> {
  pages.file(file); // written before the clock starts
  await (await pages.open(warmUp)).close(); // the browser is running
  const [page, open] = await cost(() => pages.open(file));
  const [, { wall, processor }] = await cost(() => turn(page));
  await page.close();
  return { open, frame: { wall: wall / frames, processor: processor / frames } };
}

const warmUp = write("nothing", '<point name="one" center="0, 0, 0"/>');
const meshes: [number, number][] = quick
  ? [[10_000, Infinity]]
  : [
      [100_000, 2.5],
      [1_000_000, 5],
    ];

for (const [facets, limit] of meshes)
  void test(`mesh of ${facets} facets`, async () => {
    const file = write(`mesh${facets}`, mesh(facets));
    const [xml, bytes] = [statSync(file).size, statSync(pages.file(file)).size];
    const { open, frame } = await measure(file);
    const sizes = `${(bytes / megabyte).toFixed(2)} MB for ${(xml / megabyte).toFixed(2)} MB of XML`;
    console.log(`${facets} facets: ${sizes}; opens in ${seconds(open)}, draws in ${seconds(frame)}`);
    assert.ok(bytes <= 0.25 * xml + megabyte, "the page is too large");
    assert.ok(open.wall <= limit, `opening takes more than ${limit} s`);
  });

void test("references of one template", async () => {
  const count = quick ? 100 : 10_000;
  const { open, frame } = await measure(write("references", references(count)));
  console.log(`${count} references: opens in ${seconds(open)}, draws in ${seconds(frame)}`);
  if (!quick) assert.ok(open.wall <= 5, "opening takes more than 5 s");
});
