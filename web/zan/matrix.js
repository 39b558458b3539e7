// Transforms of the plane and of space as immutable values.
//
// Points are row vectors (point times matrix): in a product the left matrix is applied first, and the translation is in
// the last row. So the order of the numbers is that of DOMMatrix.toFloat64Array().
import { F64, countOf, getF64, putF64, scratch, wasm, check } from '../wasm.js';
import * as plain from './functions.js';

/** The numbers of a matrix of the class, of a DOMMatrix, or of an array. */
export let elementsOfMatrix3;
export let elementsOfMatrix4;

/** A matrix that owns the array. */
export let newMatrix3;
export let newMatrix4;

const IDENTITY3 = [1, 0, 0, 0, 1, 0, 0, 0, 1];
const IDENTITY4 = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];

function copied(elements, count) {
  const array = typeof elements.toFloat64Array === 'function' ? elements.toFloat64Array() : elements;
  if (array.length !== count) throw new RangeError(`zan: a matrix of ${count} numbers is needed, not ${array.length}`);
  return array instanceof Float64Array ? array.slice() : Float64Array.from(array);  // the latter is slower
}

/** Stores matrices one after another in scratch memory; returns its address. */
function put(...matrices) {
  const $ = scratch();
  let at = $ >> 3;
  for (const elements of matrices) {
    F64.set(elements, at);
    at += elements.length;
  }
  return $;
}

const take = ($, count) => F64.slice($ >> 3, ($ >> 3) + count);

