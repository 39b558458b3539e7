// Fits the place of a box to the bounding box that the browser gives. Offsets are whole pixels, bounding boxes are not.

/** @typedef {import('./geometry.js').Matrix} Matrix */

// Computed matrices have six digits.
const DIGITS = 1e-6;
const TOLERANCE = 0.02;
const STEP = 1 / 64;

/**
 * The way of a box to the screen: own matrix, the box's place, the eye of the parent, then the parent's plane.
 * @typedef {object} Steps
 * @property {Matrix | null} own
 * @property {Matrix | null} eye
 * @property {boolean} flat  z is dropped before the parent's plane
 * @property {Matrix[]} afterwards
 */

function carry(point, m) {
  const [x, y, z, w] = point;
  return [
    x * m[0] + y * m[4] + z * m[8] + w * m[12],
    x * m[1] + y * m[5] + z * m[9] + w * m[13],
    x * m[2] + y * m[6] + z * m[10] + w * m[14],
    x * m[3] + y * m[7] + z * m[11] + w * m[15],
  ];
}

/**
 * The bounding box as browsers compute it, corner by corner: one behind the eye counts with its mirror image.
 * @param {Steps} steps
 * @param {{x: number, y: number, width: number, height: number}} at
 * @returns {{sides: number[], doubt: number[]}} left, top, right, bottom; how far off rounded matrices may put each
 */
export function predictBox(steps, { x, y, width, height }) {
  const sides = [Infinity, Infinity, -Infinity, -Infinity];
  const doubt = [0, 0, 0, 0];
  for (const [cx, cy] of [[0, 0], [width, 0], [width, height], [0, height]]) {
    let p = [cx, cy, 0, 1];
    if (steps.own) p = carry(p, steps.own);
    p = [p[0] + x * p[3], p[1] + y * p[3], p[2], p[3]];
    if (steps.eye) p = carry(p, steps.eye);
    if (steps.flat) p[2] = 0;
    for (const m of steps.afterwards) p = carry(p, m);
    const w = p[3];
    for (const axis of [0, 1]) {
      const value = p[axis] / w;
      const error = (DIGITS * (Math.max(Math.abs(p[axis]), 1000) + Math.abs(value) * Math.max(Math.abs(w), 1))) / Math.abs(w);
      if (value < sides[axis]) {
        sides[axis] = value;
        doubt[axis] = error;
      }
      if (value > sides[axis + 2]) {
        sides[axis + 2] = value;
        doubt[axis + 2] = error;
      }
    }
  }
  return { sides, doubt };
}

/** Solves a small symmetric system in place; pivots are positive. */
function solve(a, b) {
  const n = b.length;
  for (let i = 0; i < n; ++i) {
    for (let j = i + 1; j < n; ++j) {
      const factor = a[j][i] / a[i][i];
      for (let k = i; k < n; ++k) a[j][k] -= factor * a[i][k];
      b[j] -= factor * b[i];
    }
  }
  for (let i = n - 1; i >= 0; --i) {
    for (let k = i + 1; k < n; ++k) b[i] -= a[i][k] * b[k];
    b[i] /= a[i][i];
  }
  return b;
}

/**
 * @param {Steps} steps
 * @param {{width: number, height: number}} size
 * @param {DOMRect} seen  the browser's box
 * @param {{x: number, y: number, isKnown: boolean}} offset  the place within a pixel, if it is known
 * @param {boolean} sizeIsKnown  else it is fitted, too
 * @returns {{x: number, y: number, width: number, height: number, fits: boolean}}
 */
export function fit(steps, size, seen, offset, sizeIsKnown) {
  const wanted = [seen.left, seen.top, seen.right, seen.bottom];
  const names = sizeIsKnown ? ['x', 'y'] : ['x', 'y', 'width', 'height'];
  const at = { x: offset.x, y: offset.y, width: size.width, height: size.height };
  // The offset counts a little, so that what the bounding box does not show stays where it is.
  const pull = offset.isKnown ? 1e-4 : 1e-9;
  let predicted = predictBox(steps, at);
  for (let round = 0; round < 12; ++round) {
    const weights = predicted.doubt.map((error) => 1 / (TOLERANCE + error) ** 2);
    const missing = wanted.map((side, i) => side - predicted.sides[i]);
    const slopes = names.map((name) => {
      const moved = predictBox(steps, { ...at, [name]: at[name] + STEP });
      return moved.sides.map((side, i) => (side - predicted.sides[i]) / STEP);
    });
    const start = { x: offset.x, y: offset.y, width: size.width, height: size.height };
    const scale = Math.max(...weights);
    const normal = slopes.map((a, i) =>
      slopes.map((b, j) => a.reduce((sum, v, k) => sum + (weights[k] / scale) * v * b[k], i === j ? pull : 0)));
    const right = slopes.map((a, i) =>
      a.reduce((sum, v, k) => sum + (weights[k] / scale) * v * missing[k], pull * (start[names[i]] - at[names[i]])));
    const change = solve(normal, right);
    if (!change.every(Number.isFinite)) break;
    names.forEach((name, i) => (at[name] += change[i]));
    predicted = predictBox(steps, at);
    if (change.every((value) => Math.abs(value) < 1e-7)) break;
  }
  const off = (i) => Math.abs(wanted[i] - predicted.sides[i]);
  const close = wanted.every((side, i) => off(i) <= TOLERANCE + 2 * predicted.doubt[i] + 2e-6 * Math.abs(side));
  const near = !offset.isKnown || (Math.abs(at.x - offset.x) <= 1 && Math.abs(at.y - offset.y) <= 1);
  return { ...at, fits: close && near };
}
