// Pages that the program writes, in a real browser.

import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { basename, dirname, join } from "node:path";
import { pathToFileURL } from "node:url";
import pixelmatch from "pixelmatch";
import { chromium, type Browser, type Page } from "playwright-core";
import { PNG } from "pngjs";

const viewer = process.env.ZTCAD_VIEWER!;
const program = process.env.ZTCAD_PROGRAM!;
const root = dirname(viewer);
const realDocuments = process.env.ZTCAD_REAL_DOCUMENTS ?? join(root, "../shared/data");

/** A part of the pixels that may differ: drivers round the edges of triangles differently. */
const tolerance = 0.004;

export const inRoot = (file: string): string => join(root, file);
export const ownDocument = (file: string): string => join(viewer, "test/documents", file);

/** A real document; null where they are missing. */
export function realDocument(name: string): string | null {
  const file = join(realDocuments, name);
  return existsSync(file) ? file : null;
}

export const info = (file: string): unknown =>
  JSON.parse(spawnSync(program, ["info", "--format", "json", file], { encoding: "utf8" }).stdout);

export interface OpenPage extends Page {
  /** What the console said, and which addresses the page asked for. */
  readonly complaints: string[];
}

export interface Opening {
  readonly hash?: string;
  readonly colorScheme?: "light" | "dark";
  readonly width?: number;
  readonly height?: number;
}

export class Pages {
  private readonly folder = mkdtempSync(join(tmpdir(), "viewer-pages-"));
  private readonly written = new Map<string, string>();
  private browser: Browser | null = null;

  async start(): Promise<void> {
    const asRoot = process.getuid?.() === 0 ? ["--no-sandbox"] : [];
    this.browser = await chromium.launch({
      executablePath: process.env.ZTCAD_BROWSER ?? "/usr/bin/chromium",
      args: [
        ...asRoot,
        "--use-angle=swiftshader",
        "--enable-unsafe-swiftshader", // without it there is no WebGL
        "--force-color-profile=srgb",
        "--disable-background-networking",
        "--disable-component-update",
        "--disable-sync",
        "--no-first-run",
      ],
    });
  }

  async end(): Promise<void> {
    await this.browser?.close();
    rmSync(this.folder, { recursive: true });
  }

  /** The page of a document, written once. */
  file(document: string): string {
    let page = this.written.get(document);
    if (!page) {
      page = join(this.folder, `${basename(document, ".xml")}.html`);
      const { status, stderr } = spawnSync(program, ["view", document, "-o", page], { encoding: "utf8" });
      assert.ok(
        status === 0 || status === 1,
        `ztcad view ${document} ends with ${String(status)}: ${stderr}`,
      );
      this.written.set(document, page);
    }
    return page;
  }

  /** Opens the page of a document and waits for the first picture. */
  async open(source: string, opening: Opening = {}): Promise<OpenPage> {
    const { hash = "", colorScheme = "light", width = 1100, height = 700 } = opening;
    const page = await this.browser!.newPage({
      viewport: { width, height },
      colorScheme,
      reducedMotion: "reduce",
      deviceScaleFactor: 1,
    });
    page.setDefaultTimeout(120_000); // a loaded machine is no failure
    const complaints: string[] = [];
    const address = pathToFileURL(this.file(source)).href;
    page.on("console", (message) => {
      // software drawing says that reading the picture back is slow, which is what the page wants
      if (!message.text().includes("GPU stall due to ReadPixels")) complaints.push(message.text());
    });
    page.on("pageerror", (problem) => complaints.push(String(problem)));
    page.on("dialog", (dialog) => complaints.push(`dialog: ${dialog.message()}`));
    page.on("request", (request) => {
      if (!request.url().startsWith(address)) complaints.push(`request: ${request.url()}`);
    });
    await page.goto(`${address}${hash}`, { timeout: 120_000 });
    await page.waitForFunction(() => document.body.dataset.state !== "loading", null, { timeout: 120_000 });
    assert.equal(await page.evaluate(() => document.body.dataset.state), "ready");
    return Object.assign(page, { complaints });
  }
}

/** A screenshot of the picture alone, when all drawing is done. */
export async function picture(page: Page): Promise<Buffer> {
  await page.evaluate(async () => {
    document.querySelector<SVGElement>(".triad")!.style.visibility = "hidden"; // its letters depend on the fonts
    for (let frame = 0; frame < 2; ++frame) await new Promise((done) => requestAnimationFrame(done));
  });
  return page.locator("#stage").screenshot();
}

/** Compares a screenshot with the recorded one; a difference leaves both, and a picture of it, in the build folder. */
export function comparePicture(name: string, taken: Buffer): void {
  const recorded = join(viewer, "test/pictures", `${name}.png`);
  if (process.env.ZTCAD_UPDATE_PICTURES) {
    writeFileSync(recorded, taken);
    return;
  }
  const [actual, expected] = [PNG.sync.read(taken), PNG.sync.read(readFileSync(recorded))];
  assert.deepEqual([actual.width, actual.height], [expected.width, expected.height]);
  const { width, height } = expected;
  const difference = new PNG({ width, height });
  const pixels = pixelmatch(actual.data, expected.data, difference.data, width, height, { threshold: 0.15 });
  if (pixels <= tolerance * width * height) return;
  const folder = process.env.ZTCAD_PICTURES ?? join(tmpdir(), "viewer-pictures");
  mkdirSync(folder, { recursive: true });
  writeFileSync(join(folder, `${name}.png`), taken);
  writeFileSync(join(folder, `${name}-difference.png`), PNG.sync.write(difference));
  assert.fail(
    `${name}: ${pixels} pixels differ; see ${folder}. ZTCAD_UPDATE_PICTURES=1 records new pictures.`,
  );
}

/** The share of pixels that two screenshots do not have in common. */
export function difference(before: Buffer, after: Buffer): number {
  const [a, b] = [PNG.sync.read(before), PNG.sync.read(after)];
  return pixelmatch(a.data, b.data, undefined, a.width, a.height, { threshold: 0.1 }) / (a.width * a.height);
}
