import { button, element, icon } from "../panels/dom";
import { icons } from "../panels/icons";
import type { World } from "../scene/world";
import type { Store } from "../store";
import type { StandardView } from "../model/view";
import type { Camera } from "./camera";

const views: readonly (readonly [StandardView, string, string])[] = [
  ["isometric", "Isometric", "0"],
  ["front", "Front", "1"],
  ["back", "Back", "2"],
  ["left", "Left", "3"],
  ["right", "Right", "4"],
  ["top", "Top", "5"],
  ["bottom", "Bottom", "6"],
];

const keys: readonly (readonly [string, string])[] = [
  ["Left drag, arrows", "turn"],
  ["Middle or right drag, Shift and drag, Shift and arrows", "pan"],
  ["Wheel, two fingers, + and -", "zoom"],
  ["Click", "select"],
  ["Double click", "select and fit"],
  ["F", "fit the selection, or everything"],
  ["0 to 6", "isometric, front, back, left, right, top, bottom"],
  ["P", "perspective or orthographic"],
  ["S", "section plane"],
  ["M", "measure between two vertices"],
  ["E", "edges"],
  ["L", "flat or smooth solids"],
  ["C", "own colours, or by findings"],
  ["H, I, A", "hide the selection, show only it, show all"],
  ["/", "search by name"],
  ["Escape", "end the tool, clear the selection"],
];

interface Command {
  readonly key: string;
  readonly run: () => void;
}

/** The buttons above the picture, and the keys that do the same. */
export class Toolbar {
  readonly root = element("div", { class: "toolbar", role: "toolbar", "aria-label": "Picture" });
  private readonly commands: Command[] = [];
  private readonly help = element("dialog", { class: "help", "aria-label": "Keys and mouse" });

  constructor(
    private readonly store: Store,
    private readonly world: World,
    private readonly camera: Camera,
    search: HTMLInputElement,
  ) {
    this.addViews();
    this.addDisplay();
    this.addTools();
    const onSelected = (run: (element: number) => void) => (): void => {
      if (store.selection) run(store.selection.element);
    };
    const add = (key: string, run: () => void): void => {
      this.commands.push({ key, run });
    };
    add(
      "h",
      onSelected((selected) => {
        store.setShown(selected, false);
      }),
    );
    add(
      "i",
      onSelected((selected) => {
        store.isolate(selected);
      }),
    );
    add("a", () => {
      store.showAll();
    });
    add("/", () => {
      search.focus();
    });
    add("Escape", () => {
      this.escape();
    });
    this.addHelp();
    document.addEventListener("keydown", (event) => {
      this.keyPressed(event);
    });
  }

  /** The box of the selection; of everything where nothing is selected. */
  fitSelection(): void {
    const { placement } = this.world;
    const items = placement.contents(this.store.selectedItems);
    this.camera.fit(placement.box(this.store.visibleItems, items));
  }

  private addViews(): void {
    const menu = element("div", {
      class: "menu",
      id: "views",
      popover: "auto",
      role: "group",
      "aria-label": "Standard views",
    });
    for (const [view, label, key] of views) {
      const run = (): void => {
        this.camera.look(view);
      };
      this.commands.push({ key, run });
      menu.append(
        button(
          label,
          () => {
            run();
            menu.hidePopover();
          },
          { "data-view": view },
          label,
          element("kbd", { "aria-hidden": "true" }, key),
        ),
      );
    }
    const opener = this.add("Standard views", icons.cube, "", () => undefined);
    opener.setAttribute("popovertarget", "views");
    menu.addEventListener("beforetoggle", () => {
      const { left, bottom } = opener.getBoundingClientRect();
      menu.style.left = `${left}px`;
      menu.style.top = `${bottom + 4}px`;
    });
    document.body.append(menu);
    this.add("Fit", icons.fit, "f", () => {
      this.fitSelection();
    });
    const perspective = this.add("Perspective", icons.perspective, "p", () => {
      this.camera.setPerspective(!this.camera.view.perspective);
      press(perspective, this.camera.view.perspective);
    });
    press(perspective, this.camera.view.perspective);
  }

  private addDisplay(): void {
    this.root.append(element("span", { class: "gap", role: "separator" }));
    const { store } = this;
    const flat = this.add("Flat solids", icons.flat, "l", () => {
      store.setDisplay({ shading: store.display.shading === "flat" ? "smooth" : "flat" });
    });
    const edges = this.add("Edges", icons.edges, "e", () => {
      store.setDisplay({ edges: !store.display.edges });
    });
    const findings = this.add("Colours by findings", icons.findings, "c", () => {
      store.setDisplay({ coloring: store.display.coloring === "own" ? "findings" : "own" });
    });
    const draw = (): void => {
      press(flat, store.display.shading === "flat");
      press(edges, store.display.edges);
      press(findings, store.display.coloring === "findings");
    };
    store.listen(["display"], draw);
    draw();
  }

  private addTools(): void {
    this.root.append(element("span", { class: "gap", role: "separator" }));
    const { store } = this;
    const section = this.add("Section plane", icons.section, "s", () => {
      store.setSection(store.section ? null : { axis: "x", place: 0.5, flipped: false });
    });
    const measure = this.add("Measure", icons.measure, "m", () => {
      store.setTool(store.tool === "measure" ? "select" : "measure");
    });
    const draw = (): void => {
      press(section, store.section !== null);
      press(measure, store.tool === "measure");
    };
    store.listen(["section", "tool"], draw);
    draw();
  }

  private addHelp(): void {
    const list = element("dl");
    for (const [key, what] of keys) list.append(element("dt", {}, key), element("dd", {}, what));
    const close = button("Close", () => {
      this.help.close();
    });
    this.help.append(element("h2", {}, "Keys and mouse"), list, close);
    document.body.append(this.help);
    this.add("Keys and mouse", icons.help, "?", () => {
      this.help.showModal();
    });
  }

  private add(label: string, path: string, key: string, run: () => void): HTMLButtonElement {
    const result = button(label, run, { "aria-keyshortcuts": key || undefined }, icon(path));
    result.title = key ? `${label} (${key.toUpperCase()})` : label;
    if (key) this.commands.push({ key, run });
    this.root.append(result);
    return result;
  }

  private escape(): void {
    if (this.store.tool !== "select") this.store.setTool("select");
    else this.store.select(-1);
  }

  private keyPressed(event: KeyboardEvent): void {
    if (event.defaultPrevented || event.ctrlKey || event.altKey || event.metaKey || this.help.open) return;
    const target = event.target as HTMLElement;
    if (target.matches("input, select, textarea, [role=tree]")) return; // letters are text there
    const key = event.key.length === 1 ? event.key.toLowerCase() : event.key;
    const command = this.commands.find((candidate) => candidate.key === key);
    if (!command) return;
    event.preventDefault();
    command.run();
  }
}

const press = (toggle: HTMLElement, pressed: boolean): void => {
  toggle.setAttribute("aria-pressed", String(pressed));
};
