// Paints outlines over a stage: faint ones, those under the pointer in the colours of their order, and the
// distance to the nearest one.

const COLOURS = ['#de450f', '#b87200', '#0e8659', '#1272c6', '#7548dc', '#c5308f'];
/** The colour of the layer that is hit in a place of the order, 0 for the front. */
export const colourOf = (order) => COLOURS[order % COLOURS.length];

/**
 * @typedef {object} Shape
 * @property {{x: number, y: number}[]} points
 * @property {string} name
 * @property {number} order  place among the layers under the pointer, from 0; -1 when it is not there
 * @property {boolean} [kept]  whether it is marked although it may not be under the pointer
 */

/**
 * @param {CanvasRenderingContext2D} context
 * @param {{width: number, height: number}} size
 * @param {object} picture
 * @param {Shape[]} picture.shapes
 * @param {{x: number, y: number} | null} picture.pointer
 * @param {number} picture.tolerance
 * @param {{points: {x: number, y: number}[], distance: number} | null} [picture.nearest]
 */
export function paint(context, size, { shapes, pointer, tolerance, nearest = null }) {
  context.lineJoin = 'round';
  const visible = shapes
    .map((shape) => ({ ...shape, path: inWindow(shape.points, size) }))
    .filter(({ path }) => path.length > 2);
  for (const { path } of visible.filter(({ order, kept }) => order < 0 && !kept)) {
    trace(context, path);
    line(context, 'rgb(255 255 255 / .5)', 2.5);
    line(context, 'rgb(38 50 80 / .55)', 1);
  }
  const hit = visible.filter(({ order, kept }) => order >= 0 || kept).sort((a, b) => b.order - a.order);
  for (const { path, points, order, kept } of hit) {
    const colour = order >= 0 ? colourOf(order) : '#3f4654';
    trace(context, path);
    context.fillStyle = colour;
    context.globalAlpha = order === 0 ? 0.1 : 0.03;
    context.fill();
    context.globalAlpha = 1;
    line(context, 'rgb(255 255 255 / .85)', order === 0 || kept ? 5 : 4);
    line(context, colour, order === 0 || kept ? 2.5 : 1.75);
    for (const { x, y } of points) {
      if (x < -9 || y < -9 || x > size.width + 9 || y > size.height + 9) continue;
      context.beginPath();
      context.arc(x, y, order === 0 ? 4 : 3, 0, 7);
      context.fillStyle = '#fff';
      context.fill();
      line(context, colour, 2);
    }
  }
  if (pointer && nearest) paintDistance(context, size, pointer, nearest);
  const tags = [];
  for (const shape of [...hit].reverse()) if (tags.length < 8) paintTag(context, size, shape, tags);
  if (pointer) paintPointer(context, pointer, tolerance);
}

function line(context, colour, width) {
  context.strokeStyle = colour;
  context.lineWidth = width;
  context.stroke();
}

function trace(context, path) {
  context.beginPath();
  path.forEach(({ x, y }, i) => (i === 0 ? context.moveTo(x, y) : context.lineTo(x, y)));
  context.closePath();
}

// An outline reaches far beyond the window where it is cut near the eye, further than a canvas draws exactly. This
// keeps what is in the window and some pixels around it, so that no line of the border shows.
function inWindow(points, { width, height }) {
  const around = 40;
  const sides = [
    ['x', (p) => p.x + around],
    ['x', (p) => width + around - p.x],
    ['y', (p) => p.y + around],
    ['y', (p) => height + around - p.y],
  ];
  let path = points;
  for (const [, inside] of sides) {
    path = path.flatMap((p, i) => {
      const q = path[(i + 1) % path.length];
      const [a, b] = [inside(p), inside(q)];
      const kept = a >= 0 ? [p] : [];
      if (a >= 0 === b >= 0) return kept;
      const t = a / (a - b);
      return [...kept, { x: p.x + t * (q.x - p.x), y: p.y + t * (q.y - p.y) }];
    });
  }
  return path;
}

