// Where browsers draw an element's box: boxes in planes, and the matrices that carry the planes to the screen.
//
// A plane holds what one element's transform moves: the element and all descendants without a transform of their own.
// All planes in one 3D space (`preserve-3d`) are projected onto the plane that contains the space, their outer plane.
// That picture is projected onto the next outer plane, without z.
import { MAX_MATRICES, concat, determinant, identity, invert, outline, perspective, translation } from './geometry.js';
import * as css from './style.js';
import { fit } from './fit.js';
import { cornerIn, layoutSize, offsetIn } from './offsets.js';

/** @typedef {import('./geometry.js').Matrix} Matrix */

const SVG = 'http://www.w3.org/2000/svg';

/** Whether an element is drawn inside an SVG image, where CSS boxes do not exist. */
export const isInsideSvg = (element) => element.namespaceURI === SVG && element.ownerSVGElement !== null;

/** The parent in the tree that is laid out: slots and shadow hosts included. */
export function flatParent(element) {
  if (element.assignedSlot) return element.assignedSlot;
  const parent = element.parentNode;
  if (!parent) return null;
  return parent.nodeType === 11 ? (parent.host ?? null) : parent.nodeType === 1 ? parent : null;
}

/** The children in the tree that is laid out. */
export function flatChildren(element) {
  if (element.shadowRoot) return element.shadowRoot.children;
  if (element.localName === 'slot') {
    const assigned = element.assignedElements();
    if (assigned.length > 0) return assigned;
  }
  return element.children;
}

/** Whether an element is in the top layer, where the viewport is the parent of its box. */
export function isInTopLayer(element, look) {
  if (look.hasFullscreen && element.matches(':fullscreen')) return true;
  if (element.localName === 'dialog' && element.matches(':modal')) return true;
  return element.hasAttribute('popover') && element.matches(':popover-open');
}

const keepsW = (m) => m[3] === 0 && m[7] === 0;

/** The matrix followed by z := 0. */
function flatten(m) {
  const flat = m.slice();
  flat[2] = flat[6] = flat[10] = flat[14] = 0;
  return flat;
}

/** A plane, as described at the top of this file. */
export class Plane {
  /**
   * @param {Element} element  the origin is the top left corner of its border box
   * @param {Matrix} map  to the outer plane, z included
   * @param {Plane | null} outer  the outer plane; null for the viewport
   * @param {Plane | null} space  the plane that starts the 3D space which this one belongs to; this one when null
   * @param {Matrix} boundsMap  to the viewport, by the browser's rules for bounding boxes
   * @param {() => boolean} isApart  whether it is drawn on a surface of its own before the outer plane's map is applied
   */
  constructor(element, map, outer, space, boundsMap, isApart) {
    this.element = element;
    this.map = map;
    this.outer = outer;
    this.space = space ?? this;
    this.boundsMap = boundsMap;
    /**
     * The matrices to the viewport; more than one where two perspectives follow each other and the first result is
     * drawn on a surface of its own, so that what it cuts off stays cut off.
     */
    this.maps = [map];
    if (outer) {
      const [next, ...rest] = outer.maps;
      if (!keepsW(map) && !keepsW(next) && isApart()) this.maps = [map, ...outer.maps];
      else this.maps = [concat(flatten(map), next), ...rest];
    }
    /** Whether this plane or one outside turns its back to the viewer and `backface-visibility` hides it. */
    this.isHidden = outer !== null && outer.isHidden;
    /** Whether the matrices describe the drawing exactly. */
    this.exact = !outer || outer.exact;
    if (this.maps.length > MAX_MATRICES) {
      this.maps.length = MAX_MATRICES;
      this.exact = false;
    }
  }

  /** Whether the plane and all outside are only translated and scaled. */
  get isUpright() {
    this.upright ??= this.outer === null || this.outer.isUpright ? isUprightMap(this.boundsMap) : false;
    return this.upright;
  }

  /** Whether the viewer sees the back of the plane. */
  get isTurnedAway() {
    const m = this.map;
    const orientation =
      m[0] * (m[5] * m[15] - m[7] * m[13]) - m[1] * (m[4] * m[15] - m[7] * m[12]) + m[3] * (m[4] * m[13] - m[5] * m[12]);
    return orientation * determinant(m) < 0;
  }

  /** Whether bounding boxes follow the matrix of the drawing. */
  get isFollowedByBounds() {
    return this.maps.length === 1 && this.#isSame([0, 1, 3, 4, 5, 7, 12, 13, 15]);
  }

  /** Whether bounding boxes of what leaves the plane follow it, too. */
  get isDepthFollowedByBounds() {
    return this.#isSame([8, 9, 11]);
  }

  #isSame(elements) {
    const [m] = this.maps;
    return elements.every((i) => Math.abs(m[i] - this.boundsMap[i]) <= 1e-9 * Math.abs(m[i]));
  }

  /** Projects a point of the viewport onto the outer plane. */
  toOuter(x, y) {
    if (!this.outer) return [x, y];
    this.fromViewport ??= invert(asPlaneMap(this.outer.boundsMap));
    const m = this.fromViewport;
    const w = x * m[3] + y * m[7] + m[15];
    return [(x * m[0] + y * m[4] + m[12]) / w, (x * m[1] + y * m[5] + m[13]) / w];
  }

  /** The depth of the plane at a point of the outer plane: z after perspective, larger is nearer to the eye. */
  depthAt(x, y) {
    // A column of the inverse has the coefficients of the plane z = 0 in the outer plane's coordinates.
    this.inverse ??= invert(this.map);
    const m = this.inverse;
    return -(x * m[2] + y * m[6] + m[14]) / m[10];
  }
}

