// A forest stored in preorder: holders before what they hold.

export class Tree {
  readonly size: number;
  readonly parent: Int32Array;
  /** Index after the last descendant; its own index + 1 for a leaf. */
  readonly end: Int32Array;
  /** From 1. */
  readonly level: Int32Array;
  /** Number among its siblings, from 1. */
  readonly position: Int32Array;
  private readonly children: Int32Array;

  constructor(parents: ArrayLike<number>) {
    const size = parents.length;
    this.size = size;
    this.parent = Int32Array.from(parents);
    this.end = new Int32Array(size);
    this.level = new Int32Array(size);
    this.position = new Int32Array(size);
    this.children = new Int32Array(size + 1); // [0] counts the roots
    for (let node = 0; node < size; ++node) {
      const parent = this.parent[node]!;
      if (parent >= node || parent < -1)
        throw new Error(`The parent ${parent} of ${node} does not precede it.`);
      this.level[node] = parent < 0 ? 1 : this.level[parent]! + 1;
      this.position[node] = ++this.children[parent + 1]!;
    }
    for (let node = size - 1; node >= 0; --node) {
      this.end[node] = Math.max(this.end[node]!, node + 1);
      const parent = this.parent[node]!;
      if (parent >= 0) this.end[parent] = Math.max(this.end[parent]!, this.end[node]!);
    }
  }

  /** Number of nodes with the same parent. */
  siblings(node: number): number {
    return this.children[this.parent[node]! + 1]!;
  }

  childCount(node: number): number {
    return this.children[node + 1]!;
  }

  contains(holder: number, node: number): boolean {
    return holder <= node && node < this.end[holder]!;
  }

  /** The nodes from a root down to this one. */
  ancestry(node: number): number[] {
    const result = [];
    for (let at = node; at >= 0; at = this.parent[at]!) result.unshift(at);
    return result;
  }

  /** The nodes that are listed: those whose holders are all expanded. */
  rows(expanded: Uint8Array): Int32Array {
    const rows = new Int32Array(this.size);
    let count = 0;
    for (let node = 0; node < this.size; node = expanded[node] ? node + 1 : this.end[node]!)
      rows[count++] = node;
    return rows.subarray(0, count);
  }

  /** The marked nodes and all their holders. */
  withHolders(marked: Uint8Array): Int32Array {
    const kept = Uint8Array.from(marked);
    let count = 0;
    for (let node = this.size - 1; node >= 0; --node) {
      if (!kept[node]) continue;
      ++count;
      const parent = this.parent[node]!;
      if (parent >= 0) kept[parent] = 1;
    }
    const rows = new Int32Array(count);
    for (let node = this.size - 1; node >= 0; --node) if (kept[node]) rows[--count] = node;
    return rows;
  }
}
