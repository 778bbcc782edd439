import type { MeshData } from "./glb";
import type { Model } from "./model";
import type { ShapeKind } from "./page";
import { Box, scale, type Vec3 } from "./transform";

const none = new Float32Array();

/** Geometry that items place: positions in float32 relative to an origin in doubles. */
export class Shape {
  readonly kind: ShapeKind;
  readonly origin: Vec3;
  /** Of a sphere; 0 if the document gives none. */
  readonly radius: number;
  readonly positions: Float32Array;
  readonly indices: Uint32Array | null;
  /** Relative to the origin. */
  readonly box = new Box();

  constructor(model: Model, index: number, meshes: readonly MeshData[]) {
    const { kind, radius, mesh } = model.page.shapes;
    this.kind = kind[index]!;
    this.origin = model.shapeOrigin(index);
    this.radius = Math.abs(radius[index] ?? 0);
    const data = meshes[mesh[index]!];
    this.positions = data?.positions ?? none;
    this.indices = data?.indices ? validFacets(data.indices, this.positions.length / 3) : null;
    if (this.kind === "sphere" || this.kind === "point") {
      const reach: Vec3 = [this.radius, this.radius, this.radius];
      this.box.add(reach);
      this.box.add(scale(reach, -1));
    } else {
      this.box.addBox(boxOf(this.positions));
    }
  }

  /** How precisely vertices are known: the rounding of float32, relative to the origin. 0 for an origin alone. */
  get precision(): number {
    return this.positions.length > 0 ? 2 ** -23 * this.box.radius : 0;
  }

  get facetCount(): number {
    return (this.indices?.length ?? 0) / 3;
  }

  /** A vertex, relative to the origin. */
  vertex(index: number): Vec3 {
    return [this.positions[3 * index]!, this.positions[3 * index + 1]!, this.positions[3 * index + 2]!];
  }
}

function boxOf(positions: Float32Array): Box {
  const box = new Box();
  const { low, high } = box;
  for (let at = 0; at + 2 < positions.length; at += 3) {
    const x = positions[at]!;
    const y = positions[at + 1]!;
    const z = positions[at + 2]!;
    if (!Number.isFinite(x + y + z)) continue;
    if (x < low[0]) low[0] = x;
    if (y < low[1]) low[1] = y;
    if (z < low[2]) low[2] = z;
    if (x > high[0]) high[0] = x;
    if (y > high[1]) high[1] = y;
    if (z > high[2]) high[2] = z;
  }
  return box;
}

/** The facets whose indices all exist: documents may have others, which are findings. */
function validFacets(indices: Uint32Array, vertices: number): Uint32Array {
  if (indices.every((index) => index < vertices)) return indices;
  const kept: number[] = [];
  for (let at = 0; at + 2 < indices.length; at += 3) {
    const facet = indices.subarray(at, at + 3);
    if (facet.every((index) => index < vertices)) kept.push(...facet);
  }
  return Uint32Array.from(kept);
}
