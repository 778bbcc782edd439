import type { MassProperties } from "./page";
import { cross, type Vec3 } from "./transform";

/** The solid ellipsoid of uniform density with the same mass and the same inertia. */
export interface Ellipsoid {
  readonly center: Vec3;
  /** Unit vectors, right-handed. */
  readonly axes: readonly [Vec3, Vec3, Vec3];
  /** Half lengths along the axes. */
  readonly radii: Vec3;
  /** Principal moments about the axes. */
  readonly moments: Vec3;
}

/** Eigenvalues and eigenvectors of a symmetric tensor, by Jacobi's rotations. */
export function principalAxes(tensor: readonly (readonly number[])[]): {
  moments: Vec3;
  axes: [Vec3, Vec3, Vec3];
} {
  const a = tensor.map((row) => [...row]);
  const v = [
    [1, 0, 0],
    [0, 1, 0],
    [0, 0, 1],
  ];
  for (let sweep = 0; sweep < 32; ++sweep) {
    const off = Math.abs(a[0]![1]!) + Math.abs(a[0]![2]!) + Math.abs(a[1]![2]!);
    const diagonal = Math.abs(a[0]![0]!) + Math.abs(a[1]![1]!) + Math.abs(a[2]![2]!);
    if (!(off > 1e-15 * diagonal)) break;
    for (const [p, q] of [
      [0, 1],
      [0, 2],
      [1, 2],
    ] as const) {
      const apq = a[p]![q]!;
      if (apq === 0) continue;
      const theta = (a[q]![q]! - a[p]![p]!) / (2 * apq);
      const t = Math.sign(theta || 1) / (Math.abs(theta) + Math.hypot(theta, 1));
      const c = 1 / Math.hypot(t, 1);
      const s = t * c;
      for (let k = 0; k < 3; ++k) {
        const kp = a[k]![p]!;
        const kq = a[k]![q]!;
        a[k]![p] = c * kp - s * kq;
        a[k]![q] = s * kp + c * kq;
      }
      for (let k = 0; k < 3; ++k) {
        const pk = a[p]![k]!;
        const qk = a[q]![k]!;
        a[p]![k] = c * pk - s * qk;
        a[q]![k] = s * pk + c * qk;
        const vp = v[k]![p]!;
        const vq = v[k]![q]!;
        v[k]![p] = c * vp - s * vq;
        v[k]![q] = s * vp + c * vq;
      }
    }
  }
  const axis = (index: number): Vec3 => [v[0]![index]!, v[1]![index]!, v[2]![index]!];
  return {
    moments: [a[0]![0]!, a[1]![1]!, a[2]![2]!],
    axes: [axis(0), axis(1), cross(axis(0), axis(1))],
  };
}

/**
 * The inertia ellipsoid; null if mass or moments are not positive. Six-digit data may violate the triangle
 * inequality of the moments by rounding; such a radius counts as 0.
 */
export function inertiaEllipsoid(properties: MassProperties): Ellipsoid | null {
  const mass = properties.mass ?? properties.volume ?? 0; // without a density, inertia is per unit of it
  const { moments, axes } = principalAxes(properties.inertia);
  const [i, j, k] = moments;
  const trace = i + j + k;
  if (!(mass > 0) || !(trace > 0) || !Number.isFinite(trace) || Math.min(i, j, k) < -1e-5 * trace)
    return null;
  const radius = (doubled: number): number => Math.sqrt(Math.max(0, (2.5 / mass) * doubled));
  return {
    center: [...properties.center],
    axes,
    radii: [radius(j + k - i), radius(i + k - j), radius(i + j - k)],
    moments,
  };
}
