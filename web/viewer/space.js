// The geometry of a deck, with the library: cameras, outlines, hits and flights. x points right, y down, z toward the
// viewer; in eye space z is the depth in front of the eye.
import {
  getPlaneEquation,
  isQuadEdgeOn,
  Layer,
  Matrix4,
  polyPolyClip2D,
  rayIntersectPlane,
  signedPolygonArea2D,
  slerp,
} from 'zan';
import { windowScale } from './deck.js';

const RADIANS_PER_DEGREE = 0.017453292519943295;
const NEAR_PLANE = 0.1;
const EDGE_ON_SINE = 0.001;
const SAME_DEPTH = 1e-9;
const MIN_MEAN_WIDTH = 1e-6; // an outline that is thinner has no share
const AXES = { x: [1, 0, 0], y: [0, 1, 0], z: [0, 0, 1] };

/** @typedef {{x: number, y: number}} Point */

/**
 * @typedef {object} Pose  of a step, or of a camera between two steps
 * @property {{x: number, y: number, z: number}} position
 * @property {import('zan').Quat} rotation
 * @property {number} scale
 */

/**
 * @typedef {object} View
 * @property {{width: number, height: number}} size  of the window
 * @property {Matrix4} spaceToStep
 * @property {Matrix4} spaceToEye
 * @property {Matrix4} eyeToScreen
 * @property {number} distance  of the eye from the step
 * @property {number} zoom  pixels per unit in the step's plane
 */

/**
 * @typedef {object} Placed
 * @property {import('./deck.js').Step} step
 * @property {number} index
 * @property {Matrix4} placement  the transform to space
 * @property {Pose} pose
 * @property {{x: number, y: number, width: number, height: number}} box
 * @property {{x: number, y: number, z: number}[]} corners
 * @property {number[]} flatCorners  the same as numbers
 */

/**
 * @typedef {object} Projection
 * @property {Layer} layer
 * @property {Point[]} points  the outline
 * @property {readonly boolean[]} behind  which corners are behind the near plane
 * @property {{x: number, y: number, z: number}[]} inEye  the corners
 * @property {import('zan').PlaneEq} plane  in eye space
 * @property {boolean} edgeOn
 * @property {number | null} share  of the outline that is in the window; null for one without area
 *
 * @typedef {Placed & Projection} Projected
 */

const rotateAbout = (m, axis, degrees) => m.rotate(...AXES[axis], degrees * RADIANS_PER_DEGREE);

/**
 * The transform from a step's own coordinates to space.
 * @param {import('./deck.js').Step} step
 */
function placementOf({ x, y, z, angles, order, scale }) {
  let m = Matrix4.scaling(scale);
  if (order === 'xyz') {
    m = m.rotateXYZ(...['x', 'y', 'z'].map((axis) => angles[axis] * RADIANS_PER_DEGREE));
  } else {
    for (const axis of [...order].reverse()) m = rotateAbout(m, axis, angles[axis]);
  }
  return m.translate(x, y, z);
}

/**
 * Takes a transform apart.
 * @param {Matrix4} placement
 * @returns {Pose}
 */
function poseOf(placement) {
  const { tx, ty, tz, sx, rx, ry, rz } = placement.decompose();
  return { position: { x: tx, y: ty, z: tz }, rotation: Matrix4.rotationXYZ(rx, ry, rz).toQuat(), scale: sx };
}

/**
 * Places the steps of a deck, whose sizes are known, in space.
 * @param {import('./deck.js').Step[]} steps
 * @returns {Placed[]}
 */
export const placed = (steps) =>
  steps.map((step, index) => {
    const placement = placementOf(step);
    const [right, bottom] = [step.width / 2, step.height / 2];
    const box = { x: -right, y: -bottom, width: step.width, height: step.height };
    const corners = [
      [-right, -bottom],
      [right, -bottom],
      [right, bottom],
      [-right, bottom],
    ].map(([x, y]) => ({ x, y, z: 0 }));
    return {
      step,
      index,
      placement,
      pose: poseOf(placement),
      box,
      corners,
      flatCorners: corners.flatMap(({ x, y, z }) => [x, y, z]),
    };
  });

/**
 * The view from a step, its rotations inverted one by one.
 * @param {import('./deck.js').Deck} deck
 * @param {import('./deck.js').Step} step
 * @param {{width: number, height: number}} size
 */
export function viewFromStep(deck, step, size) {
  let spaceToStep = Matrix4.translation(-step.x, -step.y, -step.z);
  for (const axis of step.order) spaceToStep = rotateAbout(spaceToStep, axis, -step.angles[axis]);
  return viewBy(deck, spaceToStep, step.scale, size);
}

/**
 * The view from a pose.
 * @param {import('./deck.js').Deck} deck
 * @param {Pose} pose
 * @param {{width: number, height: number}} size
 */
export function viewFrom(deck, { position: { x, y, z }, rotation, scale }, size) {
  const back = Matrix4.fromQuat({ x: -rotation.x, y: -rotation.y, z: -rotation.z, w: rotation.w });
  return viewBy(deck, Matrix4.translation(-x, -y, -z).concat(back), scale, size);
}

/** @returns {View} */
function viewBy(deck, spaceToStep, scale, size) {
  const zoom = windowScale(deck, size) / scale;
  const distance = deck.perspective / zoom;
  const spaceToEye = spaceToStep.scale(1, 1, -1).translate(0, 0, distance);
  const eyeToScreen = Matrix4.identity
    .project(distance)
    .scale(zoom, zoom, 1)
    .translate(size.width / 2, size.height / 2, 0);
  return { size, spaceToStep, spaceToEye, eyeToScreen, distance, zoom };
}

