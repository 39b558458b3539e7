// Where browsers place an element's box: planes that matrices carry to the screen, and boxes in them.
//
// A plane is what one element's transform carries: it and all descendants without a transform of their own. Planes in the
// space of a `preserve-3d` element share a flat plane outside, on which they are drawn in perspective. What is drawn on a
// flat plane goes on to the next one, without z.
import { MAX_MATRICES, concat, determinant, identity, invert, outline, perspective, translation } from './geometry.js';
import * as css from './style.js';
import { fit } from './fit.js';
import { cornerIn, layoutSize, offsetIn } from './offsets.js';

/** @typedef {import('./geometry.js').Matrix} Matrix */

const SVG = 'http://www.w3.org/2000/svg';

/** Whether an element is drawn inside an SVG image, where boxes are of another kind. */
const isInsideSvg = (element) => element.namespaceURI === SVG && element.ownerSVGElement !== null;

/** The parent in the tree that is laid out: slots and shadow hosts included. */
export function flatParent(element) {
  if (element.assignedSlot) return element.assignedSlot;
  const parent = element.parentNode;
  if (!parent) return null;
  return parent.nodeType === 11 ? (parent.host ?? null) : parent.nodeType === 1 ? parent : null;
}

/** Whether an element is in the top layer, where the viewport is the parent of its box. */
export function isInTopLayer(element, look) {
  if (look.hasFullscreen && element.matches(':fullscreen')) return true;
  if (element.localName === 'dialog' && element.matches(':modal')) return true;
  return element.hasAttribute('popover') && element.matches(':popover-open');
}

const keepsW = (m) => m[3] === 0 && m[7] === 0;

/** A matrix whose image has no z any more. */
function flatten(m) {
  const flat = m.slice();
  flat[2] = flat[6] = flat[10] = flat[14] = 0;
  return flat;
}

/** A plane, see above. */
export class Plane {
  /**
   * @param {Element} element  whose border box's top left corner is the origin
   * @param {Matrix} map  to the flat plane outside, z included
   * @param {Plane | null} outer  that plane; null for the viewport
   * @param {Plane | null} space  the plane whose space this one stands in; itself when null
   * @param {Matrix} boxMap  to the viewport, as the browser's bounding boxes have it
   * @param {() => boolean} isApart  whether something is drawn on a surface of its own in the outer plane
   */
  constructor(element, map, outer, space, boxMap, isApart) {
    this.element = element;
    this.map = map;
    this.outer = outer;
    this.space = space ?? this;
    this.boxMap = boxMap;
    this.depth = outer ? outer.depth + 1 : 0;
    /** The matrices to the viewport; more than one where perspective comes twice and what the first cuts off is lost. */
    this.maps = [map];
    if (outer) {
      const [next, ...rest] = outer.maps;
      if (!keepsW(map) && !keepsW(next) && isApart()) this.maps = [map, ...outer.maps];
      else this.maps = [concat(flatten(map), next), ...rest];
    }
    /** Whether the plane's back is seen and does not show. */
    this.isHidden = outer !== null && outer.isHidden;
    /** Whether the box can be told exactly. */
    this.exact = !outer || outer.exact;
    if (this.maps.length > MAX_MATRICES) {
      this.maps.length = MAX_MATRICES;
      this.exact = false;
    }
  }

  /** Whether nothing but shifts and scales leads to the viewport. */
  get isPlain() {
    this.plain ??= this.outer === null || this.outer.isPlain ? isPlainMap(this.boxMap) : false;
    return this.plain;
  }

  /** Whether the viewer sees the back of the plane. */
  get isTurnedAway() {
    const m = this.map;
    const seen =
      m[0] * (m[5] * m[15] - m[7] * m[13]) - m[1] * (m[4] * m[15] - m[7] * m[12]) + m[3] * (m[4] * m[13] - m[5] * m[12]);
    return seen * determinant(m) < 0;
  }

  /** A point of the viewport on the flat plane outside. */
  toOuter(x, y) {
    if (!this.outer) return [x, y];
    this.fromViewport ??= invert(asPlaneMap(this.outer.boxMap));
    const m = this.fromViewport;
    const w = x * m[3] + y * m[7] + m[15];
    return [(x * m[0] + y * m[4] + m[12]) / w, (x * m[1] + y * m[5] + m[13]) / w];
  }

