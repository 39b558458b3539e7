// The classes and the functions of zan.js that are written by hand: values that are known by other means.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { room } from '../../build/web/package/wasm.js';
import * as zan from '../../build/web/package/zan.js';

const { Layer, Matrix3, Matrix4 } = zan;
await zan.load();

const SQUARE = [0, 0, 4, 0, 4, 4, 0, 4];
const EIGHTH = Math.PI / 4;
const project = (m, x, y, z) => [m.transformPoint({ x, y, z })].map((p) => [p.x, p.y])[0];
const affine = new Matrix3([1, 2, 0, 3, 5, 0, 7, 11, 1]);
const space = new Matrix4([1, 2, 3, 0, 0, 1, 4, 0, 5, 6, 0, 0, 7, 8, 9, 1]);
const [behind, across] = [EIGHTH, -EIGHTH].map((angle) =>
  new Layer({ width: 100, height: 50 }, Matrix4.rotation(0, 1, 0, angle), Matrix4.identity.project(1)));
const flat = new Layer({ x: 1, y: 2, width: 10, height: 20 }, Matrix3.scaling(2));

// What is special, the value, and what it must be: numbers to twelve digits.
const rows = [
  ['the hull leaves out what is inside and on an edge', () => zan.computeConvexHull([...SQUARE, 2, 2, 2, 0]), [0, 0, 4, 0, 4, 4, 0, 4]],
  ['a square is convex', () => zan.isConvex(SQUARE), true],
  ['an arrow is not', () => zan.isConvex([0, 0, 4, 4, 0, 1, -4, 4]), false],
  ['the area is positive when the vertices run clockwise on a screen', () => zan.signedPolygonArea2D(SQUARE), 16],
  ['a point within the tolerance of a polygon', () => [0, 2].map((t) => zan.isFloatPointInConcavePoly({ x: 5, y: 1 }, SQUARE, t)), [false, true]],
  ['many points in a polygon', () => zan.arePointsInConcavePoly([1, 1, 5, 5, 3, 2], SQUARE), [1, 0, 1]],
  ['a square clipped by a larger one with another corner', () => zan.signedPolygonArea2D(zan.polyPolyClip2D([2, 1, 9, 1, 9, 9, 2, 9], SQUARE)), 6],
  ['a plane at z = 3, and its middle', () => Object.values(zan.getPlaneEquation([0, 0, 3, 6, 0, 3, 0, 3, 3])).map((o) => Object.values(o)), [[0, 0, 1, -3], [2, 1, 3]]],
  ['compass angles on a screen', () => [[1, 0], [0, 1], [-1, 0]].map(([x, y]) => zan.vecToAngle({ x, y })), [90, 180, 270]],

  ['steps of the plane are appended', () => Object.values(Matrix3.translation(1, 2).scale(3).rotate(90).translate(5, 0).transformPoint({ x: 1, y: 1 })), [-4, 6]],
  ['a rotation and a scale about a point keep it', () => Matrix3.rotation(30, 2, 3).scale(4, 5, 2, 3).transformPoints([2, 3]), [2, 3]],
  ['a skew by 45 degrees', () => Matrix3.identity.skew(45, 0).transformPoints([1, 2]), [-1, 2]],
  ['a product, left factor first', () => Matrix3.scaling(2).concat(affine).transformPoints([1, 1]), [2 + 6 + 7, 4 + 10 + 11]],
  ['determinant and inverse', () => [affine.determinant, ...affine.inverse().concat(affine).toFloat64Array()], [-1, 1, 0, 0, 0, 1, 0, 0, 0, 1]],
  ['no inverse', () => [Matrix3.scaling(0).inverseQuiet(), Matrix4.scaling(0).inverseQuiet()], [null, null]],
  ['the inverse without a failure', () => [Matrix3.scaling(4).inverseQuiet().at(1, 1), Matrix4.scaling(4).inverseQuiet().at(2, 2)], [0.25, 0.25]],
  ['equal within a tolerance', () => [0, 2].map((t) => affine.equals(Matrix3.from(affine).translate(1, 1), t)), [false, true]],
  ['the kind', () => [Matrix3.identity, Matrix3.translation(1, 1), affine].map((m) => m.kind), [0, 1, 4]],
  ['the plane z = 0 of a transform of space', () => Matrix3.from(space).toFloat64Array(), [1, 2, 0, 0, 1, 0, 7, 8, 1]],
  ['a transform of the plane keeps z', () => Object.values(affine.toMatrix4().transformPoint({ x: 1, y: 1, z: 6 })), [11, 18, 6]],
  ['homogeneous points of the plane are divided', () => new Matrix3([1, 0, 1, 0, 1, 0, 0, 0, 1]).transformPointsAndDivide([1, 6]), [0.5, 3]],

  ['steps of space are appended', () => project(Matrix4.translation(1, 2, 3).scale(2, 3, 4).rotate(0, 0, 1, 2 * EIGHTH).translate(10, 0, 0), 0, 0, 0), [4, 2]],
  ['a rotation about an axis, from x to y', () => Matrix4.rotation(0, 0, 1, 2 * EIGHTH).transformPoints([1, 0, 5]), [0, 1, 5]],
  ['rotations about three axes', () => Matrix4.rotationXYZ(1, 2, 3).equals(Matrix4.rotation(0, 0, 1, 3).rotate(0, 1, 0, 2).rotate(1, 0, 0, 1), 1e-12), true],
  ['the same, appended', () => Matrix4.translation(1, 2, 3).rotateXYZ(1, 2, 3).equals(Matrix4.translation(1, 2, 3).concat(Matrix4.rotationXYZ(1, 2, 3)), 1e-12), true],
  ['rotations about x, then y, then z', () => Object.values(Matrix4.rotation(1, 0, 0, 0.1).rotate(0, 1, 0, 0.2).rotate(0, 0, 1, 0.3).decomposeZYX()).slice(-3), [0.1, 0.2, 0.3]],
  ['a pose taken apart', () => Object.values(Matrix4.scaling(2, 3, 4).rotateXYZ(0.1, 0.2, 0.3).translate(5, 6, 7).decompose()), [5, 6, 7, 2, 3, 4, 0, 0, 0, 0.1, 0.2, 0.3]],
  ['a quaternion there and back', () => Matrix4.fromQuat(Matrix4.rotationXYZ(1, 2, 3).toQuat()).equals(Matrix4.rotationXYZ(1, 2, 3), 1e-12), true],
  ['determinant, inverse, transpose', () => [space.determinant, space.inverse().concat(space).equals(Matrix4.identity, 1e-9), space.transpose().at(0, 3)], [1, true, 7]],
  ['the normal matrix is the transpose of the inverse', () => space.normalMatrix().equals(space.inverse().transpose(), 1e-12), true],
  ['a direction of view', () => Matrix4.lookAt({ x: 1, y: 1, z: 1 }, { x: 1, y: 1, z: 5 }, { x: 0, y: 1, z: 0 }).equals(Matrix4.identity, 1e-12), true],
  ['the perspective of CSS about a point', () => project(Matrix4.perspective(100, 10, 20), 30, 40, 50), [50, 60]],
  ['a projection of eye space', () => project(Matrix4.identity.project(2), 3, 4, 8), [0.75, 1]],
  ['numbers of a DOMMatrix', () => Matrix4.from({ toFloat64Array: () => space.toFloat64Array() }).equals(space), true],

  ['a layer of the plane', () => flat.points, [2, 4, 22, 4, 22, 44, 2, 44]],
  ['distances from its edges, inside and outside', () => flat.distances([10, 6, 25, 20]), [2, 3]],
  ['hits of it', () => flat.hitsAll([10, 6, 25, 20]), [1, 0]],
  ['a degenerate layer', () => [new Layer({ width: 1, height: 1 }, Matrix3.scaling(0)), new Layer({ width: 1, height: 1 }, Matrix4.scaling(0))].map((l) => [l.isVisible, l.hits(0, 0, 9), l.distance(0, 0)]), [[false, false, -1], [false, false, -1]]],
  ['a layer behind the eye', () => [behind.behind, behind.points.length, behind.isVisible], [[true, true, true, true], 0, false]],
  ['a layer partly behind the eye', () => [across.behind, across.points.length], [[true, false, false, true], 8]],
  ['a layer with a browser\'s matrix', () => new Layer({ width: 10, height: 20 }, Matrix4.translation(0, 0, 50).concat(Matrix4.perspective(100))).points, [0, 0, 20, 0, 20, 40, 0, 40]],
  ['the distance from a layer with a browser\'s matrix', () => new Layer({ width: 10, height: 20 }, Matrix4.translation(0, 0, 50).concat(Matrix4.perspective(100))).distance(25, 20), 5],
];

