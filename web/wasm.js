// Loads zan.wasm, which is in the folder of this file, in browsers, workers and node.

/** @type {WebAssembly.Exports | null} */
let exports = null;
/** @type {Promise<void> | null} */
let loading = null;

// Imports of the C++ runtime. Only the notice of memory growth is reached, and nothing has to be done for it:
// geometry.js checks for a new buffer at each call. Nothing is written and the module does not end.
const host = {
  env: { emscripten_notify_memory_growth() {} },
  wasi_snapshot_preview1: {
    proc_exit(code) {
      throw new Error(`zan ended with status ${code}`);
    },
    fd_close: () => 0,
    fd_seek: () => 0,
    fd_write: () => 0,
  },
};

/** @param {URL} url */
async function read(url) {
  if (url.protocol === 'file:' && typeof process !== 'undefined' && process.versions?.node) {
    const { readFile } = await import('node:fs/promises');
    return readFile(url);
  }
  const response = await fetch(url);
  if (!response.ok) throw new Error(`${url}: ${response.status} ${response.statusText}`);
  return response.arrayBuffer();
}

/**
 * Loads the module once, which everything else requires. Further calls return the same promise.
 * @param {URL | BufferSource} [source] where zan.wasm is, or its bytes; in this file's folder unless given
 * @returns {Promise<void>}
 */
export function load(source = new URL('zan.wasm', import.meta.url)) {
  loading ??= (async () => {
    const bytes = source instanceof URL ? await read(source) : source;
    const { instance } = await WebAssembly.instantiate(bytes, host);
    instance.exports._initialize();
    exports = instance.exports;
  })().catch((error) => {
    loading = null;  // so that a later call may succeed
    throw error;
  });
  return loading;
}

/**
 * The exports of the loaded module.
 * @returns {WebAssembly.Exports}
 */
export function wasm() {
  if (!exports) throw new Error('zan: call load() and await it first');
  return exports;
}
