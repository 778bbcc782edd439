import { decodeBase64, readMeshes, type MeshData } from "./model/glb";
import { inertiaEllipsoid } from "./model/inertia";
import { Model } from "./model/model";
import { counted } from "./model/numbers";
import { parsePage } from "./model/page";
import { Shape } from "./model/shape";
import { transformPoint } from "./model/transform";
import { fit, project, standardViews, type View } from "./model/view";
import { byId, element, typedById } from "./panels/dom";
import { FindingsPanel } from "./panels/findings";
import { PropertiesPanel } from "./panels/properties";
import { TreePanel } from "./panels/tree";
import { nearestVertex, Picker, type Looking } from "./picking/picker";
import { World } from "./scene/world";
import { Store } from "./store";
import { Camera } from "./tools/camera";
import { placeMarkers, type Marker } from "./tools/marks";
import { MeasureTool } from "./tools/measure";
import { Navigation } from "./tools/navigation";
import { SectionPanel } from "./tools/section_panel";
import { Toolbar } from "./tools/toolbar";
import { Triad } from "./tools/triad";

const startView: View = { target: [0, 0, 0], ...standardViews.isometric, height: 1, perspective: true };
/** A marker of a finding is hit this near, in pixels. */
const markerReach = 10;

async function readScene(): Promise<MeshData[]> {
  const block = document.getElementById("ztcad-scene");
  if (!block) return [];
  const meshes = await readMeshes(decodeBase64(block.textContent.trim()));
  block.remove(); // its text is as large as the geometry
  return meshes;
}

/** The tabs at the left: the tree and the findings. */
function wireTabs(): (id: string) => void {
  const tabs = ["tree", "findings"].map((id) => ({ tab: byId(`${id}-tab`), panel: byId(`${id}-panel`), id }));
  const choose = (id: string): void => {
    for (const { tab, panel, id: own } of tabs) {
      tab.setAttribute("aria-selected", String(own === id));
      tab.tabIndex = own === id ? 0 : -1;
      panel.hidden = own !== id;
    }
  };
  tabs.forEach(({ tab, id }, number) => {
    tab.addEventListener("click", () => {
      choose(id);
    });
    tab.addEventListener("keydown", (event) => {
      if (event.key !== "ArrowLeft" && event.key !== "ArrowRight") return;
      const other = tabs[1 - number]!;
      choose(other.id);
      other.tab.focus();
    });
  });
  return choose;
}

function wireSearch(store: Store, tree: TreePanel): void {
  const input = typedById("search", HTMLInputElement);
  const count = byId("search-count");
  let found: number[] = [];
  const search = (): void => {
    const text = input.value.trim();
    const marked = text ? store.model.search(text) : null;
    found = marked ? Array.from(marked.keys()).filter((node) => marked[node]) : [];
    count.textContent = text ? counted(found.length, "element") : "";
    tree.filter(marked);
  };
  let pause = 0;
  input.addEventListener("input", () => {
    window.clearTimeout(pause);
    pause = window.setTimeout(search, store.model.elements.size > 20_000 ? 200 : 0);
  });
  input.addEventListener("keydown", (event) => {
    if (event.key === "Enter" && found.length > 0) {
      const after = found.find((node) => node > (store.selection?.element ?? -1));
      store.select(after ?? found[0]!);
    } else if (event.key === "Escape") {
      input.value = "";
      search();
    } else if (event.key === "ArrowDown") {
      tree.root.focus();
    } else {
      return;
    }
    event.preventDefault();
  });
}

/** The address's "#path" and the selection follow each other. */
function wireAddress(store: Store): void {
  const follow = (): void => {
    let path = location.hash.slice(1);
    try {
      path = decodeURIComponent(path);
    } catch {
      // not encoded: taken as it is
    }
    const index = path ? store.model.elementAt(path) : -1;
    if (index >= 0) store.select(index);
  };
  store.listen(["selection"], () => {
    const path = store.selection ? store.model.path(store.selection.element) : null;
    const encoded = path ? `#${encodeURI(path)}` : location.pathname;
    try {
      history.replaceState(null, "", encoded);
    } catch {
      // some browsers refuse this for local files
    }
  });
  window.addEventListener("hashchange", follow);
  follow();
}

