import type { Finding, MassData, Page, Severity, ShapeKind } from "./page";
import { Tree } from "./tree";
import { identity, type Transform, type Vec3 } from "./transform";

const severities: readonly Severity[] = ["error", "warning", "note"];

/** The document of a page: its elements, what they place, and the findings about them. */
export class Model {
  readonly elements: Tree;
  readonly items: Tree;
  /** Findings by severity, errors first; within one, in the order of the text. */
  readonly findings: readonly Finding[];
  private readonly transforms: Float64Array | null;
  private readonly placed: { readonly start: Int32Array; readonly items: Int32Array };
  private readonly worst: Uint8Array; // 0: no finding, else 3 for an error, 2, 1
  private paths: Map<string, number> | null = null;

  constructor(readonly page: Page) {
    this.elements = new Tree(page.elements.parent);
    this.items = new Tree(page.items.parent);
    this.transforms = page.items.transform ? Float64Array.from(page.items.transform) : null;
    this.placed = this.listPlacements();
    this.findings = severities.flatMap((severity) =>
      page.findings.filter((finding) => finding.severity === severity),
    );
    this.worst = new Uint8Array(this.elements.size);
    for (const { index, severity } of this.findings)
      if (index >= 0) this.worst[index] = Math.max(this.worst[index]!, 3 - severities.indexOf(severity));
  }

  /** Nothing could be loaded: the page is about the findings alone. */
  get failed(): boolean {
    return this.elements.size === 0 && (this.page.problem !== null || this.page.findings.length > 0);
  }

  // ------------------------------------------------------------------------------------------- elements
  name(element: number): string {
    return this.page.elements.name[element]!;
  }

  kind(element: number): string {
    return this.page.elements.kind[element]!;
  }

  /** A text for people: the name, else the kind. */
  label(element: number): string {
    return this.name(element) || `(${this.kind(element)} without a name)`;
  }

  /** Null: the element would not be saved, and has no path. */
  path(element: number): string | null {
    const { path, tag, number, parent } = this.page.elements;
    if (path) return path[element] ?? null;
    const holder = parent[element]!;
    const before = holder < 0 ? "/GMD" : this.path(holder);
    if (before === null || !number?.[element]) return null;
    return `${before}/${tag?.[element] ?? this.kind(element)}[${number[element]}]`;
  }

  /** The element of a path, by its own or, where none has it, by that of a finding; -1: there is none. */
  elementAt(path: string): number {
    if (!this.paths) {
      this.paths = new Map();
      for (const finding of this.findings)
        if (finding.index >= 0) this.paths.set(finding.path, finding.index);
      for (let element = this.elements.size - 1; element >= 0; --element) {
        const own = this.path(element);
        if (own !== null) this.paths.set(own, element);
      }
    }
    return this.paths.get(path) ?? -1;
  }

  mass(element: number): MassData | null {
    return this.page.elements.mass?.[String(element)] ?? null;
  }

  /** The highest severity of the findings about an element. */
  severity(element: number): Severity | null {
    return severities[3 - this.worst[element]!] ?? null;
  }

  /** Items that show an element: those that it places, and for a template, those of its references. */
  itemsOf(element: number): Int32Array {
    return this.placed.items.subarray(this.placed.start[element], this.placed.start[element + 1]);
  }

  private listPlacements(): { start: Int32Array; items: Int32Array } {
    const { element, source } = this.page.items;
    const start = new Int32Array(this.elements.size + 1);
    const each = (visit: (of: number, item: number) => void): void => {
      for (let item = 0; item < this.items.size; ++item) {
        if (element[item]! >= 0) visit(element[item]!, item);
        if (source[item]! >= 0 && source[item] !== element[item]) visit(source[item]!, item);
      }
    };
    each((of) => ++start[of + 1]!);
    for (let at = 0; at < this.elements.size; ++at) start[at + 1]! += start[at]!;
    const items = new Int32Array(start[this.elements.size]!);
    const next = Int32Array.from(start);
    each((of, item) => (items[next[of]!++] = item));
    return { start, items };
  }

  // ---------------------------------------------------------------------------------------------- items
  /** Maps the frame of an item's shape (of its content, for holders) to that of the document. */
  transform(item: number): Transform {
    return this.transforms?.subarray(12 * item, 12 * item + 12) ?? identity;
  }

  isReference(item: number): boolean {
    const { element, source } = this.page.items;
    return element[item]! >= 0 && source[item] !== element[item];
  }

  /**
   * What a click on an item selects: the outermost reference that placed it, else the item itself. Elements of
   * other files are in a reference, which is one of the document.
   */
  selectable(item: number): number {
    for (const holder of this.items.ancestry(item)) if (this.isReference(holder)) return holder;
    return item;
  }

  shapeKind(item: number): ShapeKind | null {
    const shape = this.page.items.shape[item]!;
    return shape < 0 ? null : this.page.shapes.kind[shape]!;
  }

  /** Whether each item is drawn, given what is switched on among the elements. */
  visibleItems(shown: Uint8Array): Uint8Array {
    const { element, source, visible } = this.page.items;
    const result = new Uint8Array(this.items.size);
    for (let item = 0; item < this.items.size; ++item) {
      const holder = this.items.parent[item]!;
      if (holder >= 0 && !result[holder]) continue;
      const own = element[item]!;
      const template = source[item]!;
      // of an element of another file only what it inherited is known
      const hiddenElsewhere = own < 0 && template < 0 && !visible[item] && (holder < 0 || !!visible[holder]);
      if (hiddenElsewhere || (own >= 0 && !shown[own]) || (template >= 0 && !shown[template])) continue;
      result[item] = 1;
    }
    return result;
  }

  // ------------------------------------------------------------------------------------------- counting
  /** Number of elements of each kind that occurs. */
  countsByKind(): Map<string, number> {
    const counts = new Map<string, number>();
    for (const kind of this.page.elements.kind) counts.set(kind, (counts.get(kind) ?? 0) + 1);
    return counts;
  }

  countBySeverity(severity: Severity): number {
    return this.findings.filter((finding) => finding.severity === severity).length;
  }

  /** 1 for the elements whose name contains the text, whatever the case. */
  search(text: string): Uint8Array {
    const wanted = text.toLowerCase();
    return Uint8Array.from(this.page.elements.name, (name) => (name.toLowerCase().includes(wanted) ? 1 : 0));
  }

  shapeOrigin(shape: number): Vec3 {
    const origin = this.page.shapes.origin;
    return [origin[3 * shape]!, origin[3 * shape + 1]!, origin[3 * shape + 2]!];
  }
}
