// Normals and edges of triangle meshes. Neighbouring facets are one surface where they meet at less than the
// crease angle; elsewhere there is an edge.

const creaseCosine = Math.cos((30 * Math.PI) / 180);

/** Unit normals of the facets, three numbers each; zero for a facet without area. */
export function facetNormals(positions: Float32Array, indices: Uint32Array): Float32Array {
  const normals = new Float32Array(indices.length);
  for (let at = 0; at < indices.length; at += 3) {
    const a = 3 * indices[at]!;
    const b = 3 * indices[at + 1]!;
    const c = 3 * indices[at + 2]!;
    const ux = positions[b]! - positions[a]!;
    const uy = positions[b + 1]! - positions[a + 1]!;
    const uz = positions[b + 2]! - positions[a + 2]!;
    const vx = positions[c]! - positions[a]!;
    const vy = positions[c + 1]! - positions[a + 1]!;
    const vz = positions[c + 2]! - positions[a + 2]!;
    const x = uy * vz - uz * vy;
    const y = uz * vx - ux * vz;
    const z = ux * vy - uy * vx;
    const size = Math.sqrt(x * x + y * y + z * z);
    if (!(size > 0)) continue;
    normals[at] = x / size;
    normals[at + 1] = y / size;
    normals[at + 2] = z / size;
  }
  return normals;
}

/** The corners (positions in the index list) at each vertex: those of vertex v are from start[v] to start[v + 1]. */
function cornersByVertex(
  indices: Uint32Array,
  vertices: number,
): { start: Uint32Array; corners: Uint32Array } {
  const start = new Uint32Array(vertices + 1);
  for (const vertex of indices) ++start[vertex + 1]!;
  for (let vertex = 0; vertex < vertices; ++vertex) start[vertex + 1]! += start[vertex]!;
  const next = Uint32Array.from(start);
  const corners = new Uint32Array(indices.length);
  for (let corner = 0; corner < indices.length; ++corner) corners[next[indices[corner]!]!++] = corner;
  return { start, corners };
}

export interface SmoothMesh {
  readonly positions: Float32Array;
  readonly normals: Int8Array; // normalized; the fourth of each is padding
  readonly indices: Uint32Array;
}

/**
 * Vertex normals that are smooth across shallow angles and sharp across creases. Vertices on creases are split, so
 * that the result has more of them; facets keep their order.
 */
export function smoothNormals(positions: Float32Array, indices: Uint32Array): SmoothMesh {
  const vertices = positions.length / 3;
  const facets = facetNormals(positions, indices);
  const { start, corners } = cornersByVertex(indices, vertices);
  const result = new Uint32Array(indices.length);
  const origin: number[] = []; // vertex that each split-off one copies
  const normals: number[] = [];
  const first = new Int8Array(4 * vertices);
  const sum = new Float64Array(3);

  const store = (target: Record<number, number>, at: number): void => {
    const size = Math.hypot(sum[0]!, sum[1]!, sum[2]!);
    for (let axis = 0; axis < 3; ++axis)
      target[at + axis] = size > 0 ? Math.round((127 * sum[axis]!) / size) : 0;
  };

  const groups: { reference: number; vertex: number }[] = [];
  for (let vertex = 0; vertex < vertices; ++vertex) {
    const from = start[vertex]!;
    const to = start[vertex + 1]!;
    groups.length = 0;
    for (let at = from; at < to; ++at) {
      const corner = corners[at]!;
      const facet = corner - (corner % 3);
      // the facets at this vertex that the corner's facet continues smoothly
      const mine = groups.find(({ reference }) => alike(facets, facet, reference));
      if (mine) {
        result[corner] = mine.vertex;
        continue;
      }
      sum.fill(0);
      for (let other = from; other < to; ++other) {
        const its = corners[other]! - (corners[other]! % 3);
        if (!smooth(facets, facet, its)) continue;
        for (let axis = 0; axis < 3; ++axis) sum[axis]! += facets[its + axis]!;
      }
      let target = vertex;
      if (groups.length === 0) {
        store(first, 4 * vertex);
      } else {
        target = vertices + origin.length;
        origin.push(vertex);
        const last = normals.length;
        normals.push(0, 0, 0, 0);
        store(normals, last);
      }
      groups.push({ reference: facet, vertex: target });
      result[corner] = target;
    }
  }
  if (origin.length === 0) return { positions, normals: first, indices: result };
  const split = new Float32Array(positions.length + 3 * origin.length);
  split.set(positions);
  origin.forEach((vertex, at) => {
    split.set(positions.subarray(3 * vertex, 3 * vertex + 3), positions.length + 3 * at);
  });
  const all = new Int8Array(first.length + normals.length);
  all.set(first);
  all.set(normals, first.length);
  return { positions: split, normals: all, indices: result };
}