/** The picture: everything that needs WebGL. */
class Picture {
  readonly world: World;
  private readonly camera: Camera;
  private readonly picker: Picker;
  private readonly toolbar: Toolbar;
  private readonly measure: MeasureTool;
  private readonly triad = new Triad();
  private readonly notice = byId("notice");
  private markers: Marker[] = [];

  constructor(
    private readonly store: Store,
    shapes: readonly Shape[],
    private readonly announceFinding: () => void,
  ) {
    const stage = byId("stage");
    const canvas = typedById("canvas", HTMLCanvasElement);
    this.world = new World(canvas, store, shapes, startView);
    this.camera = new Camera(this.world, () => this.world.placement.box(store.visibleItems));
    this.picker = new Picker(this.world.placement);
    this.world.setView(fit(startView, this.world.placement.box(store.visibleItems), this.world.aspect));
    this.toolbar = new Toolbar(store, this.world, this.camera, typedById("search", HTMLInputElement));
    byId("bar").append(this.toolbar.root);
    this.measure = new MeasureTool(store, this.world, stage);
    byId("tools").append(new SectionPanel(store, this.world).root, this.measure.root);
    stage.append(this.triad.root);
    new Navigation(canvas, this.camera, {
      click: (x, y) => {
        this.clicked(x, y);
      },
      doubleClick: () => {
        if (store.tool === "select") this.toolbar.fitSelection();
      },
    });
    this.world.onDrawn = () => {
      this.triad.draw(this.world.currentView);
      this.measure.moveLabel();
    };
    store.listen(["selection"], () => {
      this.selectionChanged();
    });
    store.listen(["finding"], () => {
      this.findingChanged();
    });
    store.listen(["visibility", "display"], () => {
      this.placeMarkers();
    });
    this.placeMarkers();
    new ResizeObserver(() => {
      this.world.invalidate();
    }).observe(canvas);
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
      this.world.themeChanged();
      this.placeMarkers();
    });
  }

  /** Draws the first picture and returns when it is there. */
  drawFirst(): void {
    this.world.draw();
    this.world.finish();
    const prepare = (): void => {
      if (this.picker.prepareNext()) requestIdleCallback(prepare);
    };
    requestIdleCallback(prepare);
  }

  fitSelection(): void {
    this.toolbar.fitSelection();
  }

  private looking(x: number, y: number): Looking {
    return {
      view: this.world.currentView,
      x,
      y,
      pixels: Math.max(1, this.world.canvas.clientHeight),
      visible: this.store.visibleItems,
      section: this.world.section,
    };
  }

  private clicked(x: number, y: number): void {
    const looking = this.looking(x, y);
    if (this.store.tool === "select") {
      const marker = this.markerAt(looking);
      if (marker) {
        this.announceFinding();
        this.store.showFinding(marker.finding);
        return;
      }
    }
    const hit = this.picker.pick(looking);
    if (this.store.tool === "measure") {
      const vertex = hit ? nearestVertex(hit, looking) : null;
      if (vertex) this.measure.pick(vertex);
      return;
    }
    const item = hit ? this.store.model.selectable(hit.item) : -1;
    this.store.select(item < 0 ? -1 : this.store.model.page.items.element[item]!, item);
  }

  private markerAt({ view, x, y, pixels }: Looking): Marker | null {
    for (const marker of this.markers) {
      const seen = project(view, marker.place);
      if (seen && Math.hypot(seen.x - x, seen.y - y) * pixels <= markerReach) return marker;
    }
    return null;
  }

  private placeMarkers(): void {
    this.markers = placeMarkers(this.store, this.world);
    const { theme } = this.world;
    this.world.overlays.setMarks(
      this.markers.map(({ place, finding }) => ({ place, color: theme[finding.severity] })),
    );
    this.notice.hidden = this.store.model.items.size === 0 || this.store.visibleItems.includes(1);
    this.world.invalidate();
  }

  /** What the chosen finding is about, at the first place of its element. */
  private findingChanged(): void {
    const { finding, model } = this.store;
    const { theme, overlays } = this.world;
    const item = finding && finding.index >= 0 ? (model.itemsOf(finding.index)[0] ?? -1) : -1;
    const spots = finding && item >= 0 ? (finding.spots ?? []) : [];
    const places = spots.map((spot) =>
      spot.map((corner) => transformPoint(model.transform(item), [...corner])),
    );
    overlays.setSpots(places, finding ? theme[finding.severity] : theme.plain);
    this.world.invalidate();
  }

  /** Local axes, centre of mass and inertia ellipsoid of the selected element, at its first place. */
  private selectionChanged(): void {
    const { selection, model } = this.store;
    const item = selection ? (this.store.selectedItems[0] ?? -1) : -1;
    const transform = item >= 0 ? model.transform(item) : null;
    this.world.overlays.setAxes(transform);
    const data = selection ? model.mass(selection.element) : null;
    const mass = data?.declared ?? data?.computed;
    this.world.overlays.setBody(
      mass && transform ? { shape: inertiaEllipsoid(mass), center: [...mass.center], transform } : null,
    );
    this.world.invalidate();
  }
}

