// The place and the size that layout gives a box, from offsets and computed styles.
import { flatParent } from './boxes.js';
import { givesOverflowToViewport } from './style.js';

const px = (text) => parseFloat(text) || 0;

/**
 * Width and height of a border box, fractions included.
 * @param {import('./boxes.js').Box} box  without size
 * @param {DOMRect} seen
 * @returns {{width: number, height: number, isKnown: boolean}} isKnown is false where only whole pixels are known
 */
export function layoutSize(box, seen) {
  const { element, style, zoom, isInline } = box;
  // Only half of each collapsed border belongs to the cell.
  const isShared = style.display === 'table-cell' && style.borderCollapse === 'collapse';
  const edges = {};
  const width = isInline || isShared ? null : alongAxis(box, edges, 'width', [1, 3], element.offsetWidth, () => element.clientWidth);
  const height =
    width === null ? null : alongAxis(box, edges, 'height', [0, 2], element.offsetHeight, () => element.clientHeight);
  if (height === null) {
    const whole = { width: element.offsetWidth ?? seen.width, height: element.offsetHeight ?? seen.height };
    return { width: whole.width * zoom, height: whole.height * zoom, isKnown: false };
  }
  return { width: width * zoom, height: height * zoom, isKnown: true };
}

// Layout rounds lengths down to 64ths of a pixel; computed paddings are not rounded yet.
const used = (length, zoom) => Math.floor(length * zoom * 64 + 1e-3) / 64 / zoom;

// The four lengths of a shorthand: top, right, bottom, left.
function sides(text) {
  const [top, right = top, bottom = top, left = right] = text.split(' ').map(px);
  return [top, right, bottom, left];
}

function alongAxis({ style, zoom }, edges, property, ends, offsetSize, clientSize) {
  const computed = parseFloat(style[property]);
  if (Number.isNaN(computed)) return null;
  const isSize = (size) => offsetSize === undefined || Math.abs(size - offsetSize) < 1;
  if (style.boxSizing === 'border-box' && isSize(computed)) return computed;
  edges.padding ??= sides(style.padding);
  edges.border ??= sides(style.borderWidth);
  let size = computed;
  let borders = 0;
  for (const end of ends) {
    const border = edges.border[end];
    size += used(edges.padding[end], zoom) + border;
    borders += Math.round(border);
  }
  if (isSize(size)) return size;
  const bar = offsetSize - clientSize() - borders;
  if (bar >= 1 && isSize(size + bar)) return size + bar;
  return isSize(computed) ? computed : null;  // a table's computed size includes its borders
}

/**
 * The place of a box in its parent's plane, within a pixel; isKnown is false where offsets do not determine it.
 * @param {import('./boxes.js').Plane | null} plane
 * @param {import('./boxes.js').Box} box  without place
 * @param {import('../dom.js').Look} look
 * @returns {{x: number, y: number, isKnown: boolean}}
 */
export function offsetIn(plane, box, look) {
  const { element, style, parent, zoom } = box;
  const { body, documentElement } = element.ownerDocument;
  const unknown = { ...cornerIn(plane, parent), isKnown: false };
  if (typeof element.offsetLeft !== 'number' || element === documentElement || element === body) return unknown;
  const { position } = style;
  const offsetParent = element.offsetParent;
  let x = element.offsetLeft * zoom;
  let y = element.offsetTop * zoom;
  if (!offsetParent) return position === 'fixed' && !plane ? { x, y, isKnown: true } : unknown;

  const offsetParentBox = look.boxOf(offsetParent);
  if (!offsetParentBox || (position === 'fixed' && offsetParentBox.zoom !== zoom)) return unknown;
  const base = offsetParent === body
    ? originInBody(offsetParentBox, plane, position, look)
    : paddingOrigin(offsetParentBox, plane);
  if (!base) return unknown;
  x += base.x;
  y += base.y;
  if (offsetParent !== body && (position === 'absolute' || position === 'fixed')) {
    // The used values of left and top have the fractions that offsets lack.
    const usedX = base.x + (px(style.left) + px(style.marginLeft)) * zoom;
    const usedY = base.y + (px(style.top) + px(style.marginTop)) * zoom;
    if (Math.abs(usedX - x) < 1 && style.left !== 'auto') x = usedX;
    if (Math.abs(usedY - y) < 1 && style.top !== 'auto') y = usedY;
  }
  const outOfFlow = position === 'absolute' || position === 'fixed';
  for (let scroller = outOfFlow ? offsetParent : flatParent(element); scroller; scroller = flatParent(scroller)) {
    if (!givesOverflowToViewport(scroller, look)) {
      const scroll = look.scrollOf(scroller);
      x -= scroll.x;
      y -= scroll.y;
    }
    if (scroller === offsetParent) break;
  }
  return { x, y, isKnown: true };
}

/**
 * A box's top left corner in a plane.
 * @param {import('./boxes.js').Plane | null} plane
 * @param {import('./boxes.js').Box | null} box
 */
export function cornerIn(plane, box) {
  if (!box || box.plane !== plane || plane?.element === box.element) return { x: 0, y: 0 };
  return { x: box.x, y: box.y };
}

/** The corner of the offset parent's padding box, from which offsets count. */
function paddingOrigin(box, plane) {
  if (box.plane !== plane) return null;
  const { element, style, zoom } = box;
  const { x, y } = cornerIn(plane, box);
  const left = px(style.borderLeftWidth);
  const bar = box.isInline ? 0 : element.clientLeft - left;  // a scroll bar may be on the left
  return { x: x + (left + (bar > 2 ? Math.round(bar) : 0)) * zoom, y: y + px(style.borderTopWidth) * zoom };
}

/**
 * Offsets whose offset parent is the body count from the body's border box; for boxes in flow in a static body, from
 * the root's; for absolute boxes that neither body nor root contains, from the top left corner of the page.
 */
function originInBody(bodyBox, plane, position, look) {
  const { element: body, style } = bodyBox;
  const isContainer = style.position !== 'static' || bodyBox.plane?.element === body;
  if (style.position !== 'static' || (isContainer && position === 'absolute')) return cornerIn(plane, bodyBox);
  const root = look.boxOf(body.ownerDocument.documentElement);
  const rootIsContainer = root.style.position !== 'static' || root.plane?.element === root.element;
  if (position === 'absolute' && !rootIsContainer) {
    const view = body.ownerDocument.defaultView;
    return plane ? null : { x: -view.scrollX, y: -view.scrollY };
  }
  const { x, y } = cornerIn(root.plane, root);
  if (bodyBox.plane?.element === body) return { x: x - bodyBox.place[0], y: y - bodyBox.place[1] };
  return root.plane === plane ? { x, y } : null;
}
