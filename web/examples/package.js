//! [layer]
import { Layer, Matrix4, ZanError, computeConvexHull, load, slerp } from 'zan';

await load();
const turned = Matrix4.rotation(0, 1, 0, 0.5).concat(Matrix4.perspective(800, 400, 300));
const layer = new Layer({ x: 100, y: 100, width: 300, height: 200 }, turned);
console.log(layer.points.length / 2, layer.hits(200, 200), layer.distance(200, 200) > 50);
//! [layer]

//! [points]
const cloud = Float64Array.from({ length: 30000 }, Math.random);  // [x, y, z, x, y, z, …]
const moved = turned.transformPoints(cloud);
turned.transformPoints(cloud, cloud);  // in place
const hull = computeConvexHull([0, 0, 4, 0, 4, 4, 0, 4, 2, 2]);  // [x, y, x, y, …]
//! [points]
console.log(moved.every((value, i) => value === cloud[i]), hull.length);

//! [pose]
const pose = (m) => ({ ...m.decompose(), rotation: m.toQuat() });
const [from, to] = [Matrix4.translation(1, 2, 3), Matrix4.rotationXYZ(0.1, 0.2, 0.3)].map(pose);
const mean = (part) => (from[part] + to[part]) / 2;
const halfway = Matrix4.fromQuat(slerp(from.rotation, to.rotation, 0.5)).translate(mean('tx'), mean('ty'), mean('tz'));
//! [pose]
console.log(halfway.at(3, 0));

//! [failure]
try {
  Matrix4.scaling(1, 1, 0).inverse();
} catch (error) {
  if (!(error instanceof ZanError)) throw error;
  console.log(error.number.toString(16), error.severity, error.message);
}
//! [failure]