function openPicture(store: Store, shapes: readonly Shape[], announceFinding: () => void): Picture | null {
  try {
    return new Picture(store, shapes, announceFinding);
  } catch (problem) {
    byId("notice").hidden = false;
    byId("notice").replaceChildren(
      element("p", {}, "This browser draws no 3D pictures (WebGL is switched off or missing)."),
    );
    console.warn(problem);
    return null;
  }
}

async function start(): Promise<void> {
  const model = new Model(parsePage(byId("ztcad-document").textContent));
  const store = new Store(model);
  byId("file").append(element("bdi", {}, model.page.file));
  const chooseTab = wireTabs();
  byId("findings-panel").append(new FindingsPanel(store, model.failed).root);
  byId("findings-count").textContent = String(model.findings.length + model.page.omitted);
  if (model.failed) {
    showFailure(model, chooseTab);
    document.body.dataset.state = "ready";
    return;
  }
  const meshes = await readScene();
  const shapes = model.page.shapes.kind.map((_, index) => new Shape(model, index, meshes));
  const picture = openPicture(store, shapes, () => {
    chooseTab("findings");
  });
  byId("panel").append(new PropertiesPanel(store, picture?.world.placement ?? null).root);
  const tree = new TreePanel(store, () => {
    picture?.fitSelection();
  });
  byId("tree-panel").append(tree.root);
  wireSearch(store, tree);
  wireAddress(store);
  byId("show-all").addEventListener("click", () => {
    store.showAll();
    picture?.fitSelection();
  });
  byId("toggle-side").addEventListener("click", () => {
    document.body.classList.toggle("no-side");
  });
  // counts for those who look at the page from outside
  document.body.dataset.elements = String(model.elements.size);
  const countItems = (): void => {
    const shown = store.visibleItems;
    document.body.dataset.drawn = String(
      model.page.items.shape.filter((shape, item) => shape >= 0 && shown[item]).length,
    );
  };
  store.listen(["visibility"], countItems);
  countItems();
  picture?.drawFirst();
  document.body.dataset.state = picture ? "ready" : "no-webgl";
}

function showFailure(model: Model, chooseTab: (id: string) => void): void {
  document.body.classList.add("failed");
  chooseTab("findings");
  const { problem, code } = model.page;
  byId("findings-panel").prepend(
    element(
      "div",
      { class: "failure", role: "alert" },
      element("h2", {}, "The document could not be loaded"),
      element("p", {}, problem ?? "", code === null ? "" : ` (code ${code})`),
    ),
  );
}

start().catch((problem: unknown) => {
  document.body.dataset.state = "broken";
  const notice = byId("notice");
  notice.hidden = false;
  notice.replaceChildren(element("p", {}, `This page cannot be shown: ${String(problem)}`));
  console.error(problem);
});
