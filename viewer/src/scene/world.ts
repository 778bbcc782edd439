import {
  DirectionalLight,
  HemisphereLight,
  Matrix4,
  OrthographicCamera,
  PerspectiveCamera,
  Plane,
  Scene,
  Vector3,
  WebGLRenderer,
} from "three";
import type { Shape } from "../model/shape";
import { sectionPlane, type Plane as SectionPlane } from "../model/section";
import { add, dot, length, scale, subtract, type Box, type Vec3 } from "../model/transform";
import { basis, eyeDistance, fieldOfView, type View } from "../model/view";
import type { Store } from "../store";
import { Batches } from "./batches";
import { ItemColors } from "./colors";
import { Materials } from "./materials";
import { Overlays } from "./overlays";
import { Placement } from "./placement";
import { readTheme, type Theme } from "./theme";

// A float32 keeps 24 bits: this far from the frame of the picture, in heights of the picture, positions are still
// right to a tenth of a pixel.
const reachOfFrame = 1000;

// Without a graphics card, smooth edges make a large picture two to three times as slow to draw.
const smoothedBySoftware = 50_000; // facets

/** False where the processor has to draw: SwiftShader, Mesa's llvmpipe and softpipe, Windows' basic driver. */
function drawnByGraphicsCard(): boolean {
  const context = document.createElement("canvas").getContext("webgl2");
  if (!context) return false;
  const names = context.getExtension("WEBGL_debug_renderer_info");
  const name = context.getParameter(names?.UNMASKED_RENDERER_WEBGL ?? context.RENDERER) as unknown;
  context.getExtension("WEBGL_lose_context")?.loseContext();
  return !/swiftshader|llvmpipe|softpipe|software|basic render/i.test(String(name));
}

/** The picture: draws the model as the store and the view say, when something has changed. */
export class World {
  readonly placement: Placement;
  readonly overlays: Overlays;
  /** Around everything that the document places, hidden or not: what the section plane moves through. */
  readonly wholeBox: Box;
  theme: Theme;
  private readonly renderer: WebGLRenderer;
  private readonly scene = new Scene();
  private readonly materials = new Materials();
  private readonly batches: Batches;
  private readonly perspective = new PerspectiveCamera((fieldOfView * 180) / Math.PI);
  private readonly orthographic = new OrthographicCamera();
  private readonly light = new DirectionalLight(0xffffff, 2.3);
  private readonly sky = new HemisphereLight(0xffffff, 0x9a9aa6, 1.5);
  private readonly clipping = new Plane();
  private origin: Vec3 = [0, 0, 0];
  private view: View;
  private stale = true;
  private requested = 0;
  private afterDrawing: () => void = () => undefined;

  /** Throws if the browser has no WebGL. */
  constructor(
    readonly canvas: HTMLCanvasElement,
    private readonly store: Store,
    shapes: readonly Shape[],
    view: View,
  ) {
    this.placement = new Placement(store.model, shapes);
    this.renderer = new WebGLRenderer({
      canvas,
      alpha: true,
      antialias: this.placement.facetCount <= smoothedBySoftware || drawnByGraphicsCard(),
      powerPreference: "high-performance",
    });
    this.renderer.setClearColor(0x000000, 0); // the page's background is seen through
    this.renderer.localClippingEnabled = true;
    this.view = view;
    this.wholeBox = this.placement.box(new Uint8Array(store.model.items.size).fill(1));
    this.theme = readTheme();
    this.batches = new Batches(this.placement, this.materials);
    this.overlays = new Overlays(this.materials);
    this.scene.add(this.batches.group, this.overlays.group, this.light, this.light.target, this.sky);
    store.listen(["selection", "visibility", "display"], () => {
      this.changed();
    });
    store.listen(["section"], () => {
      this.invalidate();
    });
  }

  get currentView(): View {
    return this.view;
  }

  /** Called after each drawing. */
  set onDrawn(action: () => void) {
    this.afterDrawing = action;
  }

  setView(view: View): void {
    this.view = view;
    this.invalidate();
  }

  /** Colours follow the system's theme. */
  themeChanged(): void {
    this.theme = readTheme();
    this.changed();
  }

  /** The plane that hides a part of the model; null: none does. */
  get section(): SectionPlane | null {
    return this.store.section ? sectionPlane(this.store.section, this.wholeBox) : null;
  }

