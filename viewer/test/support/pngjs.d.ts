declare module "pngjs" {
  export class PNG {
    constructor(options: { width: number; height: number });
    readonly width: number;
    readonly height: number;
    readonly data: Uint8Array;
    static readonly sync: { read(bytes: Uint8Array): PNG; write(png: PNG): Buffer };
  }
}
