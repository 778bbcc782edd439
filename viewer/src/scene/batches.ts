// What the picture is made of. Solids are drawn once for each shape, at all its places; lines and points are joined
// into one object each. All positions are relative to the frame of the picture, which lies near what one looks at.

import {
  BufferAttribute,
  BufferGeometry,
  Group,
  InstancedBufferAttribute,
  InstancedMesh,
  Points,
  SphereGeometry,
} from "three";
import { LineSegments2 } from "three/examples/jsm/lines/LineSegments2.js";
import { LineSegmentsGeometry } from "three/examples/jsm/lines/LineSegmentsGeometry.js";
import type { Shape } from "../model/shape";
import { featureEdges, signedVolume, smoothNormals } from "../model/surface";
import { determinant, transformPoint, type Transform, type Vec3 } from "../model/transform";
import type { Placement } from "./placement";
import type { ItemColors } from "./colors";
import { InstancedLines } from "./instanced_lines";
import type { Materials } from "./materials";

/** What a refresh draws. */
export interface Drawn {
  readonly visible: Uint8Array;
  readonly colors: ItemColors;
  /** Position of the picture's frame in the document's. */
  readonly origin: Vec3;
}

/** Writes a transform, relative to an origin, as a 4x4 matrix column by column. */
function writeMatrix(
  m: Transform,
  origin: Vec3,
  scale: number,
  mirrored: boolean,
  target: Float32Array,
  at: number,
): void {
  const flip = mirrored ? -1 : 1;
  for (let row = 0; row < 3; ++row) {
    const sign = row === 0 ? flip : 1;
    for (let column = 0; column < 3; ++column)
      target[at + 4 * column + row] = sign * scale * m[4 * row + column]!;
    target[at + 12 + row] = sign * (m[4 * row + 3]! - origin[row]!);
  }
  target[at + 15] = 1;
}

/**
 * One shape at all its places of one handedness. The renderer looks at the object's matrix, not at those of the places,
 * to tell which side of a triangle is its front; mirrored places therefore have an object that mirrors, too.
 */
class SolidBatch {
  readonly mesh: InstancedMesh;
  private edges: InstancedLines | null = null;

  constructor(
    private readonly placement: Placement,
    private readonly items: Int32Array,
    private readonly mirrored: boolean,
    private readonly isSphere: boolean,
    geometry: BufferGeometry,
    private readonly materials: Materials,
  ) {
    this.mesh = new InstancedMesh(geometry, materials.solid, items.length);
    this.mesh.instanceColor = new InstancedBufferAttribute(new Float32Array(3 * items.length), 3);
    this.mesh.frustumCulled = false;
    this.mesh.matrixAutoUpdate = false;
    if (mirrored) this.mesh.matrix.makeScale(-1, 1, 1);
  }

  refresh({ visible, colors, origin }: Drawn): void {
    const matrices = this.mesh.instanceMatrix.array as Float32Array;
    const tints = this.mesh.instanceColor!.array as Float32Array;
    let count = 0;
    for (const item of this.items) {
      if (!visible[item]) continue;
      const scale = this.isSphere ? this.placement.shapeOf(item)!.radius : 1;
      writeMatrix(this.placement.transform(item), origin, scale, this.mirrored, matrices, 16 * count);
      colors.put(item, tints, 3 * count);
      ++count;
    }
    this.mesh.count = count;
    this.mesh.visible = count > 0;
    this.mesh.instanceMatrix.needsUpdate = true;
    this.mesh.instanceColor!.needsUpdate = true;
    if (this.edges) this.edges.count = count;
  }

  showEdges(shown: boolean, geometry: () => BufferGeometry): void {
    if (shown && !this.edges) {
      this.edges = new InstancedLines(geometry(), this.materials.edge, 0);
      this.edges.instanceMatrix = this.mesh.instanceMatrix;
      this.edges.count = this.mesh.count;
      this.edges.frustumCulled = false;
      this.mesh.add(this.edges);
    }
    if (this.edges) this.edges.visible = shown;
  }
}

class SolidShape {
  readonly batches: SolidBatch[];
  private edges: BufferGeometry | null = null;

  constructor(
    placement: Placement,
    private readonly shape: Shape,
    items: readonly number[],
    materials: Materials,
  ) {
    const geometry = shape.kind === "sphere" ? sphereGeometry(items.length) : meshGeometry(shape);
    const isMirrored = (item: number): boolean => determinant(placement.transform(item)) < 0;
    this.batches = [false, true].flatMap((mirrored) => {
      const those = Int32Array.from(items.filter((item) => isMirrored(item) === mirrored));
      if (those.length === 0) return [];
      return [new SolidBatch(placement, those, mirrored, shape.kind === "sphere", geometry, materials)];
    });
  }

  showEdges(shown: boolean): void {
    if (this.shape.kind === "sphere") return;
    for (const batch of this.batches) batch.showEdges(shown, () => (this.edges ??= edgeGeometry(this.shape)));
  }
}

function sphereGeometry(count: number): BufferGeometry {
  const fine = count < 500;
  return new SphereGeometry(1, fine ? 64 : 24, fine ? 40 : 14).rotateX(Math.PI / 2);
}

