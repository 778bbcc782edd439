// The data blocks of a page, as the command writes them. Columns rather than objects: a document may have a
// million elements.

export type Severity = "error" | "warning" | "note";
export type ShapeKind = "mesh" | "polyline" | "point" | "sphere";
export type Triple = readonly [number, number, number];

export interface MassProperties {
  readonly mass?: number | null;
  readonly center: Triple;
  readonly inertia: readonly [Triple, Triple, Triple];
  readonly volume?: number;
  readonly area?: number | null;
}

export interface MassData {
  readonly declared: MassProperties | null;
  readonly computed: MassProperties | null;
  readonly reason?: string | null;
}

export interface Finding {
  readonly severity: Severity;
  readonly rule: string;
  readonly message: string;
  readonly line: number;
  readonly column: number;
  readonly offset?: number;
  readonly path: string;
  readonly attribute?: string;
  readonly element?: { readonly kind: string; readonly name?: string };
  readonly count?: number;
  readonly places?: readonly { readonly line: number; readonly column: number }[];
  /** Index into the elements; -1: about none of them. */
  readonly index: number;
  /** The lines around it, with their numbers, and how many characters at the start of a long line are left out. */
  readonly text?: readonly (readonly [number, string, number?])[];
  /** Facets (three points), edges (two) and vertices that it is about, in the frame of the element's shape. */
  readonly spots?: readonly (readonly Triple[])[];
}

/** Every element of the document, holders before what they hold. */
export interface Elements {
  readonly kind: readonly string[];
  readonly name: readonly string[];
  /** Null: paths follow from `tag` and `number`. */
  readonly path: readonly (string | null)[] | null;
  readonly tag?: readonly string[];
  /** Among the siblings of that tag, from 1; 0: the element has no path. */
  readonly number?: readonly number[];
  readonly parent: readonly number[];
  readonly visible: readonly number[];
  readonly color: readonly (string | null)[];
  readonly fields: readonly (readonly (readonly [string, string])[])[];
  readonly system: readonly (readonly number[] | null)[];
  readonly mass?: Readonly<Record<string, MassData>>;
}

/** Placed elements, in the order of a walk through the document; templates only where they are placed. */
export interface Items {
  /** The reference where it is one; -1: an element of another file. */
  readonly element: readonly number[];
  /** The template of a reference, else the element; -1: unresolved, or of another file. */
  readonly source: readonly number[];
  readonly parent: readonly number[];
  readonly shape: readonly number[];
  readonly color: readonly (string | null)[];
  readonly visible: readonly number[];
  /** Twelve numbers each, row by row; null: every item has the identity. */
  readonly transform: readonly number[] | null;
  /** Kind, name and file of the items whose elements are in other files. */
  readonly other?: Readonly<Record<string, readonly [string, string, string]>>;
}

export interface Shapes {
  readonly kind: readonly ShapeKind[];
  readonly origin: readonly number[];
  readonly radius: readonly (number | null)[];
  readonly mesh: readonly number[];
  readonly vertices: readonly number[];
  readonly facets: readonly number[];
}

export interface Page {
  readonly schema: number;
  readonly tool: { readonly name: string; readonly version: string };
  readonly file: string;
  readonly code: number | null;
  readonly fault: boolean;
  readonly problem: string | null;
  readonly header: readonly (readonly [string, string])[];
  readonly elements: Elements;
  readonly items: Items;
  readonly shapes: Shapes;
  readonly findings: readonly Finding[];
  readonly omitted: number;
  readonly rules: Readonly<Record<string, string>>;
}

/** Parses the data block of a document. Throws if another version of the program wrote it. */
export function parsePage(text: string): Page {
  const page = JSON.parse(text) as Page;
  if (page.schema !== 1)
    throw new Error(`The data of this page has schema ${String(page.schema)}; 1 is expected.`);
  return page;
}
