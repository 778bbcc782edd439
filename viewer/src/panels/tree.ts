// The tree of the document: the W3C pattern, one tab stop for all of it. Only the rows in sight are in the page, so
// levels and positions are given explicitly.

import type { Store } from "../store";
import { button, data, element, icon } from "./dom";
import { icons } from "./icons";

const rowHeight = 26; // as the style has it
/** Rows beyond the edges that are kept, so that scrolling shows no gaps. */
const margin = 8;
/** Browsers end an element's height at some 33 million pixels. */
const greatestHeight = 30_000_000;
const typingPause = 700;

export class TreePanel {
  readonly root: HTMLElement;
  private readonly body = element("div", { class: "tree-body", role: "presentation" });
  private readonly expanded: Uint8Array;
  private rows: Int32Array;
  private active = -1;
  private filtered = false;
  private typed = "";
  private typedAt = 0;

  constructor(
    private readonly store: Store,
    /** Called to show an element in the picture. */
    private readonly reveal: (element: number) => void,
  ) {
    const { elements } = store.model;
    this.root = element("div", {
      class: "tree",
      role: "tree",
      tabindex: 0,
      "aria-label": "Elements of the document",
    });
    this.root.append(this.body);
    this.expanded = new Uint8Array(elements.size);
    let listed = elements.siblings(0);
    for (let node = 0; node < elements.size && listed < 60; ++node) {
      if (elements.level[node]! > 2 || elements.childCount(node) === 0) continue;
      this.expanded[node] = 1;
      listed += elements.childCount(node);
    }
    this.rows = elements.rows(this.expanded);
    this.root.addEventListener("scroll", () => {
      this.draw();
    });
    this.root.addEventListener("keydown", (event) => {
      this.keyPressed(event);
    });
    new ResizeObserver(() => {
      this.draw();
    }).observe(this.root);
    store.listen(["selection"], () => {
      this.selectionChanged();
    });
    store.listen(["visibility"], () => {
      this.draw();
    });
    this.draw();
  }

  /** Lists only what was found, with its holders; null: everything. */
  filter(found: Uint8Array | null): void {
    this.filtered = found !== null;
    this.rows = found
      ? this.store.model.elements.withHolders(found)
      : this.store.model.elements.rows(this.expanded);
    this.root.scrollTop = 0;
    this.draw();
    if (!this.filtered && this.store.selection) this.makeVisible(this.store.selection.element);
  }

  private get selected(): number {
    return this.store.selection?.element ?? -1;
  }

  private selectionChanged(): void {
    if (this.selected >= 0) this.makeVisible(this.selected);
    this.draw();
  }

  private makeVisible(node: number): void {
    const { elements } = this.store.model;
    if (!this.filtered) {
      let opened = false;
      for (const holder of elements.ancestry(node).slice(0, -1)) {
        opened ||= !this.expanded[holder];
        this.expanded[holder] = 1;
      }
      if (opened) this.rows = elements.rows(this.expanded);
    }
    this.active = node;
    this.scrollTo(this.rowOf(node));
    this.draw();
  }

