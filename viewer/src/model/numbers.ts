/** A number for people: up to ten significant digits, no digits that a double does not have. */
export function formatNumber(value: number, digits = 10): string {
  if (!Number.isFinite(value)) return String(value);
  return String(Number(value.toPrecision(digits)));
}

/** A number that is known to within a given precision: no digits beyond it. 0: as precise as doubles are. */
export function formatWithin(value: number, precision: number): string {
  const decimals = Math.ceil(-Math.log10(precision));
  if (!(precision > 0) || decimals > 20 || !Number.isFinite(value) || Math.abs(value) >= 1e21)
    return formatNumber(value, 14);
  return String(Number(value.toFixed(Math.max(0, decimals))) || 0); // no -0
}

export const formatCount = (value: number): string => value.toLocaleString("en-US");

/** "1 error", "2 errors". */
export const counted = (count: number, noun: string): string =>
  `${formatCount(count)} ${noun}${count === 1 ? "" : "s"}`;
