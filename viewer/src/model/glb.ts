// Reads the meshes of a GLB whose buffer views are compressed by EXT_meshopt_compression. Of glTF it reads what
// the program writes: one primitive a mesh, with float32 positions.

import { MeshoptDecoder } from "meshoptimizer/decoder";

/** Positions are relative to the origin of their shape. */
export interface MeshData {
  readonly positions: Float32Array;
  /** Three for each triangle; null for a strip of lines. */
  readonly indices: Uint32Array | null;
}

interface Compression {
  buffer: number;
  byteOffset?: number;
  byteLength: number;
  byteStride: number;
  count: number;
  mode: string;
  filter?: string;
}

interface BufferView {
  buffer: number;
  byteOffset?: number;
  byteLength: number;
  byteStride?: number;
  extensions?: { EXT_meshopt_compression?: Compression };
}

interface Accessor {
  bufferView?: number;
  byteOffset?: number;
  componentType: number;
  count: number;
}

interface Primitive {
  attributes: { POSITION?: number };
  indices?: number;
  mode?: number;
}

interface Gltf {
  bufferViews?: BufferView[];
  accessors?: Accessor[];
  meshes?: { primitives: Primitive[] }[];
}

const magic = 0x46546c67;
const jsonChunk = 0x4e4f534a;
const binaryChunk = 0x004e4942;
const triangles = 4;
const float32 = 5126;
const uint16 = 5123;
const uint32 = 5125;

function chunks(bytes: Uint8Array): { gltf: Gltf; binary: Uint8Array } {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  if (bytes.length < 12 || view.getUint32(0, true) !== magic)
    throw new Error("The geometry of this page is no GLB.");
  let gltf: Gltf | null = null;
  let binary = new Uint8Array();
  for (let at = 12; at + 8 <= bytes.length;) {
    const size = view.getUint32(at, true);
    const type = view.getUint32(at + 4, true);
    const content = bytes.subarray(at + 8, at + 8 + size);
    if (type === jsonChunk) gltf = JSON.parse(new TextDecoder().decode(content)) as Gltf;
    if (type === binaryChunk) binary = content as Uint8Array<ArrayBuffer>;
    at += 8 + size;
  }
  if (!gltf) throw new Error("The geometry of this page has no description.");
  return { gltf, binary };
}

/** Decodes all meshes, in their order. */
export async function readMeshes(bytes: Uint8Array): Promise<MeshData[]> {
  const { gltf, binary } = chunks(bytes);
  await MeshoptDecoder.ready;
  const views = new Map<number, Uint8Array>();

  const viewBytes = (index: number): Uint8Array => {
    const known = views.get(index);
    if (known) return known;
    const view = gltf.bufferViews![index]!;
    const packed = view.extensions?.EXT_meshopt_compression;
    let content: Uint8Array;
    if (packed) {
      const from = packed.byteOffset ?? 0;
      content = new Uint8Array(packed.count * packed.byteStride);
      const source = binary.subarray(from, from + packed.byteLength);
      MeshoptDecoder.decodeGltfBuffer(
        content,
        packed.count,
        packed.byteStride,
        source,
        packed.mode,
        packed.filter,
      );
    } else {
      const from = view.byteOffset ?? 0;
      content = binary.slice(from, from + view.byteLength); // typed arrays need an aligned start
    }
    views.set(index, content);
    return content;
  };

  const positions = (index: number): Float32Array => {
    const { bufferView, byteOffset = 0, componentType, count } = gltf.accessors![index]!;
    if (componentType !== float32) throw new Error("Positions are expected as float32.");
    if (bufferView === undefined) return new Float32Array(3 * count);
    const stride = gltf.bufferViews![bufferView]!.byteStride ?? 12;
    const content = viewBytes(bufferView);
    if (stride === 12) return new Float32Array(content.buffer, content.byteOffset + byteOffset, 3 * count);
    const view = new DataView(content.buffer, content.byteOffset + byteOffset);
    return Float32Array.from({ length: 3 * count }, (_, at) =>
      view.getFloat32(Math.floor(at / 3) * stride + 4 * (at % 3), true),
    );
  };

  const indices = (index: number): Uint32Array => {
    const { bufferView, byteOffset = 0, componentType, count } = gltf.accessors![index]!;
    const content = viewBytes(bufferView!);
    const from = content.byteOffset + byteOffset;
    if (componentType === uint32) return new Uint32Array(content.buffer, from, count);
    if (componentType === uint16) return Uint32Array.from(new Uint16Array(content.buffer, from, count));
    throw new Error("Indices are expected as uint16 or uint32.");
  };

  return (gltf.meshes ?? []).map(({ primitives: [primitive] }) => {
    if (primitive?.attributes.POSITION === undefined) return { positions: new Float32Array(), indices: null };
    const isMesh = (primitive.mode ?? triangles) === triangles;
    return {
      positions: positions(primitive.attributes.POSITION),
      indices: isMesh && primitive.indices !== undefined ? indices(primitive.indices) : null,
    };
  });
}

const base85Digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!#$%.()*+-;,=/?@^_`{|}~";

/** The bytes of a text in base 85: four bytes for five digits, and one less than the digits at the end. */
export function decodeBase85(text: string): Uint8Array {
  const values = new Uint8Array(128);
  for (let value = 0; value < base85Digits.length; ++value) values[base85Digits.charCodeAt(value)] = value;
  const padded = Math.ceil(text.length / 5) * 5;
  const bytes = new Uint8Array((padded / 5) * 4);
  let to = 0;
  for (let at = 0; at < padded; at += 5) {
    let number = 0;
    for (let i = at; i < at + 5; ++i) {
      const value = i < text.length ? values[text.charCodeAt(i)] : 84;
      number = number * 85 + (value ?? 0);
    }
    bytes[to++] = number >>> 24;
    bytes[to++] = number >>> 16;
    bytes[to++] = number >>> 8;
    bytes[to++] = number;
  }
  return bytes.subarray(0, bytes.length - (padded - text.length));
}
