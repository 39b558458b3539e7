// A layer: a box that a transform carries to the screen.
import { F64, U8, countOf, room, scratch, wasm } from '../wasm.js';
import { elementsOfMatrix3, elementsOfMatrix4, Matrix3 } from './matrix.js';

// The plane through the eye of a browser's matrix is w = 0. For the library's eye space, depth = w * DEPTH_OF_W, so that
// its near plane (depth 0.1) is at w = 1e-6.
const DEPTH_OF_W = 1e5;

const isDegenerate = (row) => row.reduce((sum, element) => sum + element * element, 0) < 1e-12;

/** A browser's matrix, to (x, y, z, w), as one to (x, y, depth). */
function toEye(m) {
  return [
    m[0], m[1], m[3] * DEPTH_OF_W, 0, m[4], m[5], m[7] * DEPTH_OF_W, 0,
    m[8], m[9], m[11] * DEPTH_OF_W, 0, m[12], m[13], m[15] * DEPTH_OF_W, 1,
  ];
}
const TO_SCREEN = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1 / DEPTH_OF_W, 0, 0, 0, 0];

export class Layer {
  #box;
  #flat;
  #matrices;
  #points;

  /**
   * @param {{x?: number, y?: number, width: number, height: number}} box  in layer coordinates
   * @param {Matrix3 | Matrix4 | DOMMatrix} matrix
   *   to the screen; with `toScreen`, to eye space, where the eye is at the origin and looks along +z
   * @param {Matrix4} [toScreen]  from eye space to the screen
   */
  constructor({ x = 0, y = 0, width, height }, matrix, toScreen) {
    this.#box = [x, y, width, height];
    this.#flat = matrix instanceof Matrix3;
    if (this.#flat) this.#matrices = [elementsOfMatrix3(matrix)];
    else if (toScreen) this.#matrices = [elementsOfMatrix4(matrix), elementsOfMatrix4(toScreen)];
    else this.#matrices = [toEye(elementsOfMatrix4(matrix)), TO_SCREEN];
    const $ = this.#put();
    const results = $ + 512;
    let count = 4;
    let behind = 0;
    if (this.#flat) {
      if (!wasm().zan_flat_layer($, $ + 32, results)) count = 0;
    } else {
      const answer = wasm().zan_space_layer($, $ + 32, $ + 160, results);
      [count, behind] = this.#isDegenerate ? [0, 0] : [answer & 0xff, answer >> 8];
    }
    this.#points = F64.slice(results >> 3, (results >> 3) + 2 * count);
    /** Which corners are behind the near plane. */
    this.behind = Object.freeze([1, 2, 4, 8].map((bit) => (behind & bit) !== 0));
    Object.freeze(this);
  }

  get points() {
    return this.#points.slice();
  }

  get isVisible() {
    return this.#points.length > 0;
  }

  hits(x, y, tolerance = 0) {
    return this.hitsAll([x, y], tolerance)[0] === 1;
  }

  hitsAll(points, tolerance = 0) {
    const count = countOf(points, 2);
    const $ = scratch();
    F64.set(this.#points, $ >> 3);
    const at = room(points.length * 8 + count);
    F64.set(points, at >> 3);
    const results = at + points.length * 8;
    wasm().zan_points_in_polygon(count, at, this.#points.length / 2, $, tolerance, results);
    return U8.slice(results, results + count);
  }

  distance(x, y) {
    return this.distances([x, y])[0];
  }

  distances(points) {
    const count = countOf(points, 2);
    if (!this.isVisible) return new Float64Array(count).fill(-1);
    const $ = this.#put();
    const at = room(points.length * 8 + count * 8);
    F64.set(points, at >> 3);
    const results = at + points.length * 8;
    if (this.#flat) wasm().zan_flat_layer_distances($, $ + 32, count, at, results);
    else wasm().zan_space_layer_distances($, $ + 32, $ + 160, count, at, results);
    return F64.slice(results >> 3, (results >> 3) + count);
  }

  get #isDegenerate() {
    const [m] = this.#matrices;
    return isDegenerate(m.slice(0, 4)) || isDegenerate(m.slice(4, 8));
  }

  // Stores box and matrices in scratch memory.
  #put() {
    const $ = scratch();
    let at = $ >> 3;
    for (const numbers of [this.#box, ...this.#matrices]) {
      F64.set(numbers, at);
      at += numbers.length;
    }
    return $;
  }
}