const isUprightMap = (m) => m[1] === 0 && m[4] === 0 && keepsW(m) && m[15] === 1 && m[0] > 0 && m[5] > 0;

/** The matrix restricted to the points with z = 0, with z' = z so that it can be inverted. */
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
 * @property {Box | null} parent  the nearest ancestor's box; null for the viewport
 * @property {Plane | null} plane  null for the viewport
 * @property {number} x  border box, in the plane
 * @property {number} y
 * @property {number} width
 * @property {number} height
 * @property {number} zoom
 * @property {boolean} isInline  an inline box: part of a line, without a size of its own
 * @property {boolean} isTransformable
 * @property {boolean} exact
 * @property {boolean} keepsSpace  children belong to the same 3D space
 * @property {boolean} keepsSpaceInBounds  keepsSpace as it holds for the browser's bounding boxes
 * @property {[number, number]} place  where the box would be in the parent's plane without its transform
 */

/**
 * The box of an element whose parent's box is known.
 * @param {Element} element
 * @param {Box | null} parent
 * @param {import('../dom.js').Look} look
 * @returns {Box | null} null for an element without a box
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
    keepsSpaceInBounds: false,
  };
  const seen = rects.length === 1 ? rects[0] : element.getBoundingClientRect();
  if (isInsideSvg(element)) return placeByBounds(box, seen, null, false);

  const transformable = box.isTransformable;
  let isSpace = false;
  if (style.transformStyle === 'preserve-3d' && !css.isForcedFlat(style)) {
    isSpace = transformable;
    box.keepsSpace = transformable && !css.containsPaint(style);
    // For bounding boxes, paint containment does not flatten, and an inline box keeps its parent's space.
    box.keepsSpaceInBounds = transformable || (parent !== null && parent.keepsSpaceInBounds);
  }
  const transforms = transformable ? css.transformsOf(style) : null;
  const transformed = transforms !== null;
  const hidesBack = transformable && style.backfaceVisibility === 'hidden' && (transformed || parent?.keepsSpace);
  if (!isSupported(style, transformed)) box.exact = false;
  const inUprightPlane = !plane || plane.isUpright;
  // One outline cannot describe a box broken over columns or over lines of a turned plane. For upright lines it is the
  // bounding box, and hits use the client rects.
  if (rects.length > 1 && !(box.isInline && inUprightPlane)) box.exact = false;
  if (!transformed && !isSpace && !hidesBack && inUprightPlane) {
    return placeByBounds(box, seen, plane, box.exact);
  }

  const size = layoutSize(box, seen);
  box.width = size.width;
  box.height = size.height;
  const own = transforms ? css.ownMatrix(element, style.transformOrigin, transforms, box, zoom) : null;
  const tails = parent ? (parent.tails ??= tailsOf(parent)) : [identity()];
  const fitting = { own, tail: tails[0], width: box.width, height: box.height, sizeIsKnown: size.isKnown, seen };
  const mayBeInAnonymousBlock = own !== null && tails.length > 1;
  let found = findPlace(fitting, box, look, !mayBeInAnonymousBlock);
  let isInAnonymousBlock = false;
  if (mayBeInAnonymousBlock && !found.fits) {
    const other = findPlace({ ...fitting, tail: tails[1] }, box, look, false);
    isInAnonymousBlock = other.fits;
    if (isInAnonymousBlock) found = other;
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
  // For bounding boxes, a matrix that is nearly the identity does not drop z either.
  const isNearIdentity = map.every((element, i) => Math.abs(element - (i % 5 === 0 ? 1 : 0)) < 1 / 64);
  const mapInBounds = isInAnonymousBlock ? concat(...toParent.slice(0, 2)) : map;
  const keepsZ = (parent?.keepsSpaceInBounds && !isInAnonymousBlock) || isNearIdentity;
  const boundsMap = plane ? concat(keepsZ ? mapInBounds : flatten(mapInBounds), plane.boundsMap) : mapInBounds;
  box.plane = new Plane(element, full, inSpace ? plane.outer : plane, inSpace ? plane.space : null, boundsMap, () => {
    for (let b = parent; b && b.plane === plane; b = b.parent) if (css.isDrawnApart(b.style)) return true;
    return false;
  });
  if (hidesBack && box.plane.isTurnedAway) box.plane.isHidden = true;
  return box;
}

/**
 * The matrices that carry a child from its place in this box to the screen, by the browser's rules for bounding boxes
 * (`tail` in fit.js). The second one is for children in an anonymous block (lines beside blocks): neither perspective
 * nor 3D space applies to them.
 */
function tailsOf(box) {
  const eye = perspectiveOf(box);
  const through = eye ?? identity();
  const tail = box.plane ? concat(box.keepsSpaceInBounds ? through : flatten(through), box.plane.boundsMap) : through;
  if (!eye && !box.keepsSpaceInBounds) return [tail];
  return [tail, box.plane ? concat(flatten(identity()), box.plane.boundsMap) : identity()];
}

/** Finds the place of a box from its bounding box; where that leaves the place undetermined, also from offsets. */
function findPlace(fitting, box, look, boundsAreEnough) {
  if (fitting.sizeIsKnown && boundsAreEnough) {
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

/** Places a box that the browser's bounding box alone determines. */
function placeByBounds(box, seen, plane, exact) {
  const m = plane ? plane.boundsMap : [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0];
  box.plane = plane;
  box.x = (seen.left - m[12]) / m[0];
  box.y = (seen.top - m[13]) / m[5];
  box.width = seen.width / m[0];
  box.height = seen.height / m[5];
  box.place = [box.x, box.y];
  box.exact = exact;
  return box;
}

/** The perspective matrix that a box applies to its children; null for none. */
export function perspectiveOf(box) {
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
