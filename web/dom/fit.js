// Fits the place of a box to the browser's bounding box by weighted least squares (Gauss-Newton): offsets are whole
// pixels, bounding boxes are not.

/** @typedef {import('./geometry.js').Matrix} Matrix */

// Relative rounding error of computed values: they are printed with six digits.
const DIGITS = 1e-6;
const TOLERANCE = 0.03;  // pixels
const MAX_ROUNDS = 12;
// When moving the box in a direction changes the weighted sum of squares by less than this, the bounding box does not
// determine that direction.
const MIN_CURVATURE = 1e-4;

/**
 * What is fitted: a box with its own matrix, in a plane that the matrix `tail` carries to the screen.
 * @typedef {object} Fitting
 * @property {Matrix | null} own
 * @property {Matrix} tail  the matrix to the screen that follows the translation by the box's place
 * @property {number} width
 * @property {number} height
 * @property {boolean} sizeIsKnown  when false, the size is fitted as well, which is correct only where own is null
 * @property {DOMRect} seen  the browser's bounding box
 */

/**
 * The four corners of the box placed at the origin, through own and tail: (x, y, w), and the factor by which a shift of
 * the box moves them. Browsers compute bounding boxes corner by corner: a corner behind the eye counts with its mirror
 * image.
 */
function corners({ own, tail, width, height }) {
  const result = [];
  for (let i = 0; i < 4; ++i) {
    const right = i === 1 || i === 2 ? 1 : 0;
    const down = i >= 2 ? 1 : 0;
    const x = right * width;
    const y = down * height;
    const p = own
      ? [0, 1, 2, 3].map((c) => x * own[c] + y * own[4 + c] + own[12 + c])
      : [x, y, 0, 1];
    const through = (c) => p[0] * tail[c] + p[1] * tail[4 + c] + p[2] * tail[8 + c] + p[3] * tail[12 + c];
    result.push({ projected: [through(0), through(1), through(3)], shift: p[3], right, down });
  }
  return result;
}

// A side of the predicted bounding box: its coordinate, the derivatives by the unknowns (slopes), and the error bound
// that rounded matrices give it (doubt).
class Side {
  constructor() {
    this.slopes = [0, 0, 0, 0];
  }
  set(value, doubt, axis, w, { shift, right, down }, tail, unknowns) {
    this.value = value;
    this.doubt = doubt;
    for (let u = 0; u < unknowns; ++u) {
      const row = u % 2 === 0 ? 0 : 4;
      const amount = u < 2 ? shift : u === 2 ? right : down;
      this.slopes[u] = (amount * (tail[row + axis] - value * tail[row + 3])) / w;
    }
  }
}

// Computes the sides of the bounding box for `values` of the unknowns; returns whether all corners are in front. The
// corners were computed for the size of `start`.
function predict(points, tail, values, start, unknowns, sides) {
  sides[0].value = sides[1].value = Infinity;
  sides[2].value = sides[3].value = -Infinity;
  let inFront = true;
  for (const point of points) {
    const dx = values[0] * point.shift + point.right * (values[2] - start[2]);
    const dy = values[1] * point.shift + point.down * (values[3] - start[3]);
    const w = point.projected[2] + dx * tail[3] + dy * tail[7];
    if (!(w > 0)) inFront = false;
    for (let axis = 0; axis < 2; ++axis) {
      const scaled = point.projected[axis] + dx * tail[axis] + dy * tail[4 + axis];
      const value = scaled / w;
      const size = Math.abs(w);
      const doubt = (DIGITS * (Math.max(Math.abs(scaled), 1000) + Math.abs(value) * Math.max(size, 1))) / size;
      if (value < sides[axis].value) sides[axis].set(value, doubt, axis, w, point, tail, unknowns);
      if (value > sides[axis + 2].value) sides[axis + 2].set(value, doubt, axis, w, point, tail, unknowns);
    }
  }
  return inFront;
}

/** Solves a small symmetric positive definite system in place; b becomes the solution. */
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
}

/**
 * @param {Fitting} fitting
 * @param {{x: number, y: number, isKnown: boolean}} offset  the initial place; isKnown when it is right within a pixel
 * @returns {{x: number, y: number, width: number, height: number, fits: boolean, isSure: boolean}}
 *   fits: the browser's bounding box is reproduced; isSure: no other place has this bounding box
 */
export function fit(fitting, offset) {
  const { seen, tail } = fitting;
  const wanted = [seen.left, seen.top, seen.right, seen.bottom];
  const unknowns = fitting.sizeIsKnown ? 2 : 4;
  const points = corners(fitting);
  const start = [offset.x, offset.y, fitting.width, fitting.height];
  const values = start.slice();
  const sides = [new Side(), new Side(), new Side(), new Side()];
  // A small weight of the initial values (regularization) holds what the bounding box does not determine.
  const pull = offset.isKnown ? 1e-4 : 1e-9;
  let inFront = predict(points, tail, values, start, unknowns, sides);
  let isDetermined = false;
  for (let round = 0; round < MAX_ROUNDS; ++round) {
    let scale = 0;
    for (const side of sides) scale = Math.max(scale, 1 / (TOLERANCE + side.doubt) ** 2);
    const normal = [];
    const change = [];
    for (let i = 0; i < unknowns; ++i) {
      normal.push([]);
      change.push(pull * (start[i] - values[i]));
      for (let j = 0; j < unknowns; ++j) normal[i].push(i === j ? pull : 0);
    }
    for (let k = 0; k < 4; ++k) {
      const { value, doubt, slopes } = sides[k];
      const weight = 1 / (TOLERANCE + doubt) ** 2 / scale;
      for (let i = 0; i < unknowns; ++i) {
        change[i] += weight * slopes[i] * (wanted[k] - value);
        for (let j = 0; j < unknowns; ++j) normal[i][j] += weight * slopes[i] * slopes[j];
      }
    }
    if (unknowns === 2) {
      const [[a, b], [, d]] = normal;
      isDetermined = a * d - b * b > MIN_CURVATURE * (a + d) && Math.min(a, d) > MIN_CURVATURE;
    }
    solve(normal, change);
    if (!change.every(Number.isFinite)) break;
    for (let i = 0; i < unknowns; ++i) values[i] += change[i];
    inFront = predict(points, tail, values, start, unknowns, sides);
    if (change.every((value) => Math.abs(value) < 1e-6)) break;
  }
  const fits = wanted.every((side, k) =>
    Math.abs(side - sides[k].value) <= TOLERANCE + 2 * sides[k].doubt + 2e-6 * Math.abs(side));
  return { x: values[0], y: values[1], width: values[2], height: values[3], fits, isSure: isDetermined && inFront && fits };
}