  /** Rows are in the order of the nodes. -1: not listed. */
  private rowOf(node: number): number {
    let low = 0;
    let high = this.rows.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (this.rows[middle]! < node) low = middle + 1;
      else high = middle;
    }
    return this.rows[low] === node ? low : -1;
  }

  /** Pixels of the scroll bar for each pixel of the list, 1 but for endless lists. */
  private get stretch(): number {
    const full = this.rows.length * rowHeight;
    const view = this.root.clientHeight;
    return full <= greatestHeight ? 1 : (greatestHeight - view) / (full - view);
  }

  private scrollTo(row: number): void {
    if (row < 0) return;
    const top = row * rowHeight;
    const view = this.root.clientHeight;
    const from = this.root.scrollTop / this.stretch;
    if (top < from) this.root.scrollTop = top * this.stretch;
    else if (top + rowHeight > from + view) this.root.scrollTop = (top + rowHeight - view) * this.stretch;
  }

  private draw(): void {
    const { stretch } = this;
    this.body.style.height = `${Math.min(greatestHeight, this.rows.length * rowHeight)}px`;
    const offset = this.root.scrollTop / stretch;
    const first = Math.max(0, Math.floor(offset / rowHeight) - margin);
    const last = Math.min(
      this.rows.length,
      Math.ceil((offset + this.root.clientHeight) / rowHeight) + margin,
    );
    const shift = this.root.scrollTop - offset;
    const drawn = new Set<number>();
    const children: HTMLElement[] = [];
    for (let row = first; row < last; ++row) {
      children.push(this.row(this.rows[row]!, row * rowHeight + shift));
      drawn.add(this.rows[row]!);
    }
    this.body.replaceChildren(...children);
    if (drawn.has(this.active)) this.root.setAttribute("aria-activedescendant", rowId(this.active));
    else this.root.removeAttribute("aria-activedescendant");
  }

  private isOpen(node: number): boolean {
    if (!this.filtered) return !!this.expanded[node];
    const next = this.rows[this.rowOf(node) + 1];
    return next !== undefined && this.store.model.elements.parent[next] === node;
  }

  private row(node: number, top: number): HTMLElement {
    const { model, shown } = this.store;
    const { elements } = model;
    const hasChildren = elements.childCount(node) > 0;
    const open = hasChildren && this.isOpen(node);
    const isShown = !!shown[node];
    const inSight = elements.ancestry(node).every((holder) => shown[holder]);
    const severity = model.severity(node);
    const label = model.label(node);
    const row = element("div", {
      id: rowId(node),
      class: `row${inSight ? "" : " dim"}${node === this.active ? " active" : ""}`,
      role: "treeitem",
      "aria-level": elements.level[node],
      "aria-posinset": elements.position[node],
      "aria-setsize": elements.siblings(node),
      "aria-expanded": hasChildren ? String(open) : undefined,
      "aria-selected": String(node === this.selected),
      // begins with what is seen, so that it can be asked for by voice
      "aria-label": `${label} ${model.kind(node)}${isShown ? "" : ", hidden"}${severity ? `, has ${severity}s` : ""}`,
      "data-element": node,
    });
    row.style.transform = `translateY(${top}px)`;
    row.style.paddingInlineStart = `${4 + 14 * Math.min(20, elements.level[node]! - 1)}px`;
    const twist = element("span", {
      class: `twist${hasChildren ? (open ? " open" : " closed") : ""}`,
      "aria-hidden": "true",
    });
    const swatch = element("span", { class: "swatch", "aria-hidden": "true" });
    const color = model.page.elements.color[node];
    if (color) swatch.style.backgroundColor = color;
    const toggle = button(
      `${isShown ? "Hide" : "Show"} ${label}`,
      () => undefined,
      { class: "eye", tabindex: -1, "aria-pressed": String(isShown) },
      icon(isShown ? icons.eye : icons.eyeOff),
    );
    const name = element("span", { class: "name" }, data(label));
    if (!model.name(node)) name.classList.add("nameless");
    row.append(twist, swatch, name);
    if (severity)
      row.append(
        element("span", { class: `badge ${severity}`, title: `has ${severity}s`, "aria-hidden": "true" }),
      );
    row.append(" ", element("span", { class: "kind" }, model.kind(node)), toggle);
    row.addEventListener("click", (event) => {
      if (toggle.contains(event.target as Node)) this.store.setShown(node, !isShown);
      else if (event.target === twist && hasChildren) this.setOpen(node, !open);
      else this.activate(node);
    });
    row.addEventListener("dblclick", (event) => {
      if (!toggle.contains(event.target as Node)) this.reveal(node);
    });
    return row;
  }

  private activate(node: number): void {
    this.active = node;
    if (this.selected === node && (this.store.selection?.item ?? -1) < 0) this.makeVisible(node);
    else this.store.select(node);
  }

  private setOpen(node: number, open: boolean): void {
    if (this.filtered) return; // what was found is listed in full
    this.expanded[node] = open ? 1 : 0;
    this.rows = this.store.model.elements.rows(this.expanded);
    if (!open && this.active > node && this.store.model.elements.contains(node, this.active))
      this.active = node;
    this.draw();
  }

  private keyPressed(event: KeyboardEvent): void {
    if (event.ctrlKey || event.altKey || event.metaKey || this.rows.length === 0) return;
    if (this.handle(event.key)) {
      event.preventDefault();
      event.stopPropagation();
    }
  }

  private handle(key: string): boolean {
    if (key.length > 1) this.typed = "";
    const { elements } = this.store.model;
    const row = this.rowOf(this.active);
    const node = row < 0 ? -1 : this.active;
    const page = Math.max(1, Math.floor(this.root.clientHeight / rowHeight) - 1);
    const go = (to: number): boolean => {
      this.activate(this.rows[Math.max(0, Math.min(this.rows.length - 1, to))]!);
      return true;
    };
    switch (key) {
      case "ArrowDown":
        return go(row + 1);
      case "ArrowUp":
        return go(row < 0 ? 0 : row - 1);
      case "PageDown":
        return go(row + page);
      case "PageUp":
        return go(row - page);
      case "Home":
        return go(0);
      case "End":
        return go(this.rows.length - 1);
      case "ArrowRight":
        if (node < 0 || elements.childCount(node) === 0) return true;
        if (this.isOpen(node)) return go(row + 1);
        this.setOpen(node, true);
        return true;
      case "ArrowLeft":
        if (node < 0) return true;
        if (elements.childCount(node) > 0 && this.isOpen(node) && !this.filtered) this.setOpen(node, false);
        else if (elements.parent[node]! >= 0) return go(this.rowOf(elements.parent[node]!));
        return true;
      case "*":
        if (node < 0) return true;
        for (let at = 0; at < elements.size; ++at)
          if (elements.parent[at] === elements.parent[node] && elements.childCount(at) > 0)
            this.expanded[at] = 1;
        this.setOpen(node, elements.childCount(node) > 0);
        return true;
      case "Enter":
        if (node >= 0) this.reveal(node);
        return true;
      case " ":
        if (this.typed && performance.now() - this.typedAt < typingPause) return this.type(key, row);
        if (node >= 0) this.store.setShown(node, !this.store.shown[node]);
        return true;
      default:
        return key.length === 1 && this.type(key, row);
    }
  }

  /** Goes to the next listed name that begins with what was typed. */
  private type(key: string, row: number): boolean {
    const now = performance.now();
    this.typed = (now - this.typedAt < typingPause ? this.typed : "") + key.toLowerCase();
    this.typedAt = now;
    const from = this.typed.length === 1 ? row + 1 : Math.max(0, row); // more letters may stay where they are
    for (let step = 0; step < this.rows.length; ++step) {
      const node = this.rows[(from + step) % this.rows.length]!;
      if (!this.store.model.name(node).toLowerCase().startsWith(this.typed)) continue;
      this.activate(node);
      break;
    }
    return true;
  }
}

const rowId = (node: number): string => `element-${node}`;