  private changed(): void {
    this.stale = true;
    this.invalidate();
  }

  /** Draws before the next repaint. */
  invalidate(): void {
    if (this.requested) return;
    this.requested = requestAnimationFrame(() => {
      this.requested = 0;
      this.draw();
    });
  }

  /** Draws now, and waits until the picture is there. */
  draw(): void {
    const frameIsFar = length(subtract(this.view.target, this.origin)) > reachOfFrame * this.view.height;
    if (frameIsFar) this.origin = this.view.target;
    if (this.stale || frameIsFar) this.refresh();
    this.stale = false;
    this.clip();
    this.overlays.move(this.view, this.origin);
    this.resize();
    this.renderer.render(this.scene, this.aim());
    this.afterDrawing();
  }

  private refresh(): void {
    const { display, visibleItems } = this.store;
    this.materials.setFlat(display.shading === "flat");
    this.materials.setColors(this.theme.edge, this.theme.cut);
    const colors = new ItemColors(this.store, this.theme);
    this.batches.refresh({ visible: visibleItems, colors, origin: this.origin });
    this.batches.showEdges(display.edges);
  }

  private clip(): void {
    const section = this.section;
    if (section)
      this.clipping.set(new Vector3(...section.normal), section.constant + dot(section.normal, this.origin));
    this.materials.clip(section ? this.clipping : null);
  }

  /** Waits until all drawing has been done; a browser may do it later. */
  finish(): void {
    const context = this.renderer.getContext();
    context.readPixels(0, 0, 1, 1, context.RGBA, context.UNSIGNED_BYTE, new Uint8Array(4));
  }

  private resize(): void {
    const { clientWidth, clientHeight } = this.canvas;
    const ratio = Math.min(2, window.devicePixelRatio);
    const width = Math.max(1, clientWidth);
    const height = Math.max(1, clientHeight);
    if (this.canvas.width === Math.floor(width * ratio) && this.canvas.height === Math.floor(height * ratio))
      return;
    this.renderer.setPixelRatio(ratio);
    this.renderer.setSize(width, height, false);
  }

  get aspect(): number {
    return Math.max(1, this.canvas.clientWidth) / Math.max(1, this.canvas.clientHeight);
  }

  private aim(): PerspectiveCamera | OrthographicCamera {
    const { right, up, back } = basis(this.view);
    const radius = Math.max(this.wholeBox.radius, this.view.height);
    const toCenter = subtract(this.wholeBox.center, this.view.target);
    const target = subtract(this.view.target, this.origin);
    const camera = this.view.perspective ? this.perspective : this.orthographic;
    let distance: number;
    if (this.view.perspective) {
      distance = eyeDistance(this.view);
      const depth = distance - dot(toCenter, back);
      this.perspective.aspect = this.aspect;
      this.perspective.far = Math.max(depth + 1.1 * radius, 2 * distance);
      this.perspective.near = Math.max(depth - 1.1 * radius, this.perspective.far * 2e-5, distance * 1e-3);
    } else {
      distance = Math.max(0, dot(toCenter, back)) + 1.1 * radius;
      const half = this.view.height / 2;
      this.orthographic.top = half;
      this.orthographic.bottom = -half;
      this.orthographic.right = half * this.aspect;
      this.orthographic.left = -half * this.aspect;
      this.orthographic.near = 0;
      this.orthographic.far = distance - dot(toCenter, back) + 1.1 * radius;
    }
    const eye = add(target, scale(back, distance));
    camera.matrixAutoUpdate = false;
    camera.matrix.copy(
      new Matrix4()
        .makeBasis(new Vector3(...right), new Vector3(...up), new Vector3(...back))
        .setPosition(...eye),
    );
    camera.matrix.decompose(camera.position, camera.quaternion, camera.scale);
    camera.updateMatrixWorld(true);
    camera.updateProjectionMatrix();
    // from above the left shoulder; the sky is above the picture, not above the model
    const shoulder = add(add(scale(right, -0.45), scale(up, 0.75)), back);
    this.light.position.set(...add(target, shoulder));
    this.light.target.position.set(...target);
    this.light.updateMatrixWorld();
    this.light.target.updateMatrixWorld();
    this.sky.position.set(...up);
    return camera;
  }
}
