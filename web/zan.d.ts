// The library in JavaScript. `await load()` once, then everything here works at once. Nothing has to be freed.
export { Err, Result, RatioStatus, RectRelation, MatrixType } from './zan/constants.js';
export * from './zan/functions.js';
export * from './zan/layer.js';
export * from './zan/matrix.js';
export * from './zan/points.js';

/** Loads zan.wasm, once; everything else needs it. */
export function load(source?: URL | BufferSource): Promise<void>;

/** A failure that the library reports, such as the inverse of a singular matrix. */
export class ZanError extends Error {
  /** The report's error number; 0 for a result code without a report. */
  readonly number: number;
  readonly severity: number;
  /** The result code, one of `Err` or `Result`; 0 where the operation has none. */
  readonly code: number;
}