  /** How near to the eye the plane is at a point of the flat plane outside: z there, after perspective. */
  depthAt(x, y) {
    // Points of the plane have z = 0; seen from outside that is an equation whose coefficients are a column of the inverse.
    this.inverse ??= invert(this.map);
    const m = this.inverse;
    return -(x * m[2] + y * m[6] + m[14]) / m[10];
  }
}

const isPlainMap = (m) => m[1] === 0 && m[4] === 0 && keepsW(m) && m[15] === 1 && m[0] > 0 && m[5] > 0;

/** The map of the points with z = 0 alone. */
function asPlaneMap(m) {
  const plane = m.slice();
  plane[8] = plane[9] = plane[11] = plane[2] = plane[6] = plane[14] = 0;
  plane[10] = 1;
  return plane;
}

/**
 * @typedef {object} Box
 * @property {Element} element
 * @property {CSSStyleDeclaration} style
 * @property {Box | null} parent  the box outside; null for the viewport
 * @property {Plane | null} plane  null for the viewport
 * @property {number} x  border box, in the plane
 * @property {number} y
 * @property {number} width
 * @property {number} height
 * @property {number} zoom
 * @property {boolean} isInline  a box of a line, without a size of its own
 * @property {boolean} isTransformable
 * @property {boolean} exact
 * @property {boolean} keepsSpace  children stand in the same space
 * @property {boolean} keepsSpaceInBoxes  the same as the browser's bounding boxes have it
 * @property {[number, number]} place  where the box would be in the parent's plane without its transform
 */

/**
 * The box of an element. Its parent's is there already.
 * @param {Element} element
 * @param {Box | null} parent
 * @param {import('../dom.js').Look} look
 * @returns {Box | null} null where there is none
 */
export function makeBox(element, parent, look) {
  const style = look.styleOf(element);
  const { display } = style;
  if (display === 'none' || display === 'contents') return null;
  const rects = element.getClientRects();
  if (rects.length === 0) return null;
  const plane = parent ? parent.plane : null;
  const zoom = element.currentCSSZoom ?? 1;
  const box = {
    element, style, parent, plane, zoom,
    isInline: css.isInlineBox(element, display),
    isTransformable: css.isTransformable(element, display),
    x: 0, y: 0, width: 0, height: 0, place: [0, 0],
    exact: parent ? parent.exact : true,
    keepsSpace: false,
    keepsSpaceInBoxes: false,
  };
  const seen = rects.length === 1 ? rects[0] : element.getBoundingClientRect();
  if (isInsideSvg(element)) return placePlainly(box, seen, null, false);

  const transformable = box.isTransformable;
  let isSpace = false;
  if (style.transformStyle === 'preserve-3d' && !css.isForcedFlat(style)) {
    isSpace = transformable;
    box.keepsSpace = transformable && !css.containsPaint(style);
    // Bounding boxes are of another mind about containment of paint and about inline boxes.
    box.keepsSpaceInBoxes = transformable || (parent !== null && parent.keepsSpaceInBoxes);
  }
  const transforms = transformable ? css.transformsOf(style) : null;
  const transformed = transforms !== null;
  const hidesBack = transformable && style.backfaceVisibility === 'hidden' && (transformed || parent?.keepsSpace);
  if (!isSupported(style, transformed)) box.exact = false;
  const inPlainPlane = !plane || plane.isPlain;
  // One outline is not enough for the boxes of columns; it is for upright lines.
  if (rects.length > 1 && !(box.isInline && inPlainPlane)) box.exact = false;
  if (!transformed && !isSpace && !hidesBack && inPlainPlane) {
    return placePlainly(box, seen, plane, box.exact);
  }

  const size = layoutSize(box, seen);
  box.width = size.width;
  box.height = size.height;
  const own = transforms ? css.ownMatrix(element, style.transformOrigin, transforms, box, zoom) : null;
  const tails = parent ? (parent.tails ??= tailsOf(parent)) : [identity()];
  const fitting = { own, tail: tails[0], width: box.width, height: box.height, sizeIsKnown: size.isKnown, seen };
  const mayBeApart = own !== null && tails.length > 1;
  let found = findPlace(fitting, box, look, !mayBeApart);
  let isApart = false;
  if (mayBeApart && !found.fits) {
    const other = findPlace({ ...fitting, tail: tails[1] }, box, look, false);
    isApart = other.fits;
    if (isApart) found = other;
  }
  box.place = [found.x, found.y];
  box.width = found.width;
  box.height = found.height;
  if (!found.fits) box.exact = false;
  if (!transformed && !isSpace && !hidesBack) {
    [box.x, box.y] = box.place;
    return box;
  }

  const toParent = [translation(...box.place)];
  if (own) toParent.unshift(own);
  const eye = parent && perspectiveOf(parent);
  if (eye) toParent.push(eye);
  const map = toParent.length > 1 ? concat(...toParent) : toParent[0];
  const inSpace = plane && parent.keepsSpace;
  const full = inSpace ? concat(map, plane.map) : map;
  // Bounding boxes are not flattened where nothing moves, either.
  const staysInBoxes = map.every((element, i) => Math.abs(element - (i % 5 === 0 ? 1 : 0)) < 1 / 64);
  const mapInBoxes = isApart ? concat(...toParent.slice(0, 2)) : map;
  const keepsZ = (parent?.keepsSpaceInBoxes && !isApart) || staysInBoxes;
  const boxMap = plane ? concat(keepsZ ? mapInBoxes : flatten(mapInBoxes), plane.boxMap) : mapInBoxes;
  box.plane = new Plane(element, full, inSpace ? plane.outer : plane, inSpace ? plane.space : null, boxMap, () => {
    for (let b = parent; b && b.plane === plane; b = b.parent) if (css.isDrawnApart(b.style)) return true;
    return false;
  });
  if (hidesBack && box.plane.isTurnedAway) box.plane.isHidden = true;
  return box;
}

