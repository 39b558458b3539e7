// Draws a deck from above in eye space: x to the right, depth upward. The part of each layer that the near plane cuts
// away is dashed.
import { colourOf } from './overlay.js';

const MARGIN = 16;

/**
 * @param {HTMLCanvasElement} canvas
 * @param {import('./space.js').Projected[]} layers
 * @param {import('./space.js').View} view
 * @param {number[]} order  places of the layers under the pointer, -1 where one is not there
 */
export function paintPlan(canvas, layers, view, order) {
  const { clientWidth: width, clientHeight: height } = canvas;
  const ratio = devicePixelRatio || 1;
  canvas.width = width * ratio;
  canvas.height = height * ratio;
  const context = canvas.getContext('2d');
  context.scale(ratio, ratio);
  const style = getComputedStyle(canvas);
  const [ink, muted] = [style.color, style.getPropertyValue('--muted')];
  const { left, right, near, far } = extentOf(layers, view.distance);
  const scale = Math.min((width - 2 * MARGIN) / (right - left), (height - 2 * MARGIN) / (far - near));
  const at = ({ x, z }) => [width / 2 + (x - (left + right) / 2) * scale, height / 2 - (z - (near + far) / 2) * scale];
  const eye = { x: at({ x: 0, z: 0 })[0], y: at({ x: 0, z: 0 })[1] };

  const reach = 2 * Math.max(width, height);
  const half = view.size.width / 2 / view.zoom / view.distance;
  context.beginPath();
  context.moveTo(eye.x, eye.y);
  context.lineTo(eye.x - half * reach, eye.y - reach);
  context.lineTo(eye.x + half * reach, eye.y - reach);
  context.fillStyle = style.getPropertyValue('--line');
  context.globalAlpha = 0.45;
  context.fill();
  context.globalAlpha = 1;
  context.beginPath();
  context.moveTo(0, eye.y);
  context.lineTo(width, eye.y);
  context.setLineDash([2, 4]);
  context.strokeStyle = muted;
  context.lineWidth = 1;
  context.stroke();

  const sorted = layers
    .map((layer, i) => ({ layer, order: order[i] }))
    .sort((a, b) => ((a.order < 0 ? 99 : a.order) < (b.order < 0 ? 99 : b.order) ? 1 : -1));
  for (const { layer, order: place } of sorted) {
    const path = new Path2D();
    layer.inEye.forEach((corner, i) => (i === 0 ? path.moveTo(...at(corner)) : path.lineTo(...at(corner))));
    path.closePath();
    context.strokeStyle = place >= 0 ? colourOf(place) : ink;
    context.fillStyle = context.strokeStyle;
    context.lineWidth = place >= 0 ? 2.5 : 1.25;
    // The part in front of the near plane, then the part behind it.
    for (const [top, tall, dash, alpha] of [
      [0, eye.y, [], place >= 0 ? 1 : 0.6],
      [eye.y, height - eye.y, [3, 3], 0.55],
    ]) {
      context.save();
      context.beginPath();
      context.rect(0, top, width, tall);
      context.clip();
      context.setLineDash(dash);
      context.globalAlpha = alpha * 0.1;
      context.fill(path);
      context.globalAlpha = alpha;
      context.stroke(path);
      context.restore();
    }
  }
  context.setLineDash([]);
  context.beginPath();
  context.arc(eye.x, eye.y, 4, 0, 7);
  context.fillStyle = style.getPropertyValue('--accent');
  context.fill();
}

// The bounds of the plan: the eye and the layers, up to a few times the distance from the eye to the step.
function extentOf(layers, distance) {
  const corners = [{ x: 0, z: -0.3 * distance }, { x: 0, z: distance }, ...layers.flatMap(({ inEye }) => inEye)];
  const [xs, zs] = [corners.map(({ x }) => x), corners.map(({ z }) => z)];
  return {
    left: Math.max(Math.min(...xs), -4 * distance),
    right: Math.min(Math.max(...xs), 4 * distance),
    near: Math.max(Math.min(...zs), -2 * distance),
    far: Math.min(Math.max(...zs), 5 * distance),
  };
}
