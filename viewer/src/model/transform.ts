// Affine maps and vectors in doubles. A transform is twelve numbers: the first three rows of a 4x4 matrix, row by
// row. Positions of a document are never rounded to float32 before they are relative to something close.

export type Vec3 = [number, number, number];
export type Transform = ArrayLike<number>;

export const identity: Transform = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0];

export const add = (a: Vec3, b: Vec3): Vec3 => [a[0] + b[0], a[1] + b[1], a[2] + b[2]];
export const subtract = (a: Vec3, b: Vec3): Vec3 => [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
export const scale = (a: Vec3, factor: number): Vec3 => [a[0] * factor, a[1] * factor, a[2] * factor];
export const dot = (a: Vec3, b: Vec3): number => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
export const length = (a: Vec3): number => Math.hypot(a[0], a[1], a[2]);
export const cross = (a: Vec3, b: Vec3): Vec3 => [
  a[1] * b[2] - a[2] * b[1],
  a[2] * b[0] - a[0] * b[2],
  a[0] * b[1] - a[1] * b[0],
];

/** The unit vector; the zero vector stays as it is. */
export function normalize(a: Vec3): Vec3 {
  const size = length(a);
  return size > 0 ? scale(a, 1 / size) : a;
}

export function transformPoint(m: Transform, [x, y, z]: Vec3): Vec3 {
  return [
    m[0]! * x + m[1]! * y + m[2]! * z + m[3]!,
    m[4]! * x + m[5]! * y + m[6]! * z + m[7]!,
    m[8]! * x + m[9]! * y + m[10]! * z + m[11]!,
  ];
}

/** Without the translation. */
export function transformDirection(m: Transform, [x, y, z]: Vec3): Vec3 {
  return [
    m[0]! * x + m[1]! * y + m[2]! * z,
    m[4]! * x + m[5]! * y + m[6]! * z,
    m[8]! * x + m[9]! * y + m[10]! * z,
  ];
}

/** Column 0, 1 or 2: the image of an axis. */
export const column = (m: Transform, axis: number): Vec3 => [m[axis]!, m[4 + axis]!, m[8 + axis]!];

export const translation = (m: Transform): Vec3 => [m[3]!, m[7]!, m[11]!];

/** Negative: the map mirrors. */
export const determinant = (m: Transform): number => dot(column(m, 0), cross(column(m, 1), column(m, 2)));

/** The inverse; null for a map that flattens. */
export function invert(m: Transform): Transform | null {
  const a = column(m, 0);
  const b = column(m, 1);
  const c = column(m, 2);
  const det = dot(a, cross(b, c));
  if (!(Math.abs(det) > 0) || !Number.isFinite(det)) return null;
  const rows = [cross(b, c), cross(c, a), cross(a, b)].map((row) => scale(row, 1 / det));
  const t = translation(m);
  return rows.flatMap((row) => [...row, -dot(row, t)]);
}

/** A box with faces along the axes. An empty one has low above high. */
export class Box {
  readonly low: Vec3 = [Infinity, Infinity, Infinity];
  readonly high: Vec3 = [-Infinity, -Infinity, -Infinity];

  get isEmpty(): boolean {
    return !(this.low[0] <= this.high[0]);
  }

  /** Points with a coordinate that is not finite are ignored. */
  add(point: Vec3): void {
    if (!point.every(Number.isFinite)) return;
    for (let axis = 0; axis < 3; ++axis) {
      this.low[axis] = Math.min(this.low[axis]!, point[axis]!);
      this.high[axis] = Math.max(this.high[axis]!, point[axis]!);
    }
  }

  addBox(other: Box): void {
    if (other.isEmpty) return;
    this.add(other.low);
    this.add(other.high);
  }

  get center(): Vec3 {
    return this.isEmpty ? [0, 0, 0] : scale(add(this.low, this.high), 0.5);
  }

  /** Half the diagonal. */
  get radius(): number {
    return this.isEmpty ? 0 : length(subtract(this.high, this.low)) / 2;
  }

  /** The box around the image of this one. */
  transformed(m: Transform): Box {
    const result = new Box();
    if (this.isEmpty) return result;
    const center = transformPoint(m, this.center);
    const half = scale(subtract(this.high, this.low), 0.5);
    const reach: Vec3 = [0, 0, 0];
    for (let row = 0; row < 3; ++row)
      reach[row] =
        Math.abs(m[4 * row]! * half[0]) +
        Math.abs(m[4 * row + 1]! * half[1]) +
        Math.abs(m[4 * row + 2]! * half[2]);
    result.add(subtract(center, reach));
    result.add(add(center, reach));
    return result;
  }
}