function paintTag(context, size, { path, name, order }, tags) {
  context.font = '600 12px Inter, system-ui, "Segoe UI", Roboto, "Helvetica Neue", Arial, sans-serif';
  const text = name.length > 28 ? `${name.slice(0, 27)}…` : name;
  const [width, height] = [context.measureText(text).width + (order >= 0 ? 33 : 16), 22];
  const corner = path.reduce((best, p) => (p.x + p.y < best.x + best.y ? p : best));
  let x = Math.min(Math.max(corner.x + 8, 10), size.width - width - 10);
  let y = Math.min(Math.max(corner.y + 8, 10), size.height - height - 10);
  const covers = (tag) =>
    x < tag.x + tag.width + 4 && tag.x < x + width + 4 && y < tag.y + height + 4 && tag.y < y + height + 4;
  for (let tries = 0; tries < 12 && tags.some(covers); ++tries) y = tags.find(covers).y + height + 5;
  tags.push({ x, y, width });
  context.beginPath();
  context.roundRect(x, y, width, height, 6);
  context.fillStyle = order >= 0 ? colourOf(order) : '#3f4654';
  context.shadowColor = 'rgb(0 0 0 / .3)';
  context.shadowBlur = 6;
  context.fill();
  context.shadowBlur = 0;
  context.textBaseline = 'middle';
  context.fillStyle = 'rgb(255 255 255 / .75)';
  if (order >= 0) context.fillText(order + 1, x + 8, y + height / 2 + 1);
  context.fillStyle = '#fff';
  context.fillText(text, x + (order >= 0 ? 24 : 8), y + height / 2 + 1);
}

function paintDistance(context, size, pointer, { points, distance }) {
  let foot = null;
  points.forEach((p, i) => {
    const q = points[(i + 1) % points.length];
    const [dx, dy] = [q.x - p.x, q.y - p.y];
    const squaredLength = dx * dx + dy * dy;
    const along = (pointer.x - p.x) * dx + (pointer.y - p.y) * dy;
    const t = squaredLength > 0 ? Math.min(Math.max(along / squaredLength, 0), 1) : 0;
    const at = { x: p.x + t * dx, y: p.y + t * dy };
    at.distance = Math.hypot(at.x - pointer.x, at.y - pointer.y);
    if (!foot || at.distance < foot.distance) foot = at;
  });
  if (!foot || distance < 1) return;
  context.beginPath();
  context.moveTo(pointer.x, pointer.y);
  context.lineTo(foot.x, foot.y);
  line(context, 'rgb(255 255 255 / .9)', 3.5);
  context.setLineDash([4, 3]);
  line(context, '#17181c', 1.5);
  context.setLineDash([]);
  context.beginPath();
  context.arc(foot.x, foot.y, 3, 0, 7);
  context.fillStyle = '#17181c';
  context.fill();
  const text = `${distance.toFixed(1)} px`;
  context.font = '600 11px Inter, system-ui, "Segoe UI", Roboto, "Helvetica Neue", Arial, sans-serif';
  const x = Math.min((pointer.x + foot.x) / 2 + 8, size.width - 60);
  const y = (pointer.y + foot.y) / 2 - 8;
  context.textBaseline = 'middle';
  context.lineWidth = 3;
  context.strokeStyle = '#fff';
  context.strokeText(text, x, y);
  context.fillStyle = '#17181c';
  context.fillText(text, x, y);
}

function paintPointer(context, { x, y }, tolerance) {
  context.beginPath();
  if (tolerance > 0) context.arc(x, y, tolerance, 0, 7);
  context.fillStyle = 'rgb(23 24 28 / .08)';
  context.fill();
  line(context, 'rgb(255 255 255 / .9)', 3);
  line(context, '#17181c', 1.2);
  context.beginPath();
  context.arc(x, y, 2, 0, 7);
  context.fillStyle = '#17181c';
  context.fill();
}
