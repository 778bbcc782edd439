import type { Model } from "./model/model";
import type { Finding } from "./model/page";
import type { Section } from "./model/section";

/** What is selected. `item` is the placed one that was picked; -1: the element as a whole. */
export interface Selection {
  readonly element: number;
  readonly item: number;
}

export type Shading = "smooth" | "flat";
export type Coloring = "own" | "findings";
export type Tool = "select" | "measure";

export interface Display {
  readonly shading: Shading;
  readonly edges: boolean;
  readonly coloring: Coloring;
  /** Markers of findings in the picture. */
  readonly markers: boolean;
}

export type Topic = "selection" | "visibility" | "section" | "display" | "tool" | "finding";

/** What the user has chosen. The picture and the panels listen and follow. */
export class Store {
  /** 1: the element is switched on. It is drawn if all its holders are, too. */
  readonly shown: Uint8Array;
  /** 1: the item is drawn, as far as `shown` decides. */
  visibleItems: Uint8Array;
  selection: Selection | null = null;
  finding: Finding | null = null;
  section: Section | null = null;
  tool: Tool = "select";
  display: Display = { shading: "smooth", edges: false, coloring: "own", markers: true };
  private readonly listeners = new Map<Topic, (() => void)[]>();

  constructor(readonly model: Model) {
    this.shown = Uint8Array.from(model.page.elements.visible);
    this.visibleItems = model.visibleItems(this.shown);
  }

  listen(topics: readonly Topic[], listener: () => void): void {
    for (const topic of topics) this.listeners.set(topic, [...(this.listeners.get(topic) ?? []), listener]);
  }

  private announce(topic: Topic): void {
    for (const listener of this.listeners.get(topic) ?? []) listener();
  }

  /** Selects an element, by one of its items where the user picked one; -1: nothing. */
  select(element: number, item = -1): void {
    if (element === (this.selection?.element ?? -1) && item === (this.selection?.item ?? -1)) return;
    this.selection = element < 0 ? null : { element, item };
    this.announce("selection");
  }

  /** Shows a finding, and selects its element. */
  showFinding(finding: Finding | null): void {
    this.finding = finding;
    this.announce("finding");
    if (finding && finding.index >= 0) this.select(finding.index);
  }

  /** The items that are highlighted, without what they hold. */
  get selectedItems(): Int32Array {
    if (!this.selection) return new Int32Array();
    const { element, item } = this.selection;
    return item >= 0 ? Int32Array.of(item) : this.model.itemsOf(element);
  }

  setShown(element: number, shown: boolean): void {
    this.shown[element] = shown ? 1 : 0;
    this.visibilityChanged();
  }

  showAll(): void {
    this.shown.fill(1);
    this.visibilityChanged();
  }

  /** Back to what the document says. */
  resetVisibility(): void {
    this.shown.set(this.model.page.elements.visible);
    this.visibilityChanged();
  }

  /** Hides everything but an element, what it holds, its holders and the templates that it needs. */
  isolate(element: number): void {
    const { items, elements, page } = this.model;
    this.shown.fill(0);
    this.shown.fill(1, element, elements.end[element]);
    for (const holder of elements.ancestry(element)) this.shown[holder] = 1;
    for (const item of this.model.itemsOf(element)) {
      const first = items.ancestry(item)[0]!;
      for (let at = first; at < items.end[item]!; ++at) {
        if (!items.contains(at, item) && !items.contains(item, at)) continue;
        for (const used of [page.items.element[at]!, page.items.source[at]!])
          if (used >= 0) this.shown[used] = 1;
      }
    }
    this.visibilityChanged();
  }

  private visibilityChanged(): void {
    this.visibleItems = this.model.visibleItems(this.shown);
    this.announce("visibility");
  }

  setSection(section: Section | null): void {
    this.section = section;
    this.announce("section");
  }

  setDisplay(change: Partial<Display>): void {
    this.display = { ...this.display, ...change };
    this.announce("display");
  }

  setTool(tool: Tool): void {
    if (tool === this.tool) return;
    this.tool = tool;
    this.announce("tool");
  }
}
