// The library in JavaScript: `await load()` once, then plain functions and immutable values. Nothing has to be freed.
export { load, ZanError } from './wasm.js';
export { Err, Result, RatioStatus, RectRelation, MatrixType } from './zan/constants.js';
export { Matrix3, Matrix4 } from './zan/matrix.js';
export { Layer } from './zan/layer.js';
export * from './zan/points.js';
export * from './zan/functions.js';
