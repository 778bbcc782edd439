import { dot, type Box, type Vec3 } from "./transform";

export type SectionAxis = "x" | "y" | "z";

/** A plane that hides one side of the model. */
export interface Section {
  readonly axis: SectionAxis;
  /** From 0, the low end of the model, to 1. */
  readonly place: number;
  /** False: what is above the plane along the axis is hidden; true: what is below. */
  readonly flipped: boolean;
}

/** Points with dot(normal, point) + constant < 0 are hidden. */
export interface Plane {
  readonly normal: Vec3;
  readonly constant: number;
}

/** Coordinate of the plane on its axis, in the document's frame. */
export function sectionAt({ axis, place }: Section, box: Box): number {
  const index = "xyz".indexOf(axis);
  if (box.isEmpty) return 0;
  return box.low[index]! + (box.high[index]! - box.low[index]!) * place;
}

export function sectionPlane(section: Section, box: Box): Plane {
  const sign = section.flipped ? 1 : -1;
  const normal: Vec3 = [0, 0, 0];
  normal["xyz".indexOf(section.axis)] = sign;
  return { normal, constant: -sign * sectionAt(section, box) };
}

export const isHidden = (plane: Plane | null, point: Vec3): boolean =>
  plane !== null && dot(plane.normal, point) + plane.constant < 0;
