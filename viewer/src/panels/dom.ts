// Texts of a document are data: they become text nodes, never markup.

type Attributes = Readonly<Record<string, string | number | boolean | undefined>>;
type Child = Node | string;

/** Creates an element. An attribute that is true is empty; one that is false or undefined is left out. */
export function element<K extends keyof HTMLElementTagNameMap>(
  tag: K,
  attributes: Attributes = {},
  ...children: readonly Child[]
): HTMLElementTagNameMap[K] {
  const result = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes))
    if (value !== undefined && value !== false)
      result.setAttribute(name, value === true ? "" : String(value));
  result.append(...children);
  return result;
}

/**
 * A text of the document. Isolated, so that right-to-left text and the marks that override directions do not reorder
 * what is around it.
 */
export const data = (text: string): HTMLElement => element("bdi", { class: "data" }, text);

/** A button with a visible text or an icon, and what it does. */
export function button(
  label: string,
  action: () => void,
  attributes: Attributes = {},
  ...children: readonly Child[]
): HTMLButtonElement {
  const content = children.length > 0 ? children : [label];
  const named = children.length > 0 ? { "aria-label": label, title: label } : {};
  const result = element("button", { type: "button", ...named, ...attributes }, ...content);
  result.addEventListener("click", action);
  return result;
}

const svgNamespace = "http://www.w3.org/2000/svg";

export function svg(tag: string, attributes: Attributes, ...children: readonly Node[]): SVGElement {
  const result = document.createElementNS(svgNamespace, tag);
  for (const [name, value] of Object.entries(attributes))
    if (value !== undefined && value !== false) result.setAttribute(name, String(value));
  result.append(...children);
  return result;
}

/** An icon of 16 by 16 units, drawn with strokes. */
export const icon = (path: string): SVGElement =>
  svg("svg", { viewBox: "0 0 16 16", class: "icon", "aria-hidden": "true" }, svg("path", { d: path }));

/** The element of an id that the markup of the page has. */
export const byId = (id: string): HTMLElement => typedById(id, HTMLElement);

export function typedById<T extends HTMLElement>(id: string, type: new () => T): T {
  const found = document.getElementById(id);
  if (!(found instanceof type)) throw new Error(`The page has no ${type.name} "${id}".`);
  return found;
}