/**
 * The way of a box's children to the screen as bounding boxes have it, from where their places are added. Those of lines
 * beside blocks, in a box that the browser adds, see neither perspective nor space: that is the second way.
 */
function tailsOf(box) {
  const eye = perspectiveOf(box);
  const through = eye ?? identity();
  const tail = box.plane ? concat(box.keepsSpaceInBoxes ? through : flatten(through), box.plane.boxMap) : through;
  if (!eye && !box.keepsSpaceInBoxes) return [tail];
  return [tail, box.plane ? concat(flatten(identity()), box.plane.boxMap) : identity()];
}

/** Where a bounding box alone does not tell a place, offsets help. */
function findPlace(fitting, box, look, boxIsEnough) {
  if (fitting.sizeIsKnown && boxIsEnough) {
    const found = fit(fitting, { ...cornerIn(box.plane, box.parent), isKnown: false });
    if (found.isSure) return found;
  }
  const offset = offsetIn(box.plane, box, look);
  const found = fit(fitting, offset);
  const limit = Math.max(1, box.zoom);
  const isNear = (a, b) => Math.abs(a - b) <= limit;
  if (offset.isKnown && !(isNear(found.x, offset.x) && isNear(found.y, offset.y))) found.fits = false;
  if (!isNear(found.width, box.width) || !isNear(found.height, box.height)) found.fits = false;
  return found;
}

/** A box that the browser's box tells alone. */
function placePlainly(box, seen, plane, exact) {
  const m = plane ? plane.boxMap : [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0];
  box.plane = plane;
  box.x = (seen.left - m[12]) / m[0];
  box.y = (seen.top - m[13]) / m[5];
  box.width = seen.width / m[0];
  box.height = seen.height / m[5];
  box.place = [box.x, box.y];
  box.exact = exact;
  return box;
}

/** The matrix of the perspective that a box gives its children; null for none. */
function perspectiveOf(box) {
  const { element, style, zoom } = box;
  const distance = box.isTransformable ? css.perspectiveDistance(style, zoom) : 0;
  if (distance === 0) return null;
  const [x, y] = style.perspectiveOrigin.split(' ').map((text) => parseFloat(text) * zoom);
  const atOrigin = box.plane?.element === element;
  return perspective(distance, (atOrigin ? 0 : box.x) + x, (atOrigin ? 0 : box.y) + y);
}

function isSupported(style, transformed) {
  return (style.offsetPath ?? 'none') === 'none' && !(transformed && style.transformBox === 'content-box');
}

/**
 * The outline of a box on the screen.
 * @param {Box} box
 */
export function outlineOfBox(box) {
  return outline(box.plane ? box.plane.maps : [], box);
}
