// What is drawn over the model: local axes, centre of mass and inertia ellipsoid of the selected element, markers of
// findings and what a finding is about, and what is being measured.

import {
  BufferAttribute,
  BufferGeometry,
  Color,
  DoubleSide,
  Group,
  LineBasicMaterial,
  LineSegments,
  Mesh,
  MeshBasicMaterial,
  Points,
  SphereGeometry,
  type Matrix4,
} from "three";
import { LineMaterial } from "three/examples/jsm/lines/LineMaterial.js";
import { LineSegments2 } from "three/examples/jsm/lines/LineSegments2.js";
import { LineSegmentsGeometry } from "three/examples/jsm/lines/LineSegmentsGeometry.js";
import type { Ellipsoid } from "../model/inertia";
import {
  column,
  normalize,
  translation,
  transformDirection,
  transformPoint,
  subtract,
  type Transform,
  type Vec3,
} from "../model/transform";
import { heightAt, type View } from "../model/view";
import type { Materials } from "./materials";

const axisColors = ["#e5484d", "#30a46c", "#3b82f6"];
/** Length of drawn axes, as a part of the picture's height. */
const axisLength = 0.11;

export interface Mark {
  readonly place: Vec3;
  readonly color: string;
}

/** One object for each kind of overlay; `move` places them relative to the picture's frame. */
export class Overlays {
  readonly group = new Group();
  private readonly axes: LineSegments2;
  private readonly massCenter: Points;
  private readonly markers: Points;
  private readonly ellipsoid = new Group();
  /** Facets, edges and vertices of a finding. */
  private readonly spots: { readonly facets: Mesh; readonly edges: LineSegments2; readonly vertices: Points };
  private readonly measured: LineSegments2;
  private readonly measuredEnds: Points;
  private frame: { transform: Transform } | null = null;
  private body: { shape: Ellipsoid | null; center: Vec3; transform: Transform } | null = null;
  private marks: readonly Mark[] = [];
  private found: { places: readonly (readonly Vec3[])[]; color: string } | null = null;
  private segment: { ends: readonly Vec3[]; color: string } | null = null;

  constructor(materials: Materials) {
    const lines = (width: number): LineSegments2 => {
      const material = new LineMaterial({
        linewidth: width,
        vertexColors: true,
        depthTest: false,
        transparent: true,
      });
      return new LineSegments2(new LineSegmentsGeometry(), material);
    };
    this.axes = lines(3);
    const ends = [1, 0, 0, 0, 1, 0, 0, 0, 1];
    const geometry = new LineSegmentsGeometry();
    geometry.setPositions([0, 1, 2].flatMap((axis) => [0, 0, 0, ...ends.slice(3 * axis, 3 * axis + 3)]));
    geometry.setColors(
      axisColors.flatMap((text) => [...new Color(text).toArray(), ...new Color(text).toArray()]),
    );
    this.axes.geometry = geometry;
    this.axes.matrixAutoUpdate = false;
    this.measured = lines(2);
    this.massCenter = new Points(new BufferGeometry(), materials.massCenter);
    this.markers = new Points(new BufferGeometry(), materials.marker);
    this.measuredEnds = new Points(new BufferGeometry(), materials.marker);
    const facet = new MeshBasicMaterial({
      side: DoubleSide,
      transparent: true,
      opacity: 0.75,
      depthTest: false,
    });
    this.spots = {
      facets: new Mesh(new BufferGeometry(), facet),
      edges: lines(4),
      vertices: new Points(new BufferGeometry(), materials.marker),
    };
    this.buildEllipsoid();
    let order = 1;
    const { facets, edges, vertices } = this.spots;
    const objects = [
      this.ellipsoid,
      this.markers,
      facets,
      edges,
      vertices,
      this.axes,
      this.massCenter,
      this.measured,
    ];
    for (const object of [...objects, this.measuredEnds]) {
      object.frustumCulled = false;
      object.visible = false;
      object.traverse((part) => (part.renderOrder = order));
      ++order;
      this.group.add(object);
    }
  }

  private buildEllipsoid(): void {
    const body = new MeshBasicMaterial({
      color: "#a855f7",
      transparent: true,
      opacity: 0.22,
      depthTest: false,
      depthWrite: false,
    });
    const grid = new LineBasicMaterial({
      color: "#a855f7",
      transparent: true,
      opacity: 0.85,
      depthTest: false,
    });
    const rings: number[] = [];
    const steps = 96;
    for (let axis = 0; axis < 3; ++axis)
      for (let step = 0; step < steps; ++step)
        for (const at of [step, step + 1]) {
          const angle = (2 * Math.PI * at) / steps;
          const point = [Math.cos(angle), Math.sin(angle), 0];
          rings.push(point[(axis + 2) % 3]!, point[axis]!, point[(axis + 1) % 3]!);
        }
    const circles = new BufferGeometry();
    circles.setAttribute("position", new BufferAttribute(Float32Array.from(rings), 3));
    const parts = [new Mesh(new SphereGeometry(1, 48, 32), body), new LineSegments(circles, grid)];
    for (const part of parts) {
      part.frustumCulled = false;
      this.ellipsoid.add(part);
    }
    this.ellipsoid.matrixAutoUpdate = false;
  }

