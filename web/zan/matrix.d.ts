// Transforms of the plane and of space as immutable values.
//
// Points are row vectors (point times matrix): in a product the left matrix is applied first, and the translation is in
// the last row. So the order of the numbers is that of DOMMatrix.toFloat64Array().
import type { Matrix4Decomp, Quat, Vector2, Vector3 } from './functions.js';

/** Numbers row by row, or what has them, such as a DOMMatrix. */
type Elements = ArrayLike<number> | { toFloat64Array(): Float64Array };
export type Matrix3Like = Matrix3 | Elements;
export type Matrix4Like = Matrix4 | Elements;

/** A homogeneous transform of the plane: nine numbers, row by row. */
export class Matrix3 {
  /** The identity unless nine numbers are given. */
  constructor(elements?: Matrix3Like);
  static readonly identity: Matrix3;
  static translation(tx: number, ty: number): Matrix3;
  static rotation(degrees: number, cx?: number, cy?: number): Matrix3;
  static scaling(sx: number, sy?: number, cx?: number, cy?: number): Matrix3;
  /** The restriction of a transform of space to the plane z = 0. */
  static from(matrix: Matrix4Like): Matrix3;

  at(row: number, column: number): number;
  toFloat64Array(): Float64Array;
  toDOMMatrix(): DOMMatrix;
  /** Keeps z. */
  toMatrix4(): Matrix4;

  /** This transform, then `next`. The methods below that are named for a transform also append it. */
  concat(next: Matrix3Like): Matrix3;
  translate(tx: number, ty: number): Matrix3;
  /** About the point (cx, cy), from the x axis toward the y axis. */
  rotate(degrees: number, cx?: number, cy?: number): Matrix3;
  scale(sx: number, sy?: number, cx?: number, cy?: number): Matrix3;
  skew(skewDegrees: number, axisDegrees: number): Matrix3;

  /** One of `MatrixType`. */
  readonly kind: number;
  readonly determinant: number;
  /** @throws ZanError for a singular matrix */
  inverse(): Matrix3;
  /** The inverse; null where there is none. */
  inverseQuiet(): Matrix3 | null;
  equals(other: Matrix3Like, tolerance?: number): boolean;

  /** Affine: column 2 is not read. */
  transformPoint(point: Vector2): Vector2;
  /** Transforms [x, y, x, y, …]; affine, column 2 is not read. */
  transformPoints(points: ArrayLike<number>, into?: Float64Array): Float64Array;
  /** Transforms [x, y, x, y, …] and divides by w. @throws ZanError where a w is near zero */
  transformPointsAndDivide(points: ArrayLike<number>, into?: Float64Array): Float64Array;
}

/** A homogeneous transform of space: sixteen numbers, row by row. */
export class Matrix4 {
  /** The identity unless sixteen numbers or a DOMMatrix are given. */
  constructor(elements?: Matrix4Like);
  static readonly identity: Matrix4;
  static from(matrix: Matrix3 | Matrix4Like): Matrix4;
  static translation(tx: number, ty: number, tz?: number): Matrix4;
  static scaling(sx: number, sy?: number, sz?: number): Matrix4;
  static rotation(ax: number, ay: number, az: number, radians: number): Matrix4;
  static rotationXYZ(rx: number, ry: number, rz: number): Matrix4;
  /** The rotation of a quaternion. */
  static fromQuat(q: Quat): Matrix4;
  /** The rotation that takes the z axis to the direction of view. */
  static lookAt(eye: Vector3, target: Vector3, up: Vector3): Matrix4;
  /** `perspective` of CSS: an eye at a distance in front of the point (x, y) of the plane z = 0. */
  static perspective(distance: number, x?: number, y?: number): Matrix4;

  at(row: number, column: number): number;
  toFloat64Array(): Float64Array;
  toDOMMatrix(): DOMMatrix;

  /** This transform, then `next`. The methods below that are named for a transform also append it. */
  concat(next: Matrix4Like): Matrix4;
  translate(tx: number, ty: number, tz?: number): Matrix4;
  scale(sx: number, sy?: number, sz?: number): Matrix4;
  /** About an axis through the origin; the angle is in radians. @throws ZanError for an axis of zero length */
  rotate(ax: number, ay: number, az: number, radians: number): Matrix4;
  /** About the x axis, the turned y axis and the z axis as turned by both; angles in radians. */
  rotateXYZ(rx: number, ry: number, rz: number): Matrix4;
  /** A perspective projection of eye space, where the eye looks along +z: x and y become x d/z and y d/z. */
  project(distance: number): Matrix4;

  readonly determinant: number;
  transpose(): Matrix4;
  /** @throws ZanError for a singular matrix */
  inverse(): Matrix4;
  /** The inverse; null where there is none. */
  inverseQuiet(): Matrix4 | null;
  /** The transform of normals: the transpose of the inverse. @throws ZanError for a singular matrix */
  normalMatrix(): Matrix4;
  /** Translation, scale, shear and the angles of rotateXYZ. @throws ZanError for a projective matrix */
  decompose(): Matrix4Decomp;
  /** As decompose, with the angles of rotations about z, the turned y axis and the x axis as turned by both. */
  decomposeZYX(): Matrix4Decomp;
  /** The quaternion of a rotation. */
  toQuat(): Quat;
  equals(other: Matrix4Like, tolerance?: number): boolean;

  /** Divides by w. */
  transformPoint(point: { x: number; y: number; z?: number }): Vector3;
  /** Transforms [x, y, z, x, y, z, …] and divides by w. */
  transformPoints(points: ArrayLike<number>, into?: Float64Array): Float64Array;
}
