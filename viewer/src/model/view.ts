// Where one looks from: a turntable about the z axis, in doubles and in the document's frame.

import { add, scale, subtract, type Box, type Vec3 } from "./transform";

/** Vertical angle of the perspective picture. */
export const fieldOfView = (30 * Math.PI) / 180;

export interface View {
  readonly target: Vec3;
  /** Direction from the target to the eye: angle about z from x, and above the xy plane. */
  readonly yaw: number;
  readonly pitch: number;
  /** Height of the picture at the target, in units of the document. */
  readonly height: number;
  readonly perspective: boolean;
}

export interface Basis {
  readonly right: Vec3;
  readonly up: Vec3;
  /** From the target to the eye. */
  readonly back: Vec3;
}

const quarter = Math.PI / 2;

export const standardViews = {
  front: { yaw: -quarter, pitch: 0 },
  back: { yaw: quarter, pitch: 0 },
  left: { yaw: Math.PI, pitch: 0 },
  right: { yaw: 0, pitch: 0 },
  top: { yaw: -quarter, pitch: quarter },
  bottom: { yaw: -quarter, pitch: -quarter },
  isometric: { yaw: -quarter / 2, pitch: Math.atan(Math.SQRT1_2) },
} as const;

export type StandardView = keyof typeof standardViews;

export function basis({ yaw, pitch }: View): Basis {
  const c = Math.cos(yaw);
  const s = Math.sin(yaw);
  // exactly along an axis where the angles say so: standard views have straight edges
  const exact = (value: number): number => (Math.abs(value) < 1e-15 ? 0 : value);
  const cosPitch = exact(Math.cos(pitch));
  const sinPitch = Math.sin(pitch);
  const x = exact(c);
  const y = exact(s);
  return {
    right: [-y, x, 0],
    up: [-sinPitch * x, -sinPitch * y, cosPitch],
    back: [cosPitch * x, cosPitch * y, sinPitch],
  };
}

/** Distance from the target to the eye of a perspective picture. */
export const eyeDistance = (view: View): number => view.height / (2 * Math.tan(fieldOfView / 2));

export function turn(view: View, right: number, up: number): View {
  const yaw = (view.yaw - right) % (2 * Math.PI);
  return { ...view, yaw, pitch: Math.max(-quarter, Math.min(quarter, view.pitch + up)) };
}

/** Moves what is seen by a part of the picture's height to the right and up. */
export function pan(view: View, right: number, up: number): View {
  const axes = basis(view);
  const move = add(scale(axes.right, -right * view.height), scale(axes.up, -up * view.height));
  return { ...view, target: add(view.target, move) };
}

/** Scales the picture; the point of the target's plane at (x, y), in heights from the middle, stays where it is. */
export function zoom(view: View, factor: number, x = 0, y = 0): View {
  const axes = basis(view);
  const fixed = add(view.target, add(scale(axes.right, x * view.height), scale(axes.up, y * view.height)));
  const target = add(fixed, scale(subtract(view.target, fixed), factor));
  const height = view.height * factor;
  // beyond these, doubles would no longer tell the eye from the target
  const size = Math.max(1e-300, Math.abs(target[0]), Math.abs(target[1]), Math.abs(target[2]));
  return height > 1e-11 * size && height < 1e150 ? { ...view, target, height } : view;
}

/** Shows a whole box, for a picture of the given width per height. */
export function fit(view: View, box: Box, aspect: number): View {
  if (box.isEmpty) return view;
  const axes = basis(view);
  const half = scale(subtract(box.high, box.low), 0.5);
  const reach = (axis: Vec3): number =>
    Math.abs(axis[0] * half[0]) + Math.abs(axis[1] * half[1]) + Math.abs(axis[2] * half[2]);
  const margin = 1.12;
  let height = 2 * margin * Math.max(reach(axes.up), reach(axes.right) / aspect);
  if (view.perspective) height += 2 * Math.tan(fieldOfView / 2) * reach(axes.back); // what is nearer is larger
  if (!(height > 0)) height = Math.max(1, 1e-3 * Math.max(...box.center.map(Math.abs))); // one point
  return { ...view, target: box.center, height };
}

/** Units of the document per unit of the picture's height at a point. */
export function heightAt(view: View, point: Vec3): number {
  if (!view.perspective) return view.height;
  const distance = eyeDistance(view);
  const { back } = basis(view);
  const towards = subtract(point, view.target);
  const nearer = towards[0] * back[0] + towards[1] * back[1] + towards[2] * back[2];
  return view.height * Math.max(1e-6, (distance - nearer) / distance);
}

/** A ray through a point of the picture, in heights from its middle. */
export function rayThrough(view: View, x: number, y: number): { origin: Vec3; direction: Vec3 } {
  const { right, up, back } = basis(view);
  const onPlane = add(scale(right, x * view.height), scale(up, y * view.height)); // from the target
  const distance = eyeDistance(view);
  if (view.perspective)
    return {
      origin: add(view.target, scale(back, distance)),
      direction: subtract(onPlane, scale(back, distance)),
    };
  return { origin: add(view.target, onPlane), direction: scale(back, -1) };
}

/** Where a point is in the picture, in heights from its middle; null: not before the eye. */
export function project(view: View, point: Vec3): { x: number; y: number; depth: number } | null {
  const { right, up, back } = basis(view);
  const d = subtract(point, view.target);
  const along = (axis: Vec3): number => d[0] * axis[0] + d[1] * axis[1] + d[2] * axis[2];
  const distance = eyeDistance(view);
  const depth = distance - along(back); // from the plane of the eye
  if (view.perspective && !(depth > 0)) return null;
  const size = view.perspective ? (view.height * depth) / distance : view.height;
  return { x: along(right) / size, y: along(up) / size, depth };
}

/** The view a part of the way from one to another; 1 is the latter. */
export function between(from: View, to: View, part: number): View {
  const mix = (a: number, b: number): number => a + (b - a) * part;
  let turnBy = (to.yaw - from.yaw) % (2 * Math.PI);
  if (turnBy > Math.PI) turnBy -= 2 * Math.PI;
  if (turnBy < -Math.PI) turnBy += 2 * Math.PI;
  if (part >= 1) return to;
  return {
    target: add(from.target, scale(subtract(to.target, from.target), part)),
    yaw: from.yaw + turnBy * part,
    pitch: mix(from.pitch, to.pitch),
    height: from.height * Math.pow(to.height / from.height, part),
    perspective: to.perspective,
  };
}