/** A homogeneous transform of the plane: nine numbers, row by row. */
export class Matrix3 {
  #elements;
  static {
    elementsOfMatrix3 = (m) => (#elements in m ? m.#elements : copied(m, 9));
    newMatrix3 = (elements) => {
      const m = new Matrix3(null);
      m.#elements = elements;
      return m;
    };
  }
  constructor(elements = IDENTITY3) {
    this.#elements = elements === null ? null : copied(elements, 9);
  }

  static identity = new Matrix3();
  static translation(tx, ty) {
    return Matrix3.identity.translate(tx, ty);
  }
  static rotation(degrees, cx = 0, cy = 0) {
    return Matrix3.identity.rotate(degrees, cx, cy);
  }
  static scaling(sx, sy = sx, cx = 0, cy = 0) {
    return Matrix3.identity.scale(sx, sy, cx, cy);
  }
  static from(matrix) {
    if (matrix instanceof Matrix3) return matrix;
    const $ = put(elementsOfMatrix4(matrix));
    wasm().zan_drop_z($, $ + 128);
    return newMatrix3(take($ + 128, 9));
  }

  at(row, column) {
    return this.#elements[3 * row + column];
  }
  toFloat64Array() {
    return this.#elements.slice();
  }
  toDOMMatrix() {
    return this.toMatrix4().toDOMMatrix();
  }
  toMatrix4() {
    return plain.matrix3ToMatrix4(this);
  }
  concat(next) {
    return plain.concatMatrix(next, this);
  }
  translate(tx, ty) {
    return plain.translateMatrix(this, tx, ty);
  }
  rotate(degrees, cx = 0, cy = 0) {
    return plain.rotateMatrix(this, degrees, cx, cy);
  }
  scale(sx, sy = sx, cx = 0, cy = 0) {
    return plain.scaleMatrix(this, sx, sy, cx, cy);
  }
  skew(skewDegrees, axisDegrees) {
    const $ = put(this.#elements);
    wasm().zan_skew($, skewDegrees, axisDegrees);
    return newMatrix3(take($, 9));
  }

  get kind() {
    return plain.getMatrixType(this);
  }
  get determinant() {
    return wasm().zan_determinant3(put(this.#elements));
  }
  inverse() {
    return plain.inverseMatrix(this);
  }
  inverseQuiet() {
    const { out, singular } = plain.inverseMatrixQuiet(this);
    return singular ? null : out;
  }
  equals(other, tolerance = 0) {
    if (tolerance === 0) return plain.equalMatrix(this, other);
    const $ = put(this.#elements, elementsOfMatrix3(other));
    return wasm().zan_equal3($, $ + 72, tolerance) !== 0;
  }
  transformPoint({ x, y }) {
    const [px, py] = this.transformPoints([x, y]);
    return { x: px, y: py };
  }
  transformPoints(points, into) {
    return plain.transformFloatPoints(this, points, into);
  }
  transformPointsAndDivide(points, into = new Float64Array(points.length)) {
    const count = countOf(points, 2);
    const $ = put(this.#elements);
    const at = putF64(points);
    wasm().zan_transform_and_divide3($, count, at);
    check(0);
    return getF64(at, into);
  }
}

/** A homogeneous transform of space: sixteen numbers, row by row. */
export class Matrix4 {
  #elements;
  static {
    elementsOfMatrix4 = (m) => (#elements in m ? m.#elements : copied(m, 16));
    newMatrix4 = (elements) => {
      const m = new Matrix4(null);
      m.#elements = elements;
      return m;
    };
  }
  constructor(elements = IDENTITY4) {
    this.#elements = elements === null ? null : copied(elements, 16);
  }

  static identity = new Matrix4();
  static from(matrix) {
    if (matrix instanceof Matrix4) return matrix;
    return matrix instanceof Matrix3 ? matrix.toMatrix4() : new Matrix4(matrix);
  }
  static translation(tx, ty, tz = 0) {
    return Matrix4.identity.translate(tx, ty, tz);
  }
  static scaling(sx, sy = sx, sz = sx) {
    return Matrix4.identity.scale(sx, sy, sz);
  }
  static rotation(ax, ay, az, radians) {
    return Matrix4.identity.rotate(ax, ay, az, radians);
  }
  static rotationXYZ(rx, ry, rz) {
    return Matrix4.identity.rotateXYZ(rx, ry, rz);
  }
  static fromQuat(q) {
    return plain.quatToMatrix4(q);
  }
  static lookAt(eye, target, up) {
    const $ = put([eye.x, eye.y, eye.z, target.x, target.y, target.z, up.x, up.y, up.z]);
    wasm().zan_look_at($, $ + 24, $ + 48, $ + 72);
    return newMatrix4(take($ + 72, 16));
  }
  static perspective(distance, x = 0, y = 0) {
    return new Matrix4([1, 0, 0, 0, 0, 1, 0, 0, -x / distance, -y / distance, 1, -1 / distance, 0, 0, 0, 1]);
  }

  at(row, column) {
    return this.#elements[4 * row + column];
  }
  toFloat64Array() {
    return this.#elements.slice();
  }
  toDOMMatrix() {
    return DOMMatrix.fromFloat64Array(this.toFloat64Array());
  }
  concat(next) {
    return plain.concatMatrix4(this, next);
  }
  translate(tx, ty, tz = 0) {
    return plain.translateMatrix4(tx, ty, tz, this);
  }
  scale(sx, sy = sx, sz = sx) {
    return plain.scaleMatrix4(sx, sy, sz, this);
  }
  rotate(ax, ay, az, radians) {
    return plain.rotateMatrix4(ax, ay, az, radians, this);
  }
  rotateXYZ(rx, ry, rz) {
    return plain.rotateMatrix4XYZ(rx, ry, rz, this);
  }
  project(distance) {
    const $ = put(this.#elements);
    wasm().zan_project($, distance);
    return newMatrix4(take($, 16));
  }

  get determinant() {
    return plain.getMatrix4Determinant(this);
  }
  transpose() {
    return plain.transposeMatrix4(this);
  }
  inverse() {
    return plain.inverseMatrix4(this);
  }
  inverseQuiet() {
    const { out, singular } = plain.inverseMatrix4Quiet(this);
    return singular ? null : out;
  }
  normalMatrix() {
    return plain.calcNormalMatrix4(this);
  }
  decompose() {
    return plain.decomposeMatrix4(this);
  }
  decomposeZYX() {
    return plain.decomposeMatrix4ZYX(this);
  }
  toQuat() {
    return plain.matrix4ToQuat(this);
  }
  equals(other, tolerance = 0) {
    if (tolerance === 0) return plain.equalMatrix4(this, other);
    const $ = put(this.#elements, elementsOfMatrix4(other));
    return wasm().zan_equal4($, $ + 128, tolerance) !== 0;
  }
  transformPoint({ x, y, z = 0 }) {
    const [px, py, pz] = this.transformPoints([x, y, z]);
    return { x: px, y: py, z: pz };
  }
  transformPoints(points, into) {
    return plain.transform3DFloatPoints(this, points, into);
  }
}
