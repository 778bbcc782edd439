// Bundles and runs the tests of a folder.
//
//   node test/run.mjs unit [pattern...]      only tests whose names match
//   node test/run.mjs bench                  sizes and times of pages; ZTCAD_QUICK=1: only that it runs
//   node test/run.mjs browser [pattern...]   with the pages of the program $ZTCAD_PROGRAM; exit code 77: they cannot run
//
// $ZTCAD_REAL_DOCUMENTS  folder of the real documents, which are skipped if they are not there
// $ZTCAD_UPDATE_PICTURES 1: the pictures of the tests are replaced by what is drawn now

import { spawnSync } from "node:child_process";
import { existsSync } from "node:fs";
import { mkdtemp, readdir, rm } from "node:fs/promises";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const here = dirname(fileURLToPath(import.meta.url));
const cannotRun = 77;

function skip(reason) {
  console.log(reason);
  process.exit(cannotRun);
}

const [kind = "unit", ...names] = process.argv.slice(2);
const patterns = names.map((name) => `--test-name-pattern=${name}`);
const modules = join(here, "../node_modules");
if (!existsSync(modules)) skip("the packages of the viewer are missing: run tools/viewer-modules");
if (kind !== "unit") {
  const program = process.env.ZTCAD_PROGRAM;
  if (!program || !existsSync(program)) skip("ZTCAD_PROGRAM names no program");
  if (!existsSync(process.env.ZTCAD_BROWSER ?? "/usr/bin/chromium")) skip("Chromium is not installed");
}

const { build } = await import("esbuild");
const folder = await mkdtemp(join(tmpdir(), "viewer-test-"));
try {
  const tests = (await readdir(join(here, kind))).filter((name) => name.endsWith(".test.ts"));
  await build({
    entryPoints: tests.map((name) => join(here, kind, name)),
    outdir: folder,
    bundle: true,
    platform: "node",
    format: "cjs", // the packages that are not bundled are found by NODE_PATH
    outExtension: { ".js": ".cjs" },
    external: ["playwright-core", "axe-core"],
    sourcemap: "inline",
    logLevel: "warning",
  });
  const { status } = spawnSync(
    process.execPath,
    [
      "--enable-source-maps",
      "--test",
      ...patterns,
      ...tests.map((name) => join(folder, name.replace(/\.ts$/, ".cjs"))),
    ],
    { stdio: "inherit", env: { ...process.env, NODE_PATH: modules, ZTCAD_VIEWER: dirname(here) } },
  );
  process.exitCode = status ?? 1;
} finally {
  await rm(folder, { recursive: true });
}
