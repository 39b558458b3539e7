// Loads zan.wasm, which is in the folder of this file, in browsers, workers and node; passes values through its memory,
// and makes exceptions of the library's reports.
import { MESSAGES } from './zan/constants.js';

/** @type {WebAssembly.Exports | null} */
let exports = null;
/** @type {Promise<void> | null} */
let loading = null;

// Views of the module's memory. They are renewed when it grows.
export let F64 = new Float64Array(0);
export let I32 = new Int32Array(0);
export let U32 = new Uint32Array(0);
export let I16 = new Int16Array(0);
export let U8 = new Uint8Array(0);

let scratchAddress = 0;
let arrays = 0;
let arraysSize = 0;
let reported = 0;  // the index in U32 of the first report: whether there is one, its number, severity and text

function renewViews() {
  const { buffer } = exports.memory;
  F64 = new Float64Array(buffer);
  I32 = new Int32Array(buffer);
  U32 = new Uint32Array(buffer);
  I16 = new Int16Array(buffer);
  U8 = new Uint8Array(buffer);
}

/** A failure that the library reports. */
export class ZanError extends Error {
  constructor(text, number, severity, code) {
    super(text);
    this.name = 'ZanError';
    /** The report's error number; 0 for a result code without a report. */
    this.number = number;
    this.severity = severity;
    /** The result code, one of `Err` or `Result`; 0 where the operation has none. */
    this.code = code;
  }
}

const host = {
  // Imports of the C++ runtime. Nothing is written and the module does not end.
  env: { emscripten_notify_memory_growth: renewViews },
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
    exports = instance.exports;
    exports._initialize();
    renewViews();
    reported = exports.zan_start() >> 2;
    scratchAddress = exports.zan_scratch();
  })().catch((error) => {
    exports = null;
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

/** The address of a few hundred bytes for arguments and results. */
export function scratch() {
  wasm();
  return scratchAddress;
}

/** Throws what the last call has reported, or its result code if that is not 0. */
export function check(code) {
  if (U32[reported] === 0) {
    if (code !== 0) throw new ZanError(MESSAGES.get(code) ?? `result ${code}`, 0, 0, code);
    return;
  }
  U32[reported] = 0;
  const text = (reported + 3) << 2;
  const message = new TextDecoder().decode(U8.subarray(text, U8.indexOf(0, text)));
  throw new ZanError(message, U32[reported + 1], I32[reported + 2], code);
}

/** The number of points in an array of coordinates. */
export function countOf(points, components) {
  const count = points.length / components;
  if (!Number.isInteger(count)) throw new RangeError(`zan: ${points.length} coordinates are no whole number of points`);
  return count;
}

/** The address of memory for arrays, reused by each call. */
export function room(bytes) {
  if (bytes > arraysSize) {
    arrays = wasm().zan_room(bytes);
    arraysSize = arrays === 0 ? 0 : bytes;  // on failure, too, the former memory is freed
    if (arrays === 0) throw new RangeError('zan: not enough memory');
  }
  return arrays;
}

export function putF64(values) {
  const at = room(values.length * 8);
  F64.set(values, at >> 3);
  return at;
}

export function putI32(values) {
  const at = room(values.length * 4);
  I32.set(values, at >> 2);
  return at;
}

export function putI16(values) {
  const at = room(values.length * 2);
  I16.set(values, at >> 1);
  return at;
}

export function getF64(at, into) {
  into.set(F64.subarray(at >> 3, (at >> 3) + into.length));
  return into;
}

export function getI32(at, into) {
  into.set(I32.subarray(at >> 2, (at >> 2) + into.length));
  return into;
}

export function getI16(at, into) {
  into.set(I16.subarray(at >> 1, (at >> 1) + into.length));
  return into;
}
