// Measures zan.js beside JavaScript libraries from npm, on the same data; first compares the results.
// node web/bench/package.js [--smoke]: --smoke only compares.
import assert from 'node:assert/strict';
import { createRequire } from 'node:module';
import * as zan from '../../build/web/package/zan.js';

const require = createRequire(new URL('../tests/package.json', import.meta.url));
const { mat4, vec3 } = require('gl-matrix');
const polygonClipping = require('polygon-clipping');
const pointInPolygon = require('point-in-polygon-hao');
const convexHull = require('monotone-convex-hull-2d');

await zan.load();

let state = 1;
const random = () => (state = (Math.imul(state, 1664525) + 1013904223) >>> 0) / 2 ** 32;
const points = (count, components) => Float64Array.from({ length: count * components }, () => 1000 * random());
const pairs = (flat) => Array.from({ length: flat.length / 2 }, (_, i) => [flat[2 * i], flat[2 * i + 1]]);
const ring = (count, radius) =>
  Float64Array.from({ length: 2 * count }, (_, i) => 500 + radius(i >> 1) * Math[i % 2 ? 'sin' : 'cos']((Math.PI * (i - (i % 2))) / count));

const matrix = zan.Matrix4.rotation(1, 2, 3, 0.5).translate(5, 6, 2000).project(800);
const other = zan.Matrix4.rotation(3, 2, 1, 0.25);
const [numbers, otherNumbers] = [matrix, other].map((m) => m.toFloat64Array());
const layer = new zan.Layer({ width: 800, height: 600 }, zan.Matrix4.rotation(0, 1, 0, 0.5).concat(zan.Matrix4.perspective(900)));
const star = ring(50, (i) => 300 + 200 * (i % 2));
const [disc, shifted] = [ring(30, () => 400), ring(30, () => 400).map((value, i) => value + 100 * (i % 2 ? 0 : 1))];
const closed = (flat) => [[...pairs(flat), pairs(flat)[0]]];

const rowOfPoints = (count) => {
  const given = points(count, 3);
  const [ours, theirs] = [new Float64Array(3 * count), new Float64Array(3 * count)];
  return {
    what: `${count} points through a projective 4x4 matrix`,
    peer: 'gl-matrix',
    ours: () => matrix.transformPoints(given, ours),
    theirs: () => {  // not by vec3.forEach, which rounds to single precision
      const point = new Float64Array(3);
      for (let i = 0; i < given.length; i += 3) {
        for (let k = 0; k < 3; ++k) point[k] = given[i + k];
        vec3.transformMat4(point, point, numbers);
        for (let k = 0; k < 3; ++k) theirs[i + k] = point[k];
      }
      return theirs;
    },
  };
};

const rowOfHits = (what, outline, count) => {
  const given = points(count, 2);
  const [list, rings] = [pairs(given), closed(outline)];
  return {
    what,
    peer: 'point-in-polygon-hao',
    ours: () => zan.arePointsInConcavePoly(given, outline),
    theirs: () => list.map((point) => Number(pointInPolygon(point, rings) !== false)),
  };
};

const rowOfHull = (count) => {
  const given = points(count, 2);
  const list = pairs(given);
  return {
    what: `the hull of ${count} points`,
    peer: 'monotone-convex-hull-2d',
    ours: () => zan.computeConvexHull(given),
    theirs: () => convexHull(list),
    // The library's hull has its vertices on a grid of 2^29 steps across the points.
    compared: (hull) => (Array.isArray(hull) ? hull.map((i) => list[i]) : pairs(hull)).map(([x, y]) => `${x.toFixed(2)} ${y.toFixed(2)}`).sort(),
  };
};

const rows = [
  rowOfPoints(100000),
  rowOfPoints(100),
  { what: 'one product of two 4x4 matrices', peer: 'gl-matrix', ours: () => matrix.concat(other).toFloat64Array(), theirs: () => mat4.multiply(new Float64Array(16), otherNumbers, numbers) },
  rowOfHits('10000 points in a star of 50 corners', star, 10000),
  rowOfHits('one point in a layer\'s outline', layer.points, 1),
  rowOfHull(10000),
  rowOfHull(20),
  {
    what: 'clipping a polygon of 30 corners by another',
    peer: 'polygon-clipping',
    ours: () => zan.polyPolyClip2D(disc, shifted),
    theirs: () => polygonClipping.intersection(closed(shifted), closed(disc)),
    compared: (result) => [Math.round(Math.abs(zan.signedPolygonArea2D(Array.isArray(result) ? result[0][0].flat() : result)))],
  },
];

function microseconds(run) {
  const runs = Math.max(1, Math.round(2 / oneRun(run, 1)));
  return 1000 * Math.min(...Array.from({ length: 30 }, () => oneRun(run, runs)));
}

function oneRun(run, times) {
  const start = performance.now();
  for (let i = 0; i < times; ++i) run();
  return (performance.now() - start) / times;
}

for (const { what, ours, theirs, compared = (values) => Array.from(values, (value) => Number(value.toPrecision(9))) } of rows) {
  assert.deepEqual(compared(ours()), compared(theirs()), what);
}
if (process.argv[2] !== '--smoke') {
  console.log('| | zan.js, microseconds | the other, microseconds | the other |\n|---|---|---|---|');
  for (const { what, peer, ours, theirs } of rows) {
    const [own, peers] = [ours, theirs].map((run) => Number(microseconds(run).toPrecision(2)));
    console.log(`| ${what} | ${own} | ${peers} | ${peer} |`);
  }
}
