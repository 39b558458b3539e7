// What the build puts into the page: decks, pages, and the programs, compressed.

/**
 * @typedef {object} Bundled
 * @property {string} wasm  zan.wasm: gzip, base64
 * @property {{script: string, wasm: string}} selfcheck  zan-selfcheck.wasm in the same form, and its script
 * @property {{name: string, title: string, html: string}[]} decks
 * @property {{name: string, title: string, html: string}[]} pages
 */

/** @type {Bundled} */
export const bundled = JSON.parse(document.getElementById('bundled').textContent);

/**
 * @param {string} packed
 * @returns {Promise<ArrayBuffer>}
 */
export function bytesOf(packed) {
  const bytes = Uint8Array.from(atob(packed), (letter) => letter.charCodeAt(0));
  return new Response(new Blob([bytes]).stream().pipeThrough(new DecompressionStream('gzip'))).arrayBuffer();
}
