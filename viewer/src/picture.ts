import { inertiaEllipsoid } from "./model/inertia";
import type { Shape } from "./model/shape";
import { transformPoint } from "./model/transform";
import { fit, project, standardViews, type View } from "./model/view";
import { byId, typedById } from "./panels/dom";
import { nearestVertex, Picker, type Looking } from "./picking/picker";
import { World } from "./scene/world";
import type { Store } from "./store";
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

/** The picture: everything that needs WebGL. */
export class Picture {
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
