import {
  Color,
  DoubleSide,
  LineBasicMaterial,
  MeshPhongMaterial,
  PointsMaterial,
  type Material,
  type Plane,
} from "three";
import { LineMaterial } from "three/examples/jsm/lines/LineMaterial.js";

interface Patched {
  fragmentShader: string;
  uniforms: Record<string, { value: unknown }>;
}

/** A marker of constant size on the screen. */
function dots(size: number, fragment: string, onTop: boolean): PointsMaterial {
  const material = new PointsMaterial({
    size,
    sizeAttenuation: false,
    vertexColors: true,
    transparent: true,
  });
  material.depthTest = !onTop;
  material.onBeforeCompile = (shader: Patched) => {
    shader.fragmentShader = shader.fragmentShader.replace(
      "#include <opaque_fragment>",
      `#include <opaque_fragment>\n${fragment}`,
    );
  };
  material.customProgramCacheKey = () => fragment;
  return material;
}

// one pixel of ramp, so that the round edge is not jagged
const disc = `
  vec2 fromCenter = 2.0 * gl_PointCoord - 1.0;
  float radius = length(fromCenter);
  float ramp = fwidth(radius);
  gl_FragColor.a *= 1.0 - smoothstep(1.0 - 1.5 * ramp, 1.0, radius);
  if (gl_FragColor.a < 0.01) discard;`;
const ring = `${disc}
  gl_FragColor.rgb = mix(gl_FragColor.rgb, vec3(1.0), smoothstep(0.66 - ramp, 0.66 + ramp, radius));`;
const quarters = `${disc}
  bool white = (fromCenter.x > 0.0) == (fromCenter.y > 0.0) && radius < 0.84;
  gl_FragColor.rgb = white ? vec3(1.0) : vec3(0.03);`;

/** Everything that the picture is drawn with. */
export class Materials {
  readonly solid = new MeshPhongMaterial({ specular: 0x1c1c1c, shininess: 28, side: DoubleSide });
  readonly edge = new LineBasicMaterial();
  readonly line = new LineMaterial({ linewidth: 2, vertexColors: true });
  readonly point = dots(9, disc, false);
  readonly marker = dots(17, ring, true);
  readonly massCenter = dots(17, quarters, true);
  private readonly cut = { value: new Color() };
  private readonly isCut = { value: false };

  constructor() {
    this.solid.polygonOffset = true; // edges lie on the surface
    this.solid.polygonOffsetFactor = 1;
    this.solid.polygonOffsetUnits = 1;
    // Where the section plane opens a solid, its inner side is what one sees first. Painted evenly, it looks as the
    // cut face does, for any mesh and at no cost.
    this.solid.onBeforeCompile = (shader: Patched) => {
      shader.uniforms.cutColor = this.cut;
      shader.uniforms.isCut = this.isCut;
      shader.fragmentShader = shader.fragmentShader
        .replace("void main() {", "uniform vec3 cutColor;\nuniform bool isCut;\nvoid main() {")
        .replace(
          "#include <opaque_fragment>",
          `#include <opaque_fragment>
          if (isCut && !gl_FrontFacing) {
            float stripe = mod(gl_FragCoord.x + gl_FragCoord.y, 9.0);
            gl_FragColor = vec4(cutColor * (stripe < 1.5 ? 0.62 : 1.0), 1.0);
          }`,
        );
    };
  }

  private get ofModel(): Material[] {
    return [this.solid, this.edge, this.line, this.point];
  }

  /** Hides what is below a plane; null: nothing. */
  clip(plane: Plane | null): void {
    const planes = plane ? [plane] : null;
    for (const material of this.ofModel) {
      if ((material.clippingPlanes === null) !== (planes === null)) material.needsUpdate = true;
      material.clippingPlanes = planes;
    }
    this.isCut.value = plane !== null;
  }

  setFlat(flat: boolean): void {
    if (this.solid.flatShading === flat) return;
    this.solid.flatShading = flat;
    this.solid.needsUpdate = true;
  }

  setColors(edge: string, cut: string): void {
    this.edge.color.set(edge);
    this.cut.value.set(cut);
  }
}
