// Where layout puts a box and how large it is, from offsets and computed styles.
import { flatParent } from './boxes.js';
import { givesOverflowToViewport, isInlineBox } from './style.js';

const px = (text) => parseFloat(text) || 0;

/**
 * Width and height of a border box, fractions included.
 * @param {import('./boxes.js').Box} box  without size
 * @param {DOMRect} seen
 * @returns {{width: number, height: number, isKnown: boolean}} isKnown is false for whole pixels
 */
export function layoutSize({ element, style, zoom }, seen) {
  const width = alongAxis(style.width, element.offsetWidth, element.clientWidth, [
    style.paddingLeft, style.paddingRight, style.borderLeftWidth, style.borderRightWidth,
  ], style);
  const height = alongAxis(style.height, element.offsetHeight, element.clientHeight, [
    style.paddingTop, style.paddingBottom, style.borderTopWidth, style.borderBottomWidth,
  ], style);
  if (isInlineBox(element, style) || width === null || height === null) {
    const whole = { width: element.offsetWidth ?? seen.width, height: element.offsetHeight ?? seen.height };
    return { width: whole.width * zoom, height: whole.height * zoom, isKnown: false };
  }
  return { width: width * zoom, height: height * zoom, isKnown: true };
}

function alongAxis(text, offsetSize, clientSize, edges, style) {
  const inner = parseFloat(text);
  if (Number.isNaN(inner)) return null;
  const [padding1, padding2, border1, border2] = edges.map(px);
  let size = inner;
  if (style.boxSizing !== 'border-box') {
    size += padding1 + padding2 + border1 + border2;
    const scrolls = style.overflowX !== 'visible' || style.overflowY !== 'visible';
    const bar = scrolls && offsetSize !== undefined ? offsetSize - clientSize - Math.round(border1) - Math.round(border2) : 0;
    if (bar >= 1) size += bar;
  }
  if (offsetSize === undefined) return size;
  for (const candidate of [size, inner]) if (Math.abs(candidate - offsetSize) < 1) return candidate;
  return null;
}

/**
 * The place of a box in its parent's plane, within a pixel; isKnown is false where offsets do not tell.
 * @param {import('./boxes.js').Plane | null} plane
 * @param {import('./boxes.js').Box} box  without place
 * @param {import('../dom.js').Look} look
 * @returns {{x: number, y: number, isKnown: boolean}}
 */
export function offsetIn(plane, box, look) {
  const { element, style, parent, zoom } = box;
  const { body, documentElement } = element.ownerDocument;
  const unknown = { x: originOf(parent, plane).x, y: originOf(parent, plane).y, isKnown: false };
  if (typeof element.offsetLeft !== 'number' || element === documentElement || element === body) return unknown;
  const { position } = style;
  const around = element.offsetParent;
  let x = element.offsetLeft * zoom;
  let y = element.offsetTop * zoom;
  if (!around) return position === 'fixed' && !plane ? { x, y, isKnown: true } : unknown;

  const outside = look.boxOf(around);
  if (!outside || outside.zoom !== zoom * 1 && position === 'fixed') return unknown;
  const base = around === body ? originInBody(outside, plane, position, look) : paddingOrigin(outside, plane);
  if (!base) return unknown;
  x += base.x;
  y += base.y;
  if (around !== body && (position === 'absolute' || position === 'fixed')) {
    // Used values have the fractions that offsets lack.
    const usedX = base.x + (px(style.left) + px(style.marginLeft)) * zoom;
    const usedY = base.y + (px(style.top) + px(style.marginTop)) * zoom;
    if (Math.abs(usedX - x) < 1 && style.left !== 'auto') x = usedX;
    if (Math.abs(usedY - y) < 1 && style.top !== 'auto') y = usedY;
  }
  const outOfFlow = position === 'absolute' || position === 'fixed';
  for (let scroller = outOfFlow ? around : flatParent(element); scroller; scroller = flatParent(scroller)) {
    if (!givesOverflowToViewport(scroller, look)) {
      const scrollZoom = scroller.currentCSSZoom ?? 1;
      x -= scroller.scrollLeft * scrollZoom;
      y -= scroller.scrollTop * scrollZoom;
    }
    if (scroller === around) break;
  }
  return { x, y, isKnown: true };
}

/** A box's top left corner in a plane. */
function originOf(box, plane) {
  if (!box || box.plane !== plane || plane?.element === box.element) return { x: 0, y: 0 };
  return { x: box.x, y: box.y };
}

/** Offsets count from inside the border of the offset parent. */
function paddingOrigin(box, plane) {
  if (box.plane !== plane) return null;
  const { element, style, zoom } = box;
  const { x, y } = originOf(box, plane);
  const left = px(style.borderLeftWidth);
  const bar = isInlineBox(element, style) ? 0 : element.clientLeft - left;  // a scroll bar may be on the left
  return { x: x + (left + (bar > 2 ? Math.round(bar) : 0)) * zoom, y: y + px(style.borderTopWidth) * zoom };
}

/** Offsets in a body count from its border box, in flow under a static body from the root's. */
function originInBody(bodyBox, plane, position, look) {
  const { element: body, style } = bodyBox;
  const isContainer = style.position !== 'static' || bodyBox.plane?.element === body;
  if (style.position !== 'static' || (isContainer && position === 'absolute')) return originOf(bodyBox, plane);
  const root = look.boxOf(body.ownerDocument.documentElement);
  const rootIsContainer = root.style.position !== 'static' || root.plane?.element === root.element;
  if (position === 'absolute' && !rootIsContainer) {
    const view = body.ownerDocument.defaultView;
    return plane ? null : { x: -view.scrollX, y: -view.scrollY };
  }
  if (bodyBox.plane?.element === body) return { x: -bodyBox.place[0] + originOf(root, root.plane).x, y: -bodyBox.place[1] + originOf(root, root.plane).y };
  return root.plane === plane ? originOf(root, plane) : null;
}
