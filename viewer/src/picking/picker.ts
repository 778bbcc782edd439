// From a place in the picture to what is drawn there. All in doubles: rays are mapped into the frame of each shape.

import { BufferAttribute, BufferGeometry, DoubleSide, Ray, Vector3 } from "three";
import { MeshBVH } from "three-mesh-bvh";
import { isHidden, type Plane } from "../model/section";
import type { Shape } from "../model/shape";
import {
  add,
  dot,
  invert,
  length,
  normalize,
  scale,
  subtract,
  transformDirection,
  transformPoint,
  type Transform,
  type Vec3,
} from "../model/transform";
import { project, rayThrough, type View } from "../model/view";
import type { Placement } from "../scene/placement";

/** A vertex in the document's frame, and how precisely it is known. */
export interface Vertex {
  readonly place: Vec3;
  readonly precision: number;
}

export interface Hit {
  readonly item: number;
  /** In the document's frame. */
  readonly place: Vec3;
  /** Corners of the facet, ends of the segment, or the point itself, in the document's frame. */
  readonly vertices: readonly Vec3[];
  /** Of the vertices. */
  readonly precision: number;
}

export interface Looking {
  readonly view: View;
  /** Place in the picture, in heights from its middle. */
  readonly x: number;
  readonly y: number;
  /** Height of the picture in pixels. */
  readonly pixels: number;
  readonly visible: Uint8Array;
  readonly section: Plane | null;
}

/** Lines and points are hit this near, in pixels. */
const reach = 7;

export class Picker {
  private readonly trees = new Map<Shape, MeshBVH>();

  constructor(private readonly placement: Placement) {}

  /** Prepares the search in all shapes, one for each call, so that the first click need not wait; false: done. */
  prepareNext(): boolean {
    for (const shape of this.placement.shapes)
      if (shape.facetCount > 0 && !this.trees.has(shape)) {
        this.tree(shape);
        return true;
      }
    return false;
  }

  private tree(shape: Shape): MeshBVH {
    let tree = this.trees.get(shape);
    if (!tree) {
      const geometry = new BufferGeometry();
      geometry.setAttribute("position", new BufferAttribute(shape.positions, 3));
      geometry.setIndex(new BufferAttribute(shape.indices!, 1));
      tree = new MeshBVH(geometry, { indirect: true }); // facets keep their order
      this.trees.set(shape, tree);
    }
    return tree;
  }

  /** The nearest item there; lines and points before a surface at the same depth. Null: nothing. */
  pick(looking: Looking): Hit | null {
    const { items } = this.placement.model;
    const { origin, direction } = rayThrough(looking.view, looking.x, looking.y);
    const ray = { origin, direction: normalize(direction) };
    const backOff = looking.view.perspective ? 0 : this.backOff(looking.view); // an orthographic eye is outside
    ray.origin = subtract(ray.origin, scale(ray.direction, backOff));

    let nearest = Infinity;
    let surface: Hit | null = null;
    let thin: { hit: Hit; distance: number; pixels: number } | null = null;
    for (let item = 0; item < items.size; ++item) {
      const shape = looking.visible[item] ? this.placement.shapeOf(item) : null;
      if (!shape) continue;
      const transform = this.placement.transform(item);
      if (shape.kind === "mesh" || (shape.kind === "sphere" && shape.radius > 0)) {
        for (const hit of shape.kind === "mesh"
          ? this.hitMesh(shape, transform, ray)
          : hitSphere(shape, transform, ray)) {
          const distance = dot(subtract(hit.place, ray.origin), ray.direction);
          if (distance < 0 || distance >= nearest || isHidden(looking.section, hit.place)) continue;
          nearest = distance;
          surface = { item, precision: shape.kind === "mesh" ? shape.precision : 0, ...hit };
        }
      } else {
        const hit = hitThin(shape, transform, looking);
        if (!hit) continue;
        const distance = dot(subtract(hit.place, ray.origin), ray.direction);
        if (thin && hit.pixels > thin.pixels) continue;
        const { place, vertices, pixels } = hit;
        thin = { hit: { item, place, vertices, precision: shape.precision }, distance, pixels };
      }
    }
    const tolerance = (2 * reach * looking.view.height) / looking.pixels;
    return thin && thin.distance <= nearest + tolerance ? thin.hit : surface;
  }

  private backOff(view: View): number {
    const box = this.placement.box(new Uint8Array(this.placement.model.items.size).fill(1));
    return 2 * box.radius + length(subtract(box.center, view.target));
  }