const rounded = (value) => {
  if (typeof value === 'number') return Number(value.toFixed(12)) + 0;
  return typeof value === 'object' && value !== null ? Array.from(value, rounded) : value;
};
for (const [what, value, expected] of rows) test(what, () => assert.deepEqual(rounded(value()), expected));

test('every function and member is tested: here, in bindings.test.js or in package.test.js', () => {
  const read = (file) => readFileSync(new URL(file, import.meta.url), 'utf8');
  const [calls, source] = [read('../../build/web/generated/calls.json'), read(import.meta.url)];
  const members = [Matrix3, Matrix4, Layer].flatMap((c) => [...Object.getOwnPropertyNames(c.prototype), ...Object.getOwnPropertyNames(c)]);
  // In package.test.js, what every class has, and enumerations.
  const elsewhere = ['constructor', 'length', 'name', 'prototype', 'toDOMMatrix', 'ZanError', 'Err', 'Result', 'RatioStatus', 'RectRelation', 'MatrixType'];
  const untested = [...Object.keys(zan), ...members].filter((name) => !elsewhere.includes(name) && !calls.includes(`"${name}"`) && !new RegExp(`[.{ ]${name}\\b`).test(source));
  assert.deepEqual(untested, []);
});

test('what is no whole number of points', () => assert.throws(() => zan.computeConvexHull([1, 2, 3]), RangeError));
test('after a lack of memory the next call is right', () => {
  assert.throws(() => zan.isConvex({ length: 3e8 }), RangeError);
  assert.notEqual(room(64), 0);
  assert.equal(zan.isConvex(SQUARE), true);
});
test('writing into the outline that a layer returned does not change the layer', () => {
  flat.points.fill(0);
  assert.equal(flat.hits(10, 6), true);
});
test('a matrix of the wrong size', () => assert.throws(() => new Matrix4([1, 2]), RangeError));
test('an axis without length: a result code with a report', () => assert.throws(() => Matrix4.rotation(0, 0, 0, 1), { name: 'ZanError', code: zan.Result.BadAxis, severity: 8 }));
test('a result code without a report', () => assert.throws(() => zan.lRect2Rect({ left: 0, top: 0, right: 1e6, bottom: 1 }), { number: 0, severity: 0, code: zan.Result.OutOfRange }));
test('a failure is thrown once', () => assert.equal(zan.fixMul(65536, 65536), 65536));
