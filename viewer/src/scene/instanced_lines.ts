import { InstancedBufferAttribute, LineSegments, type BufferGeometry, type LineBasicMaterial } from "three";

/**
 * Line segments drawn at many places. The renderer asks for the properties of an InstancedMesh, not for its class,
 * which is a mesh and would draw triangles.
 */
export class InstancedLines extends LineSegments {
  readonly isInstancedMesh = true;
  instanceMatrix: InstancedBufferAttribute;
  readonly instanceColor = null;
  readonly morphTexture = null;
  override count = 0;

  constructor(geometry: BufferGeometry, material: LineBasicMaterial, capacity: number) {
    super(geometry, material);
    this.instanceMatrix = new InstancedBufferAttribute(new Float32Array(16 * capacity), 16);
  }
}