  private *hitMesh(
    shape: Shape,
    transform: Transform,
    ray: Line,
  ): Generator<{ place: Vec3; vertices: Vec3[] }> {
    if (shape.facetCount === 0) return;
    const inverse = invert(transform);
    if (!inverse) return;
    const origin = transformPoint(inverse, ray.origin);
    const direction = transformDirection(inverse, ray.direction);
    if (!meetsBox(shape, origin, direction)) return;
    // moved close to the shape, so that the search, which is in float32 in part, keeps its precision
    const size = normalize(direction);
    const ahead = dot(scale(origin, -1), size) - 2 * shape.box.radius - length(shape.box.center);
    const near = ahead > 0 ? add(origin, scale(size, ahead)) : origin;
    const local = new Ray(new Vector3(...near), new Vector3(...size));
    for (const { point, face } of this.tree(shape).raycast(local, DoubleSide)) {
      if (!face) continue;
      const vertices = [face.a, face.b, face.c].map((index) =>
        transformPoint(transform, shape.vertex(index)),
      );
      yield { place: transformPoint(transform, [point.x, point.y, point.z]), vertices };
    }
  }
}

interface Line {
  readonly origin: Vec3;
  readonly direction: Vec3;
}

function meetsBox(shape: Shape, origin: Vec3, direction: Vec3): boolean {
  const { low, high } = shape.box;
  const slack = 1e-6 * shape.box.radius;
  let enter = -Infinity;
  let leave = Infinity;
  for (let axis = 0; axis < 3; ++axis) {
    if (direction[axis] === 0) {
      if (origin[axis]! < low[axis]! - slack || origin[axis]! > high[axis]! + slack) return false;
      continue;
    }
    const a = (low[axis]! - slack - origin[axis]!) / direction[axis]!;
    const b = (high[axis]! + slack - origin[axis]!) / direction[axis]!;
    enter = Math.max(enter, Math.min(a, b));
    leave = Math.min(leave, Math.max(a, b));
  }
  return enter <= leave && leave >= 0;
}

function hitSphere(shape: Shape, transform: Transform, ray: Line): { place: Vec3; vertices: Vec3[] }[] {
  const inverse = invert(transform);
  if (!inverse) return [];
  const origin = transformPoint(inverse, ray.origin);
  const direction = normalize(transformDirection(inverse, ray.direction));
  const along = -dot(origin, direction);
  const foot = add(origin, scale(direction, along));
  const under = shape.radius * shape.radius - dot(foot, foot);
  if (under < 0) return [];
  const half = Math.sqrt(under);
  const center = transformPoint(transform, [0, 0, 0]);
  return [along - half, along + half].map((at) => ({
    place: transformPoint(transform, add(origin, scale(direction, at))),
    vertices: [center], // what can be measured of a sphere
  }));
}

/** A point or a polyline: the nearest place in the picture that the section plane shows. */
function hitThin(
  shape: Shape,
  transform: Transform,
  { view, x, y, pixels, section }: Looking,
): { place: Vec3; vertices: Vec3[]; pixels: number } | null {
  if (shape.kind !== "polyline") {
    const place = transformPoint(transform, [0, 0, 0]);
    const seen = isHidden(section, place) ? null : project(view, place);
    const away = seen ? Math.hypot(seen.x - x, seen.y - y) * pixels : Infinity;
    return away <= reach ? { place, vertices: [place], pixels: away } : null;
  }
  let best: { place: Vec3; vertices: Vec3[]; pixels: number } | null = null;
  let before: Vec3 | null = null;
  for (let index = 0; index < shape.positions.length / 3; ++index) {
    const end = transformPoint(transform, shape.vertex(index));
    const begin = before;
    before = end;
    if (!begin) continue;
    const a = project(view, begin);
    const b = project(view, end);
    if (!a || !b) continue;
    const dx = b.x - a.x;
    const dy = b.y - a.y;
    const size = dx * dx + dy * dy;
    const part = size > 0 ? Math.max(0, Math.min(1, ((x - a.x) * dx + (y - a.y) * dy) / size)) : 0;
    const away = Math.hypot(a.x + part * dx - x, a.y + part * dy - y) * pixels;
    if (away > reach || (best && away >= best.pixels)) continue;
    // a part of the picture is a smaller part of the segment where it is farther away
    const inSpace = view.perspective ? (part * a.depth) / (part * a.depth + (1 - part) * b.depth) : part;
    const place = add(begin, scale(subtract(end, begin), inSpace));
    if (!isHidden(section, place)) best = { place, vertices: [begin, end], pixels: away };
  }
  return best;
}

/** The vertex of a hit that is nearest to a place in the picture and not hidden by the section plane; null: none. */
export function nearestVertex(hit: Hit, { view, x, y, section }: Looking): Vertex | null {
  let best: Vertex | null = null;
  let least = Infinity;
  for (const vertex of hit.vertices) {
    const seen = isHidden(section, vertex) ? null : project(view, vertex);
    if (!seen) continue;
    const away = Math.hypot(seen.x - x, seen.y - y);
    if (away < least) {
      least = away;
      best = { place: vertex, precision: hit.precision };
    }
  }
  return best;
}