function meshGeometry(shape: Shape): BufferGeometry {
  const geometry = new BufferGeometry();
  const facets = shape.indices ?? new Uint32Array();
  const { positions, normals, indices } = smoothNormals(shape.positions, facets);
  // outside is where a closed solid has it, even if its facets face inwards, which a finding reports
  if (signedVolume(shape.positions, facets) < 0)
    for (let at = 0; at < indices.length; at += 3) {
      const second = indices[at + 1]!;
      indices[at + 1] = indices[at + 2]!;
      indices[at + 2] = second;
    }
  geometry.setAttribute("position", new BufferAttribute(positions, 3));
  geometry.setAttribute("normal", new BufferAttribute(normals, 4, true));
  geometry.setIndex(new BufferAttribute(indices, 1));
  return geometry;
}

function edgeGeometry(shape: Shape): BufferGeometry {
  const geometry = new BufferGeometry();
  geometry.setAttribute("position", new BufferAttribute(shape.positions, 3));
  geometry.setIndex(
    new BufferAttribute(featureEdges(shape.positions, shape.indices ?? new Uint32Array()), 1),
  );
  return geometry;
}

/** The model as three draws it. */
export class Batches {
  readonly group = new Group();
  private readonly solids: SolidShape[] = [];
  private readonly lines: number[] = [];
  private readonly points: number[] = [];
  private readonly lineObject: LineSegments2;
  private readonly pointObject: Points;

  constructor(
    private readonly placement: Placement,
    materials: Materials,
  ) {
    const { model, shapes } = placement;
    const ofShape = new Map<number, number[]>();
    const spheres: number[] = [];
    for (let item = 0; item < model.items.size; ++item) {
      const index = model.page.items.shape[item]!;
      if (index < 0) continue;
      const shape = shapes[index]!;
      if (shape.kind === "polyline") this.lines.push(item);
      else if (shape.kind === "point" || (shape.kind === "sphere" && shape.radius === 0))
        this.points.push(item);
      else if (shape.kind === "sphere") spheres.push(item);
      else if (shape.facetCount > 0) {
        const items = ofShape.get(index);
        if (items) items.push(item);
        else ofShape.set(index, [item]);
      }
    }
    // spheres differ in radius only: one object draws them all
    if (spheres.length > 0)
      this.solids.push(new SolidShape(placement, placement.shapeOf(spheres[0]!)!, spheres, materials));
    for (const [index, items] of ofShape)
      this.solids.push(new SolidShape(placement, shapes[index]!, items, materials));
    for (const solid of this.solids) for (const batch of solid.batches) this.group.add(batch.mesh);

    this.lineObject = new LineSegments2(new LineSegmentsGeometry(), materials.line);
    this.pointObject = new Points(new BufferGeometry(), materials.point);
    for (const object of [this.lineObject, this.pointObject]) {
      object.frustumCulled = false;
      object.visible = false;
      this.group.add(object);
    }
  }

  refresh(drawn: Drawn): void {
    for (const solid of this.solids) for (const batch of solid.batches) batch.refresh(drawn);
    this.refreshLines(drawn);
    this.refreshPoints(drawn);
  }

  showEdges(shown: boolean): void {
    for (const solid of this.solids) solid.showEdges(shown);
  }

  private refreshLines({ visible, colors, origin }: Drawn): void {
    const items = this.lines.filter((item) => visible[item]);
    let segments = 0;
    for (const item of items) segments += Math.max(0, this.placement.shapeOf(item)!.positions.length / 3 - 1);
    const ends = new Float32Array(6 * segments);
    const tints = new Float32Array(6 * segments);
    let at = 0;
    for (const item of items) {
      const shape = this.placement.shapeOf(item)!;
      const transform = this.placement.transform(item);
      for (let vertex = 0; vertex < shape.positions.length / 3; ++vertex) {
        const point = transformPoint(transform, shape.vertex(vertex));
        const last = vertex === shape.positions.length / 3 - 1;
        // each inner vertex ends one segment and begins the next
        for (const part of [vertex > 0 ? at - 3 : -1, last ? -1 : at]) {
          if (part < 0) continue;
          for (let axis = 0; axis < 3; ++axis) ends[part + axis] = point[axis]! - origin[axis]!;
          colors.put(item, tints, part);
        }
        if (!last) at += 6;
      }
    }
    this.lineObject.geometry.dispose();
    this.lineObject.geometry = new LineSegmentsGeometry();
    this.lineObject.visible = segments > 0;
    if (segments === 0) return;
    this.lineObject.geometry.setPositions(ends);
    this.lineObject.geometry.setColors(tints);
  }

  private refreshPoints({ visible, colors, origin }: Drawn): void {
    const items = this.points.filter((item) => visible[item]);
    const places = new Float32Array(3 * items.length);
    const tints = new Float32Array(3 * items.length);
    items.forEach((item, number) => {
      const transform = this.placement.transform(item);
      for (let axis = 0; axis < 3; ++axis)
        places[3 * number + axis] = transform[4 * axis + 3]! - origin[axis]!;
      colors.put(item, tints, 3 * number);
    });
    this.pointObject.geometry.dispose();
    this.pointObject.geometry = new BufferGeometry();
    this.pointObject.geometry.setAttribute("position", new BufferAttribute(places, 3));
    this.pointObject.geometry.setAttribute("color", new BufferAttribute(tints, 3));
    this.pointObject.visible = items.length > 0;
  }
}