/**
 * A pose between two: positions along a line, rotations by slerp, scales in equal ratios.
 * @param {Pose} from
 * @param {Pose} to
 * @param {number} t
 * @returns {Pose}
 */
export function between(from, to, t) {
  const position = Object.fromEntries(
    ['x', 'y', 'z'].map((axis) => [axis, from.position[axis] + t * (to.position[axis] - from.position[axis])]),
  );
  return { position, rotation: slerp(from.rotation, to.rotation, t), scale: from.scale * (to.scale / from.scale) ** t };
}

/**
 * A pose moved along its own axes.
 * @param {Pose} pose
 * @returns {Pose}
 */
export function moved(pose, x, y, z) {
  const by = Matrix4.fromQuat(pose.rotation).transformPoint({ x, y, z });
  const { position } = pose;
  return { ...pose, position: { x: position.x + by.x, y: position.y + by.y, z: position.z + by.z } };
}

/**
 * A pose turned about its place: by an angle about its horizontal axis, then about the vertical axis of space.
 * @param {Pose} pose
 * @returns {Pose}
 */
export function turned(pose, yaw, pitch) {
  const rotation = Matrix4.rotation(...AXES.x, pitch)
    .concat(Matrix4.fromQuat(pose.rotation))
    .rotate(...AXES.y, yaw);
  return { ...pose, rotation: rotation.toQuat() };
}

/**
 * Projects layers to the window.
 * @param {Placed[]} layers
 * @param {View} view
 * @returns {Projected[]}
 */
export function project(layers, { size: { width, height }, spaceToEye, eyeToScreen }) {
  const windowCorners = [0, 0, width, 0, width, height, 0, height];
  return layers.map((placedLayer) => {
    const toEye = placedLayer.placement.concat(spaceToEye);
    const layer = new Layer(placedLayer.box, toEye, eyeToScreen);
    const outline = layer.points; // each reading is a copy
    const flat = toEye.transformPoints(placedLayer.flatCorners);
    const points = [];
    // A step without width or height places a camera only.
    const count = placedLayer.box.width > 0 && placedLayer.box.height > 0 ? outline.length : 0;
    for (let i = 0; i < count; i += 2) points.push({ x: outline[i], y: outline[i + 1] });
    return {
      ...placedLayer,
      layer,
      points,
      behind: layer.behind,
      plane: getPlaneEquation(flat).plane,
      inEye: [0, 3, 6, 9].map((i) => ({ x: flat[i], y: flat[i + 1], z: flat[i + 2] })),
      edgeOn: isQuadEdgeOn(toEye, placedLayer.corners, EDGE_ON_SINE, false),
      share: shareOf(outline, windowCorners),
    };
  });
}

function shareOf(points, windowCorners) {
  if (points.length === 0) return 0;
  const spread = (first) => {
    const values = points.filter((_, i) => i % 2 === first);
    return Math.max(...values) - Math.min(...values);
  };
  const area = Math.abs(signedPolygonArea2D(points));
  if (!(area / Math.max(spread(0), spread(1)) >= MIN_MEAN_WIDTH)) return null;
  const part = polyPolyClip2D(windowCorners, points);
  return part.length === 0 ? 0 : Math.min(Math.abs(signedPolygonArea2D(part)) / area, 1);
}

/**
 * The layers at a point of the window, front to back, and the nearest outline.
 * @param {Projected[]} layers
 * @param {View} view
 * @param {Point} point
 * @param {number} tolerance
 */
export function hitTest(layers, view, { x, y }, tolerance) {
  const unit = view.zoom * view.distance;
  const direction = { x: (x - view.size.width / 2) / unit, y: (y - view.size.height / 2) / unit, z: 1 };
  const ray = { origin: { x: 0, y: 0, z: 0, w: 1 }, direction };
  const hits = [];
  let nearest = null;
  for (const layer of layers.filter(({ points }) => points.length > 0)) {
    if (layer.layer.hits(x, y, tolerance)) hits.push({ layer, depth: depthAt(layer, ray) });
    const distance = layer.layer.distance(x, y);
    if (distance >= 0 && (!nearest || distance < nearest.distance)) nearest = { layer, distance };
  }
  return { hits: frontToBack(hits), nearest };
}

// A ray through a point that hits by its tolerance, or at an edge-on layer, can meet the plane outside the layer or not
// at all.
function depthAt({ plane, inEye }, ray) {
  const depths = inEye.map(({ z }) => Math.max(z, NEAR_PLANE));
  const [nearest, farthest] = [Math.min(...depths), Math.max(...depths)];
  const { hit, hitFound } = rayIntersectPlane(plane, false, ray);
  return hitFound ? Math.min(Math.max(hit.z, nearest), farthest) : nearest;
}

// By depth; layers in one plane as the browser paints them, the last of the deck in front.
function frontToBack(hits) {
  const sorted = hits.sort((a, b) => a.depth - b.depth);
  const planes = [];
  for (const hit of sorted) {
    const plane = planes.at(-1);
    if (plane && hit.depth - plane.at(-1).depth <= SAME_DEPTH * hit.depth) plane.push(hit);
    else planes.push([hit]);
  }
  return planes.flatMap((plane) => plane.sort((a, b) => b.layer.index - a.layer.index));
}
