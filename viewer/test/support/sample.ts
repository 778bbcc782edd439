import type { Page } from "../../src/model/page";

/** A document of one structure with a hidden point, a template solid and two references to it, one mirrored. */
export function samplePage(): Page {
  const count = 6;
  const identity = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0];
  const mirrored = [-1, 0, 0, 10, 0, 1, 0, 0, 0, 0, 1, 0];
  return {
    schema: 1,
    tool: { name: "ztcad", version: "0.0.0" },
    file: "sample.xml",
    code: 0,
    fault: false,
    problem: null,
    header: [],
    elements: {
      kind: ["structure", "point", "point", "solid-reference", "solid-reference", "template-solid"],
      name: ["frame", "Pin", "bolt", "left", "right", "plate"],
      path: null,
      tag: ["structure", "point", "point", "solidRef", "solidRef", "templateSolid"],
      number: [1, 1, 2, 1, 2, 0],
      parent: [-1, 0, 0, -1, -1, -1],
      visible: [1, 0, 1, 1, 1, 1],
      color: new Array<null>(count).fill(null),
      fields: new Array<[]>(count).fill([]),
      system: new Array<null>(count).fill(null),
    },
    items: {
      element: [0, 1, 2, 3, 4],
      source: [0, 1, 2, 5, 5],
      parent: [-1, 0, 0, -1, -1],
      shape: [-1, 0, 1, 2, 2],
      color: new Array<null>(5).fill(null),
      visible: [1, 0, 1, 1, 1],
      transform: [...identity, ...identity, ...identity, ...identity, ...mirrored],
    },
    shapes: {
      kind: ["point", "point", "mesh"],
      origin: [1, 2, 3, 4, 5, 6, 0, 0, 0],
      radius: [null, null, null],
      mesh: [-1, -1, 0],
      vertices: [1, 1, 4],
      facets: [0, 0, 4],
    },
    findings: [
      {
        severity: "note",
        rule: "a-note",
        message: "A note.",
        line: 1,
        column: 1,
        path: "/GMD/point[9]",
        index: 2,
      },
      {
        severity: "error",
        rule: "an-error",
        message: "An error.",
        line: 2,
        column: 1,
        path: "/GMD",
        index: 2,
      },
      {
        severity: "warning",
        rule: "a-warning",
        message: "A warning.",
        line: 3,
        column: 1,
        path: "",
        index: -1,
      },
    ],
    omitted: 0,
    rules: {},
  };
}

/** A cube from 0 to 1 whose facets face outwards. */
export const cube = {
  positions: Float32Array.from([0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1]),
  indices: Uint32Array.from([
    0, 2, 1, 0, 3, 2, 4, 5, 6, 4, 6, 7, 0, 1, 5, 0, 5, 4, 1, 2, 6, 1, 6, 5, 2, 3, 7, 2, 7, 6, 3, 0, 4, 3, 4,
    7,
  ]),
};

/** A ball of the given number of rings, around the origin. */
export function ball(rings: number): { positions: Float32Array; indices: Uint32Array } {
  const positions: number[] = [0, 0, 1];
  for (let ring = 1; ring < rings; ++ring)
    for (let step = 0; step < 2 * rings; ++step) {
      const polar = (Math.PI * ring) / rings;
      const round = (Math.PI * step) / rings;
      positions.push(Math.sin(polar) * Math.cos(round), Math.sin(polar) * Math.sin(round), Math.cos(polar));
    }
  positions.push(0, 0, -1);
  const at = (ring: number, step: number): number => {
    if (ring === 0) return 0;
    return ring === rings ? positions.length / 3 - 1 : 1 + (ring - 1) * 2 * rings + (step % (2 * rings));
  };
  const indices: number[] = [];
  for (let ring = 0; ring < rings; ++ring)
    for (let step = 0; step < 2 * rings; ++step) {
      if (ring > 0) indices.push(at(ring, step), at(ring + 1, step), at(ring, step + 1));
      if (ring < rings - 1) indices.push(at(ring + 1, step), at(ring + 1, step + 1), at(ring, step + 1));
    }
  return { positions: Float32Array.from(positions), indices: Uint32Array.from(indices) };
}