const cosine = (normals: Float32Array, a: number, b: number): number =>
  normals[a]! * normals[b]! + normals[a + 1]! * normals[b + 1]! + normals[a + 2]! * normals[b + 2]!;

const smooth = (normals: Float32Array, a: number, b: number): boolean =>
  cosine(normals, a, b) >= creaseCosine;

/** Corners share a normal if their facets are well within the crease angle of each other. */
const alike = (normals: Float32Array, a: number, b: number): boolean =>
  a === b || cosine(normals, a, b) >= alikeCosine;
const alikeCosine = Math.cos((20 * Math.PI) / 180);

/**
 * The edges to draw, as pairs of vertices: those of one facet only, of more than two, and those at which two facets
 * meet at more than the crease angle. Vertices at one position count as one.
 */
export function featureEdges(positions: Float32Array, indices: Uint32Array): Uint32Array {
  const facets = facetNormals(positions, indices);
  const joined = joinVertices(positions);
  const vertices = positions.length / 3;
  const { start, corners } = cornersByVertex(
    indices.map((vertex) => joined[vertex]!),
    vertices,
  );
  const edges: number[] = [];
  const normalsAt = new Map<number, number[]>(); // by the vertex at the other end, above this one
  for (let vertex = 0; vertex < vertices; ++vertex) {
    normalsAt.clear();
    for (let at = start[vertex]!; at < start[vertex + 1]!; ++at) {
      const corner = corners[at]!;
      const facet = corner - (corner % 3);
      for (let step = 1; step < 3; ++step) {
        const other = joined[indices[facet + ((corner + step) % 3)]!]!;
        if (other <= vertex) continue;
        const known = normalsAt.get(other);
        if (known) known.push(facet);
        else normalsAt.set(other, [facet]);
      }
    }
    for (const [other, sides] of normalsAt)
      if (sides.length !== 2 || !smooth(facets, sides[0]!, sides[1]!)) edges.push(vertex, other);
  }
  return Uint32Array.from(edges);
}

/** For each vertex the first one at the same position. */
function joinVertices(positions: Float32Array): Uint32Array {
  const vertices = positions.length / 3;
  const bits = new Uint32Array(positions.buffer, positions.byteOffset, positions.length);
  let capacity = 16;
  while (capacity < 2 * vertices) capacity *= 2;
  const table = new Int32Array(capacity).fill(-1);
  const first = new Uint32Array(vertices);
  for (let vertex = 0; vertex < vertices; ++vertex) {
    const at = 3 * vertex;
    let hash =
      Math.imul(bits[at]!, 0x9e3779b1) ^
      Math.imul(bits[at + 1]!, 0x85ebca6b) ^
      Math.imul(bits[at + 2]!, 0xc2b2ae35);
    hash ^= hash >>> 15;
    for (let slot = hash & (capacity - 1); ; slot = (slot + 1) & (capacity - 1)) {
      const known = table[slot]!;
      if (known < 0) {
        table[slot] = vertex;
        first[vertex] = vertex;
        break;
      }
      if (
        positions[3 * known] === positions[at] &&
        positions[3 * known + 1] === positions[at + 1] &&
        positions[3 * known + 2] === positions[at + 2]
      ) {
        first[vertex] = known;
        break;
      }
    }
  }
  return first;
}

/** Six times the volume that the facets enclose about the origin; negative for a closed mesh that is inside out. */
export function signedVolume(positions: Float32Array, indices: Uint32Array): number {
  let sum = 0;
  for (let at = 0; at < indices.length; at += 3) {
    const a = 3 * indices[at]!;
    const b = 3 * indices[at + 1]!;
    const c = 3 * indices[at + 2]!;
    sum +=
      positions[a]! * (positions[b + 1]! * positions[c + 2]! - positions[b + 2]! * positions[c + 1]!) +
      positions[a + 1]! * (positions[b + 2]! * positions[c]! - positions[b]! * positions[c + 2]!) +
      positions[a + 2]! * (positions[b]! * positions[c + 1]! - positions[b + 1]! * positions[c]!);
  }
  return sum;
}
