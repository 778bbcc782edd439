// Builds the page: one file with one style and one script, which its policy names by their hashes.
//
//   node build.mjs --out FILE [--stats]    --stats: print what the script consists of

import { createHash } from "node:crypto";
import { mkdir, readFile, rename, writeFile } from "node:fs/promises";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { parseArgs } from "node:util";
import { analyzeMetafile, build } from "esbuild";

const here = dirname(fileURLToPath(import.meta.url));
const { values: options } = parseArgs({ options: { out: { type: "string" }, stats: { type: "boolean" } } });
if (!options.out) {
  console.error("usage: node build.mjs --out FILE [--stats]");
  process.exit(2);
}

const target = ["chrome114", "firefox125", "safari17"];

/** The notices that the bundled packages ask for in every copy. */
async function licences() {
  const files = ["three/LICENSE", "three-mesh-bvh/LICENSE", "meshoptimizer/LICENSE.md"];
  const texts = await Promise.all(files.map((file) => readFile(join(here, "node_modules", file), "utf8")));
  return `/*\n${files.map((file, at) => `${dirname(file)}\n${texts[at].trim()}`).join("\n\n")}\n*/`;
}

async function bundle() {
  const { outputFiles, metafile } = await build({
    entryPoints: [join(here, "src/main.ts")],
    bundle: true,
    format: "iife",
    minify: true,
    target,
    legalComments: "none", // the banner has all of them, in full
    banner: { js: await licences() },
    write: false,
    metafile: true,
    logLevel: "warning",
  });
  if (options.stats) console.log(await analyzeMetafile(metafile));
  return outputFiles[0].text;
}

async function style() {
  const { outputFiles } = await build({
    entryPoints: [join(here, "src/style.css")],
    minify: true,
    target,
    write: false,
    logLevel: "warning",
  });
  return outputFiles[0].text;
}

const hash = (text) => `'sha256-${createHash("sha256").update(text, "utf8").digest("base64")}'`;

const marks = ["title", "document", "scene"].map((name) => `<!--ztcad:${name}-->`);

/** What would end the script, or hide its end, must not be in it. */
function checkScript(script) {
  for (const forbidden of ["</script", "<!--"])
    if (script.toLowerCase().includes(forbidden)) throw new Error(`the script contains "${forbidden}"`);
}

const [template, script, css] = await Promise.all([
  readFile(join(here, "src/page.html"), "utf8"),
  bundle(),
  style(),
]);
checkScript(script);
const policy = [
  "default-src 'none'",
  `script-src ${hash(script)} 'wasm-unsafe-eval'`, // the decoder of the geometry is WebAssembly
  `style-src ${hash(css)}`,
  "base-uri 'none'",
  "form-action 'none'",
].join("; ");
const parts = { policy, style: css, script };
const page = template.replace(/\{\{(\w+)\}\}/g, (_, name) => parts[name]);
for (const mark of marks)
  if (page.split("\n").filter((line) => line === mark).length !== 1 || page.split(mark).length !== 2)
    throw new Error(`the page needs ${mark} once, as a line of its own`);
await mkdir(dirname(options.out), { recursive: true });
await writeFile(`${options.out}.new`, page);
await rename(`${options.out}.new`, options.out); // never half a page
