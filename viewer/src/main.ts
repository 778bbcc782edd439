import { decodeBase85, readMeshes, type MeshData } from "./model/glb";
import { Model } from "./model/model";
import { counted } from "./model/numbers";
import { parsePage } from "./model/page";
import { Shape } from "./model/shape";
import { byId, element, typedById } from "./panels/dom";
import { FindingsPanel } from "./panels/findings";
import { PropertiesPanel } from "./panels/properties";
import { TreePanel } from "./panels/tree";
import { Picture } from "./picture";
import { Store } from "./store";

async function readScene(): Promise<MeshData[]> {
  const block = document.getElementById("ztcad-scene");
  if (!block) return [];
  const meshes = await readMeshes(decodeBase85(block.textContent.trim()));
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
  byId("side").setAttribute("role", "main"); // nothing else is there
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
