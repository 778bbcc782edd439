// What browsers and node both have, and the language's library does not declare.

declare function atob(text: string): string;
declare class TextDecoder {
  decode(bytes: Uint8Array): string;
}
