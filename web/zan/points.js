// Polygons and other arrays of points: [x, y, x, y, …] in a Float64Array or any array of numbers.
import { F64, U8, countOf, putF64, room, scratch, wasm } from '../wasm.js';

export function computeConvexHull(points) {
  const count = countOf(points, 2);
  const at = putF64(points);
  const size = wasm().zan_hull(at, count);
  return F64.slice(at >> 3, (at >> 3) + 2 * size);
}

export function isConvex(vertices) {
  return wasm().zan_is_convex(putF64(vertices), countOf(vertices, 2)) !== 0;
}

export function signedPolygonArea2D(vertices) {
  return wasm().zan_area(putF64(vertices), countOf(vertices, 2));
}

export function isFloatPointInConcavePoly({ x, y }, vertices, tolerance = 0) {
  return arePointsInConcavePoly([x, y], vertices, tolerance)[0] === 1;
}

export function arePointsInConcavePoly(points, vertices, tolerance = 0) {
  const count = countOf(points, 2);
  const vertexCount = countOf(vertices, 2);
  const at = room((points.length + vertices.length) * 8 + count);
  F64.set(points, at >> 3);
  F64.set(vertices, (at >> 3) + points.length);
  const results = at + (points.length + vertices.length) * 8;
  wasm().zan_points_in_polygon(count, at, vertexCount, at + points.length * 8, tolerance, results);
  return U8.slice(results, results + count);
}

export function polyPolyClip2D(clipPolygon, subject) {
  const [clipCount, subjectCount] = [countOf(clipPolygon, 2), countOf(subject, 2)];
  const at = room((clipCount + subjectCount) * 32);
  const store = (vertices, first) => {
    for (let i = 0; i < vertices.length; i += 2) {
      F64.set([vertices[i], vertices[i + 1], 0, 1], (at >> 3) + 4 * first + 2 * i);
    }
  };
  store(clipPolygon, 0);
  store(subject, clipCount);
  const count = wasm().zan_clip(at, clipCount, subjectCount);
  const clipped = wasm().zan_clipped() >> 3;
  return Float64Array.from({ length: 2 * count }, (_, i) => F64[clipped + 4 * (i >> 1) + (i & 1)]);
}

export function getPlaneEquation(points) {
  const count = countOf(points, 3);
  const $ = scratch();
  wasm().zan_plane(putF64(points), count, $, $ + 32);
  const [a, b, c, d, x, y, z] = F64.subarray($ >> 3, ($ >> 3) + 7);
  return { plane: { a, b, c, d }, centroid: { x, y, z } };
}

export const vecToAngle = ({ x, y }) => wasm().zan_angle(x, y);
