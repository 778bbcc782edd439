import { inertiaEllipsoid } from "../model/inertia";
import { counted, formatCount, formatNumber, formatWithin } from "../model/numbers";
import type { MassProperties } from "../model/page";
import type { Placement } from "../scene/placement";
import type { Store } from "../store";
import { button, data, element } from "./dom";

type Row = readonly [string, ...(string | HTMLElement)[]];

const axes = ["Origin", "x axis", "y axis", "z axis"];

/** Every field of the selected element; of the document where none is selected. */
export class PropertiesPanel {
  readonly root = element("div", { class: "properties" });

  constructor(
    private readonly store: Store,
    private readonly placement: Placement | null,
  ) {
    store.listen(["selection", "visibility"], () => {
      this.draw();
    });
    this.draw();
  }

  private draw(): void {
    const { selection } = this.store;
    this.root.replaceChildren(...(selection ? this.ofElement(selection.element) : this.ofDocument()));
  }

  private ofDocument(): HTMLElement[] {
    const { page, findings } = this.store.model;
    const rows: Row[] = [["File", data(page.file)]];
    if (page.code !== null)
      rows.push([
        "Result of the load",
        page.problem ? data(`${page.code}: ${page.problem}`) : String(page.code),
      ]);
    else if (page.problem) rows.push(["Problem", data(page.problem)]);
    for (const [name, value] of page.header) rows.push([name, data(value)]);
    rows.push(["Findings", counted(findings.length + page.omitted, "finding")]);
    const parts = [element("h2", {}, "Document"), table(rows)];
    const counts = [...this.store.model.countsByKind()];
    if (counts.length > 0)
      parts.push(
        element("h3", {}, `Elements (${formatCount(this.store.model.elements.size)})`),
        table(counts.map(([kind, count]) => [kind, formatCount(count)])),
      );
    const box = this.placement?.box(this.store.visibleItems);
    const precision = 2 ** -22 * (box?.radius ?? 0); // shapes are float32 around their origins
    if (box && !box.isEmpty)
      parts.push(
        element("h3", {}, "Box of what is shown"),
        table(
          ["x", "y", "z"].map((axis, index) => [
            axis,
            `${formatWithin(box.low[index]!, precision)} to ${formatWithin(box.high[index]!, precision)}`,
            formatWithin(box.high[index]! - box.low[index]!, precision),
          ]),
          ["Axis", "From, to", "Size"],
        ),
      );
    parts.push(element("p", { class: "made" }, `Made by ${page.tool.name} ${page.tool.version}.`));
    return parts;
  }

  private ofElement(index: number): HTMLElement[] {
    const { model, shown } = this.store;
    const { elements } = model.page;
    const rows: Row[] = [
      ["kind", model.kind(index)],
      ["name", data(model.name(index))],
    ];
    const path = model.path(index);
    if (path !== null) rows.push(["path", data(path)]);
    const named = new Set(["kind", "name", "path"]);
    for (const [name, value] of elements.fields[index] ?? [])
      if (!named.has(name)) rows.push([name, data(value)]);
    const parts: HTMLElement[] = [element("h2", {}, data(model.label(index))), table(rows)];
    const items = model.itemsOf(index);
    const shape = items.length > 0 ? model.page.items.shape[items[0]!]! : -1;
    const geometry: Row[] = [];
    if (shape >= 0) {
      const { vertices, facets } = model.page.shapes;
      if (vertices[shape]) geometry.push(["Vertices", formatCount(vertices[shape])]);
      if (facets[shape]) geometry.push(["Facets", formatCount(facets[shape])]);
    }
    if (items.length !== 1)
      geometry.push(["Placed", items.length === 0 ? "nowhere" : `${formatCount(items.length)} times`]);
    if (geometry.length > 0) parts.push(element("h3", {}, "Geometry"), table(geometry));
    const system = elements.system[index];
    if (system)
      parts.push(
        element("h3", {}, "Local axes"),
        table(
          axes.map((name, row) => [
            name,
            ...system.slice(3 * row, 3 * row + 3).map((value) => formatNumber(value)),
          ]),
          ["", "x", "y", "z"],
        ),
      );
    parts.push(...this.mass(index));
    const actions = element("div", { class: "actions" });
    actions.append(
      button(shown[index] ? "Hide" : "Show", () => {
        this.store.setShown(index, !shown[index]);
      }),
      button("Show only this", () => {
        this.store.isolate(index);
      }),
      button("Show all", () => {
        this.store.showAll();
      }),
    );
    parts.splice(1, 0, actions);
    const own = model.findings.filter((finding) => finding.index === index);
    if (own.length > 0) {
      const list = element("ul", { class: "own-findings" });
      for (const finding of own.slice(0, 50)) {
        const go = button(
          finding.message,
          () => {
            this.store.showFinding(finding);
          },
          {},
          element("span", { class: `badge ${finding.severity}`, "aria-hidden": "true" }),
          data(finding.message),
        );
        list.append(element("li", {}, go));
      }
      parts.push(element("h3", {}, `Findings (${formatCount(own.length)})`), list);
    }
    return parts;
  }