  /** Axes of a frame; null: none. */
  setAxes(transform: Transform | null): void {
    this.frame = transform ? { transform } : null;
  }

  /** Mass of a body whose frame the transform maps to the document's; null: none. */
  setBody(body: { shape: Ellipsoid | null; center: Vec3; transform: Transform } | null): void {
    this.body = body;
  }

  setMarks(marks: readonly Mark[]): void {
    this.marks = marks;
  }

  /** Facets (three places), edges (two) and vertices (one), in the document's frame. */
  setSpots(places: readonly (readonly Vec3[])[], color: string): void {
    this.found = places.length > 0 ? { places, color } : null;
  }

  setMeasured(ends: readonly Vec3[], color: string): void {
    this.segment = ends.length > 0 ? { ends, color } : null;
  }

  /** Places everything relative to the frame of the picture and to the size of what one sees. */
  move(view: View, origin: Vec3): void {
    this.axes.visible = this.frame !== null;
    if (this.frame) {
      const m = this.frame.transform;
      const size = axisLength * heightAt(view, translation(m));
      const basis = [0, 1, 2].map((axis) => normalize(column(m, axis)).map((part) => part * size) as Vec3);
      setMatrix(this.axes.matrix, basis, subtract(translation(m), origin));
      this.axes.matrixWorldNeedsUpdate = true;
    }
    this.massCenter.visible = this.body !== null;
    this.ellipsoid.visible = this.body?.shape != null;
    if (this.body) {
      const { shape, center, transform } = this.body;
      const place = subtract(transformPoint(transform, center), origin);
      setPoints(this.massCenter, [place], ["#000000"]);
      if (shape) {
        const basis = shape.axes.map((axis, number) =>
          transformDirection(transform, axis.map((part) => part * shape.radii[number]!) as Vec3),
        );
        setMatrix(this.ellipsoid.matrix, basis, place);
        this.ellipsoid.matrixWorldNeedsUpdate = true;
      }
    }
    this.markers.visible = this.marks.length > 0;
    if (this.marks.length > 0)
      setPoints(
        this.markers,
        this.marks.map(({ place }) => subtract(place, origin)),
        this.marks.map(({ color }) => color),
      );
    this.moveSpots(origin);
    this.moveMeasured(origin);
  }

  private moveSpots(origin: Vec3): void {
    const { facets, edges, vertices } = this.spots;
    const color = new Color(this.found?.color);
    const parts = (size: number): Vec3[] =>
      (this.found?.places ?? [])
        .filter((place) => place.length === size)
        .flatMap((place) => place.map((corner) => subtract(corner, origin)));
    const corners = parts(3);
    const outline = [0, 1, 2].flatMap((first) =>
      corners.flatMap((_, at) =>
        at % 3 === 0 ? [corners[at + first]!, corners[at + ((first + 1) % 3)]!] : [],
      ),
    );
    const ends = [...parts(2), ...outline]; // a facet that is seen from the side is a line
    const points = parts(1);
    facets.visible = corners.length > 0;
    facets.geometry.dispose();
    facets.geometry = new BufferGeometry();
    facets.geometry.setAttribute("position", new BufferAttribute(Float32Array.from(corners.flat()), 3));
    (facets.material as MeshBasicMaterial).color.copy(color);
    setSegments(edges, ends, color);
    vertices.visible = points.length > 0;
    if (points.length > 0)
      setPoints(
        vertices,
        points,
        points.map(() => this.found!.color),
      );
  }

  private moveMeasured(origin: Vec3): void {
    const ends = (this.segment?.ends ?? []).map((end) => subtract(end, origin));
    const color = this.segment?.color ?? "#000000";
    this.measuredEnds.visible = ends.length > 0;
    if (ends.length > 0)
      setPoints(
        this.measuredEnds,
        ends,
        ends.map(() => color),
      );
    setSegments(this.measured, ends.length === 2 ? ends : [], new Color(color));
  }
}

/** Draws segments between pairs of places. */
function setSegments(object: LineSegments2, ends: readonly Vec3[], color: Color): void {
  object.visible = ends.length > 0;
  object.geometry.dispose();
  object.geometry = new LineSegmentsGeometry();
  if (ends.length === 0) return;
  object.geometry.setPositions(ends.flat());
  object.geometry.setColors(ends.flatMap(() => color.toArray()));
}

function setMatrix(matrix: Matrix4, basis: readonly Vec3[], place: Vec3): void {
  const [x, y, z] = basis as [Vec3, Vec3, Vec3];
  matrix.set(x[0], y[0], z[0], place[0], x[1], y[1], z[1], place[1], x[2], y[2], z[2], place[2], 0, 0, 0, 1);
}

function setPoints(object: Points, places: readonly Vec3[], colors: readonly string[]): void {
  object.geometry.dispose();
  object.geometry = new BufferGeometry();
  object.geometry.setAttribute("position", new BufferAttribute(Float32Array.from(places.flat()), 3));
  const tints = Float32Array.from(colors.flatMap((text) => new Color(text).toArray()));
  object.geometry.setAttribute("color", new BufferAttribute(tints, 3));
}
