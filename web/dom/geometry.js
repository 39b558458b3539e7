// The library's geometry for dom.js: the JavaScript side of dom_geometry.cpp.
//
// A matrix is a Float64Array of 16 numbers in the order of DOMMatrix.toFloat64Array(). Points are row vectors (point
// times matrix), so the left factor of a product is applied first.
import { F64, wasm } from '../wasm.js';

/** @typedef {Float64Array} Matrix */

// The layout of the exchange buffer, in doubles.
export const MAX_MATRICES = 32;
const MATRIX = 16;
const POINTS = MAX_MATRICES * MATRIX;
const MAX_POINTS = MAX_MATRICES + 8;

let start = 0;

// Returns the module, after finding the exchange buffer.
function exchange() {
  const module = wasm();
  if (start === 0) start = module.zan_dom_exchange() / Float64Array.BYTES_PER_ELEMENT;
  return module;
}

const firstMatrix = () => F64.slice(start, start + MATRIX);

/** @type {() => Matrix} */
export const identity = () => new Float64Array([1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]);

/**
 * @param {number} x
 * @param {number} y
 * @param {number} [z]
 * @returns {Matrix}
 */
export const translation = (x, y, z = 0) => new Float64Array([1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1]);

/**
 * @param {number} x
 * @param {number} y
 * @param {number} z
 * @returns {Matrix}
 */
export const scaling = (x, y, z) => new Float64Array([x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1]);

/**
 * A rotation about an axis, as in CSS; the identity for an axis of zero length.
 * @param {number[]} axis
 * @param {number} degrees
 * @returns {Matrix}
 */
export function rotation([x, y, z], degrees) {
  exchange().zan_dom_rotation(x, y, z, (degrees * Math.PI) / 180);
  return firstMatrix();
}

/**
 * The perspective of an eye at a distance in front of a point of the plane z = 0.
 * @param {number} distance
 * @param {number} x
 * @param {number} y
 * @returns {Matrix}
 */
export function perspective(distance, x, y) {
  const m = identity();
  m[8] = -x / distance;
  m[9] = -y / distance;
  m[11] = -1 / distance;
  return m;
}

/**
 * The product of matrices; the transform of the first one is applied first.
 * @param {Matrix} first
 * @param {...Matrix} others
 * @returns {Matrix}
 */
export function concat(first, ...others) {
  const module = exchange();
  F64.set(first, start);
  for (const other of others) {
    F64.set(other, start + MATRIX);
    module.zan_dom_concat();
  }
  return firstMatrix();
}

/**
 * The inverse; for a singular matrix the adjugate, which for any other matrix is the inverse times the determinant.
 * @param {Matrix} m
 * @returns {Matrix}
 */
export function invert(m) {
  const module = exchange();
  F64.set(m, start);
  module.zan_dom_invert();
  return firstMatrix();
}

/**
 * @param {Matrix} m
 * @returns {number}
 */
export function determinant(m) {
  const module = exchange();
  F64.set(m, start);
  return module.zan_dom_determinant();
}

/**
 * Whether a box is seen edge-on from the eye that a matrix implies.
 * @param {Matrix} m
 * @param {{x: number, y: number, width: number, height: number}} box
 * @returns {boolean}
 */
export function isEdgeOn(m, box) {
  const module = exchange();
  F64.set(m, start);
  return module.zan_dom_edge_on(box.x, box.y, box.width, box.height) !== 0;
}

/**
 * The outline of a box that matrices carry to the screen one after another, clipped by the near plane of each.
 * @param {Matrix[]} matrices  MAX_MATRICES at most
 * @param {{x: number, y: number, width: number, height: number}} box
 * @returns {{points: Float64Array, behind: boolean[]}} x and y of each point; which corners are behind
 */
export function outline(matrices, box) {
  const module = exchange();
  for (let i = 0; i < matrices.length; ++i) F64.set(matrices[i], start + i * MATRIX);
  const answer = module.zan_dom_outline(matrices.length, box.x, box.y, box.width, box.height);
  const points = F64.slice(start + POINTS, start + POINTS + 2 * (answer & 0xff));
  return { points, behind: [0x100, 0x200, 0x400, 0x800].map((bit) => (answer & bit) !== 0) };
}

/**
 * Whether a point lies in an outline or within a tolerance of it.
 * @param {Float64Array} points
 * @param {number} x
 * @param {number} y
 * @param {number} tolerance
 * @returns {boolean}
 */
export function isInside(points, x, y, tolerance) {
  const module = exchange();
  if (points.length > 2 * MAX_POINTS) throw new RangeError('zan: too many points');
  F64.set(points, start + POINTS);
  return module.zan_dom_inside(points.length / 2, x, y, tolerance) !== 0;
}