  private mass(index: number): HTMLElement[] {
    const mass = this.store.model.mass(index);
    if (!mass) return [];
    const { declared, computed, reason } = mass;
    const sides = [declared, computed];
    const value = (read: (of: MassProperties) => number | null | undefined): string[] =>
      sides.map((side) => {
        const number = side ? read(side) : null;
        return number === null || number === undefined ? "–" : formatNumber(number, 7);
      });
    const rows: Row[] = [
      ["Mass", ...value(({ mass: number }) => number)],
      ["Volume", ...value(({ volume }) => volume)],
      ["Area", ...value(({ area }) => area)],
      ...[0, 1, 2].map((axis): Row => [`Centre ${"xyz"[axis]!}`, ...value(({ center }) => center[axis])]),
      ...(
        [
          [0, 0],
          [1, 1],
          [2, 2],
          [0, 1],
          [0, 2],
          [1, 2],
        ] as const
      ).map(([a, b]): Row => [`I${"xyz"[a]}${"xyz"[b]}`, ...value(({ inertia }) => inertia[a][b])]),
    ];
    const parts: HTMLElement[] = [
      element("h3", {}, "Mass properties"),
      table(
        rows.filter(([, ...cells]) => cells.some((cell) => cell !== "–")),
        ["", "Declared", "Computed"],
      ),
    ];
    const used = declared ?? computed;
    const ellipsoid = used ? inertiaEllipsoid(used) : null;
    if (used && ellipsoid)
      parts.push(
        element(
          "p",
          { class: "hint" },
          `The picture shows the ${declared ? "declared" : "computed"} centre of mass and inertia ellipsoid. Principal moments: ${ellipsoid.moments.map((moment) => formatNumber(moment, 6)).join(", ")}.`,
        ),
      );
    if (computed && (computed.mass === null || computed.mass === undefined))
      parts.push(element("p", { class: "hint" }, "Computed inertia is per unit of density."));
    if (!computed && reason) parts.push(element("p", { class: "hint" }, data(reason)));
    return parts;
  }
}

function table(rows: readonly Row[], head?: readonly string[]): HTMLElement {
  const body = element("tbody");
  for (const [name, ...cells] of rows)
    body.append(
      element(
        "tr",
        {},
        element("th", { scope: "row" }, name),
        ...cells.map((cell) => element("td", {}, cell)),
      ),
    );
  const result = element("table", { class: head ? "numbers" : "fields" });
  if (head)
    result.append(
      element(
        "thead",
        {},
        element(
          "tr",
          {},
          ...head.map((name) => (name ? element("th", { scope: "col" }, name) : element("td", {}))),
        ),
      ),
    );
  result.append(body);
  return result;
}
