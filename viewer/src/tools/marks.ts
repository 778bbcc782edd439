import type { Finding } from "../model/page";
import type { Vec3 } from "../model/transform";
import type { World } from "../scene/world";
import type { Store } from "../store";

/** Markers are drawn for this many findings, the worst first. */
const most = 2000;

export interface Marker {
  readonly finding: Finding;
  readonly place: Vec3;
}

/** Where the findings are: in the middle of what their elements show, the worst finding of an element for all. */
export function placeMarkers(store: Store, world: World): Marker[] {
  const { model, visibleItems, display } = store;
  if (!display.markers) return [];
  const seen = new Set<number>();
  const markers: Marker[] = [];
  for (const finding of model.findings) {
    if (finding.index < 0 || finding.severity === "note" || seen.has(finding.index)) continue;
    seen.add(finding.index);
    const items = world.placement.contents(model.itemsOf(finding.index).subarray(0, 1));
    const box = world.placement.box(visibleItems, items);
    if (!box.isEmpty) markers.push({ finding, place: box.center });
    if (markers.length === most) break;
  }
  return markers;
}
