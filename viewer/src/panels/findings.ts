import type { Finding, Severity } from "../model/page";
import { counted, formatCount } from "../model/numbers";
import type { Store } from "../store";
import { button, data, element } from "./dom";

const titles: Readonly<Record<Severity, string>> = { error: "Errors", warning: "Warnings", note: "Notes" };
const severities: readonly Severity[] = ["error", "warning", "note"];
/** Findings that are listed at first, and added by each request for more. */
const portion = 200;

/** The findings by severity. Each leads to its element, and shows what is written there. */
export class FindingsPanel {
  readonly root = element("div", { class: "findings" });
  private readonly entries = new Map<Finding, HTMLElement>();

  constructor(
    private readonly store: Store,
    /** Whether lines of the text are shown from the start: the document failed to load. */
    private readonly detailed: boolean,
  ) {
    const { findings, page } = store.model;
    if (findings.length === 0) this.root.append(element("p", { class: "empty" }, "No findings."));
    for (const severity of severities) {
      const those = findings.filter((finding) => finding.severity === severity);
      if (those.length === 0) continue;
      const id = `findings-${severity}`;
      const list = element("ul", { "aria-labelledby": id });
      this.root.append(
        element("h2", { id, class: severity }, `${titles[severity]} (${formatCount(those.length)})`),
        list,
      );
      this.extend(list, those, 0);
    }
    if (page.omitted > 0)
      this.root.append(
        element(
          "p",
          { class: "empty" },
          `${counted(page.omitted, "finding")} beyond the limit ${page.omitted === 1 ? "is" : "are"} not listed.`,
        ),
      );
    store.listen(["finding"], () => {
      this.selectionChanged();
    });
  }

  private extend(list: HTMLElement, findings: readonly Finding[], from: number): void {
    const to = Math.min(findings.length, from + portion);
    for (const finding of findings.slice(from, to)) list.append(this.entry(finding));
    if (to === findings.length) return;
    const more = element("li", {});
    more.append(
      button(`Show ${formatCount(Math.min(portion, findings.length - to))} more`, () => {
        more.remove();
        this.extend(list, findings, to);
      }),
    );
    list.append(more);
  }

  private entry(finding: Finding): HTMLElement {
    const { page } = this.store.model;
    const place = `${page.file}:${finding.line}:${finding.column}`;
    const head = element(
      "button",
      { type: "button", class: "finding-head", "aria-expanded": String(this.detailed) },
      element("span", { class: `badge ${finding.severity}`, "aria-hidden": "true" }),
      element("span", { class: "message" }, data(finding.message)),
      element("span", { class: "where" }, data(place), " ", element("span", { class: "rule" }, finding.rule)),
    );
    const entry = element("li", { class: `finding ${finding.severity}`, "data-rule": finding.rule }, head);
    if (this.detailed) entry.append(this.details(finding));
    head.addEventListener("click", () => {
      this.store.showFinding(finding === this.store.finding && !this.detailed ? null : finding);
    });
    this.entries.set(finding, entry);
    return entry;
  }

  private details(finding: Finding): HTMLElement {
    const { rules } = this.store.model.page;
    const details = element("div", { class: "details" });
    const sentence = rules[finding.rule];
    if (sentence) details.append(element("p", {}, sentence));
    if (finding.path) details.append(element("p", { class: "path" }, data(finding.path)));
    if (finding.count)
      details.append(element("p", {}, `Occurs ${formatCount(finding.count)} times${placesText(finding)}.`));
    if (finding.text && finding.text.length > 0) {
      const lines = element("pre", { tabindex: 0, "aria-label": `Lines around line ${finding.line}` });
      for (const [number, text, cut] of finding.text) {
        const line = element("span", { class: number === finding.line ? "line here" : "line" });
        line.append(element("span", { class: "number" }, String(number)), cut ? "… " : "", data(text), "\n");
        lines.append(line);
      }
      details.append(lines);
    }
    return details;
  }

  private selectionChanged(): void {
    for (const [finding, entry] of this.entries) {
      const isChosen = finding === this.store.finding;
      if (entry.classList.contains("chosen") === isChosen) continue;
      entry.classList.toggle("chosen", isChosen);
      if (this.detailed) continue;
      entry.querySelector("button")!.setAttribute("aria-expanded", String(isChosen));
      if (isChosen) entry.append(this.details(finding));
      else entry.querySelector(".details")?.remove();
    }
    if (this.store.finding) this.entries.get(this.store.finding)?.scrollIntoView({ block: "nearest" });
  }
}

function placesText({ places }: Finding): string {
  if (!places || places.length === 0) return "";
  return `, first at ${places.map(({ line, column }) => `${line}:${column}`).join(", ")}`;
}
