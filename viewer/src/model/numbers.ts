/** A number for people: up to ten significant digits, no digits that a double does not have. */
export function formatNumber(value: number, digits = 10): string {
  if (!Number.isFinite(value)) return String(value);
  return String(Number(value.toPrecision(digits)));
}

export const formatCount = (value: number): string => value.toLocaleString("en-US");

/** "1 error", "2 errors". */
export const counted = (count: number, noun: string): string =>
  `${formatCount(count)} ${noun}${count === 1 ? "" : "s"}`;
