/** Colours of the picture, which follow the page's. */
export interface Theme {
  readonly solid: string;
  readonly line: string;
  readonly point: string;
  readonly edge: string;
  readonly selection: string;
  readonly cut: string;
  readonly error: string;
  readonly warning: string;
  readonly note: string;
  readonly plain: string;
  readonly measure: string;
}

/** Reads the colours from the custom properties of the style. */
export function readTheme(): Theme {
  const style = getComputedStyle(document.documentElement);
  const color = (name: string): string => style.getPropertyValue(`--${name}`).trim();
  return {
    solid: color("solid"),
    line: color("line"),
    point: color("point"),
    edge: color("edge"),
    selection: color("selection"),
    cut: color("cut"),
    error: color("mark-error"),
    warning: color("mark-warning"),
    note: color("mark-note"),
    plain: color("plain"),
    measure: color("measure"),
  };
}
