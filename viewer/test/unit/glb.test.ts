import assert from "node:assert/strict";
import { test } from "node:test";
import { MeshoptEncoder } from "meshoptimizer/encoder";
import { decodeBase85, readMeshes } from "../../src/model/glb";
import { ball } from "../support/sample";

const align = (size: number): number => (size + 3) & ~3;

/** A GLB of one mesh, compressed as the program does it, and one strip of lines that is not. */
async function makeGlb(positions: Float32Array, indices: Uint32Array): Promise<Uint8Array> {
  await MeshoptEncoder.ready;
  const bytes = (array: Float32Array | Uint32Array): Uint8Array => new Uint8Array(array.buffer);
  const count = positions.length / 3;
  const packed = MeshoptEncoder.encodeGltfBuffer(bytes(positions), count, 12, "ATTRIBUTES");
  const order = MeshoptEncoder.encodeGltfBuffer(bytes(indices), indices.length, 4, "TRIANGLES");
  const strip = bytes(Float32Array.of(1, 2, 3, 4, 5, 6));
  const starts = [0, align(packed.length), align(packed.length) + align(order.length)];
  const binary = new Uint8Array(starts[2]! + strip.length);
  [packed, order, strip].forEach((part, at) => {
    binary.set(part, starts[at]);
  });
  const view = (at: number, source: Uint8Array, stride: number, number: number, mode: string) => ({
    buffer: 1,
    byteLength: stride * number,
    extensions: {
      EXT_meshopt_compression: {
        buffer: 0,
        byteOffset: starts[at],
        byteLength: source.length,
        byteStride: stride,
        count: number,
        mode,
      },
    },
  });
  const gltf = {
    bufferViews: [
      view(0, packed, 12, count, "ATTRIBUTES"),
      view(1, order, 4, indices.length, "TRIANGLES"),
      { buffer: 0, byteOffset: starts[2], byteLength: strip.length },
    ],
    accessors: [
      { bufferView: 0, componentType: 5126, count },
      { bufferView: 1, componentType: 5125, count: indices.length },
      { bufferView: 2, componentType: 5126, count: 2 },
    ],
    meshes: [
      { primitives: [{ attributes: { POSITION: 0 }, indices: 1 }] },
      { primitives: [{ attributes: { POSITION: 2 }, mode: 3 }] },
    ],
  };
  let text = JSON.stringify(gltf);
  text += " ".repeat(align(text.length) - text.length);
  const json = new TextEncoder().encode(text);
  const glb = new Uint8Array(12 + 8 + json.length + 8 + binary.length);
  const head = new DataView(glb.buffer);
  head.setUint32(0, 0x46546c67, true);
  head.setUint32(4, 2, true);
  head.setUint32(8, glb.length, true);
  head.setUint32(12, json.length, true);
  head.setUint32(16, 0x4e4f534a, true);
  glb.set(json, 20);
  head.setUint32(20 + json.length, binary.length, true);
  head.setUint32(24 + json.length, 0x004e4942, true);
  glb.set(binary, 28 + json.length);
  return glb;
}

void test("a compressed mesh comes out as it went in", async () => {
  const { positions, indices } = ball(12);
  const [mesh, strip] = await readMeshes(await makeGlb(positions, indices));
  assert.deepEqual(mesh!.positions, positions);
  // the codec may turn the corners of a facet, never its direction
  const facets = (list: Uint32Array): string[] =>
    Array.from({ length: list.length / 3 }, (_, at) => {
      const facet = [...list.subarray(3 * at, 3 * at + 3)];
      const least = facet.indexOf(Math.min(...facet));
      return [...facet.slice(least), ...facet.slice(0, least)].join();
    });
  assert.deepEqual(facets(mesh!.indices!), facets(indices));
  assert.deepEqual([...strip!.positions], [1, 2, 3, 4, 5, 6]);
  assert.equal(strip!.indices, null);
});

void test("bytes that are no GLB are refused", async () => {
  await assert.rejects(readMeshes(Uint8Array.of(1, 2, 3)), /no GLB/);
  await assert.rejects(readMeshes(new Uint8Array(64)), /no GLB/);
});

void test("base 85 is decoded", () => {
  assert.equal(decodeBase85("").length, 0);
  assert.deepEqual([...decodeBase85("00000")], [0, 0, 0, 0]);
  assert.deepEqual([...decodeBase85("|NsC0")], [255, 255, 255, 255]);
  assert.deepEqual([...decodeBase85("0RMmo00")], [0, 255, 128, 7, 0]);
});
