// Whether the browser's bounding box of an element contains what is painted of it, found without the element's place.
//
// Browsers compute bounding boxes corner by corner. A corner behind the eye counts with its mirror image, which lies
// beyond the vanishing line of its plane. So a bounding box that does not cross this line has all corners in front of
// the eye, or all behind it, where nothing is painted. The vanishing line follows from the images of the directions of
// the plane's axes, which depend on transforms, but not on the place of anything: neither offsets nor a fit are needed.
import { flatChildren, flatParent, perspectiveOf } from './boxes.js';
import { identity } from './geometry.js';
import * as css from './style.js';

/** @typedef {number[]} Direction  the image (x, y, w) of a direction */
/** @typedef {import('../dom.js').Look} Look */

// A bounding box that comes this close to the vanishing line counts as crossing it: in pixels, and relative to its size.
const SLACK = 1;
const RELATIVE_SLACK = 1e-3;
// Relative size below which a range of w or the angle between images is negligible.
const NEGLIGIBLE = 1e-9;
// The distance in pixels over which w typically changes by 1.
const W_UNIT = 1000;

const NONE = [0, 0, 0];
const IDENTITY = identity();

/** The axes of the plane that an element is in, and the vanishing line that follows from them. */
export class Axes {
  #flat;

  /**
   * @param {Element | null} element  null for the viewport
   * @param {Direction} x
   * @param {Direction} y
   * @param {Direction | null} z  null where it is not known without the element's box
   * @param {boolean} isFollowed  whether bounding boxes follow the matrices of the drawing
   * @param {Axes | null} outer  of the plane that the element leaves
   */
  constructor(element, x, y, z, isFollowed, outer = null) {
    this.element = element;
    this.outer = outer;
    this.x = x;
    this.y = y;
    this.z = z;
    this.isFollowed = isFollowed;
    // The vanishing line: a * x + b * y + c = 0. There is none where the images of the axes are parallel.
    this.a = x[1] * y[2] - x[2] * y[1];
    this.b = x[2] * y[0] - x[0] * y[2];
    this.c = x[0] * y[1] - x[1] * y[0];
    const length = Math.hypot(this.a * W_UNIT, this.b * W_UNIT, this.c);
    this.hasLine = length > NEGLIGIBLE * Math.hypot(x[0], x[1], x[2] * W_UNIT) * Math.hypot(y[0], y[1], y[2] * W_UNIT);
  }

  /** The axes of the plane that a box is in. */
  static ofBox({ element, plane }) {
    if (!plane) return new Axes(element, VIEWPORT_AXES.x, VIEWPORT_AXES.y, NONE, true);
    const [m] = plane.maps;
    const [x, y] = [0, 4].map((i) => [m[i], m[i + 1], m[i + 3]]);
    return new Axes(element, x, y, null, plane.isFollowedByBounds);
  }

  /**
   * Whether a bounding box contains what is painted of a box in this plane.
   *
   * A corner with w = 0 exactly has no mirror image: browsers leave its coordinates undivided. If a corner has w = 0 and
   * the others are in front, w is nowhere more than its range over the box. A side in front is seen with the length
   * (length * stretch / w), which is at most that of the bounding box, so w has a lower bound. Where that exceeds the
   * range, no corner has w = 0.
   * @param {DOMRect} seen
   * @param {DOMRect | null} around  the bounding box, which can be trusted, of another box in this plane; a
   *   bounding box inside it can be trusted, too
   * @param {Element} element
   * @param {Look} look
   */
  trusts(seen, around, element, look) {
    if (!this.isFollowed || !this.hasLine) return false;
    const { x, y, a, b, c } = this;
    if (a === 0 && b === 0) return true;
    if (around && isWithin(seen, around)) return true;
    const { left, right, top, bottom } = seen;
    const distance = Math.abs(a * (left + right) + b * (top + bottom) + 2 * c) / 2;
    const reach = (Math.abs(a) * (right - left) + Math.abs(b) * (bottom - top)) / 2;
    if (!(distance > reach * (1 + RELATIVE_SLACK) + SLACK * (Math.abs(a) + Math.abs(b)))) return false;
    const { width, height } = this.#sizeOf(element, look);
    const alongX = Math.abs(x[2]) * width;
    const alongY = Math.abs(y[2]) * height;
    const range = alongX + alongY;
    // Where w is constant along a side, it may be 0 on all of it. Then only the opposite side is in front, so only sides
    // of this direction are tested.
    return (
      range === 0 ||
      (alongY > NEGLIGIBLE * range && range < 0.9 * width * leastStretch(x, seen)) ||
      (alongX > NEGLIGIBLE * range && range < 0.9 * height * leastStretch(y, seen))
    );
  }

  /** The space of the children of an element in this plane that is flat. */
  get flat() {
    this.#flat ??= new Space(null, this, NONE, false, this.isFollowed);
    return this.#flat;
  }

  /**
   * The space of the children of an element in this plane.
   * @param {Element} element
   * @param {Space} outer  the space that the element is in
   * @param {Look} look
   * @returns {Space}
   */
  spaceOf(element, outer, look) {
    const values = css.valuesOf(element, look);
    const isEye = css.read(values, 'perspective') !== 'none';
    const mayKeepSpace = css.read(values, 'transform-style') === 'preserve-3d';
    if (!isEye && !mayKeepSpace) return this.flat;
    const style = look.styleOf(element);
    const isTurned = element === this.element && this.z !== null;
    if (!isEye && isTurned && css.isTransformable(element, style.display) && !css.containsPaint(style)) {
      return css.isForcedFlat(style) ? this.flat : new Space(element, this, this.z, true, this.isFollowed);
    }
    const box = look.boxOf(element);
    if (!box) return this.flat;
    const space = Space.ofBox(box);
    if (mayKeepSpace && !outer.isSimple && (!outer.isFollowed || outer.mayWrap(element, look))) space.isFollowed = false;
    return space;
  }

  /**
   * Whether an element in this plane may have another scale than the axes, which do not take in scales and turns within
   * the plane.
   */
  #isScaled(element, look) {
    for (let e = element; e && e !== this.element; e = flatParent(e)) {
      const m = css.linearMatrix(e, css.valuesOf(e, look), look);
      if (!m || m[0] !== 1 || m[1] !== 0 || m[4] !== 0 || m[5] !== 1) return true;
    }
    return this.outer !== null && this.outer !== VIEWPORT_AXES && this.outer.#isScaled(flatParent(this.element), look);
  }

  /** The size of an element in this plane, along the axes; NaN if it is not known. */
  #sizeOf(element, look) {
    const zoom = this.#isScaled(element, look) ? NaN : (element.currentCSSZoom ?? 1);
    return { width: element.offsetWidth * zoom, height: element.offsetHeight * zoom };
  }
}

/** The axes of the viewport's plane; also those of elements that 2D transforms move in it. */
export const VIEWPORT_AXES = new Axes(null, [1, 0, 0], [0, 1, 0], NONE, true);

const isWithin = (a, b) =>
  b.left - SLACK <= a.left && a.right <= b.right + SLACK && b.top - SLACK <= a.top && a.bottom <= b.bottom + SLACK;

// A side of a box is seen with its length times a factor, the stretch divided by w. Returns the least stretch of sides in
// a direction, relative to the size of the rectangle in which they are seen.
function leastStretch([x, y, w], { left, right, top, bottom }) {
  const least = (p, q) => (p * q <= 0 ? 0 : Math.min(Math.abs(p), Math.abs(q)));
  return Math.max(least(x - w * left, x - w * right) / (right - left), least(y - w * top, y - w * bottom) / (bottom - top));
}

const BLOCKS = new Set(['block', 'flow-root', 'list-item', 'flex', 'grid', 'table']);
const INLINES = new Set(['inline-block', 'inline-flex', 'inline-grid', 'inline-table']);
const CONTAINERS = new Set(['block', 'flow-root', 'list-item', 'inline-block', 'flex', 'grid', 'inline-flex', 'inline-grid']);
const WRAPPERS = new Set(['button', 'details', 'fieldset', 'summary']);

/** What the children of an element are drawn in. */
export class Space {
  #isOrdinary;
  #hasBlocks;

  /**
   * @param {Element | null} element
   * @param {Axes} axes  of the element's plane
   * @param {Direction} z  in which transformed children leave the plane; NONE where the drawing drops z
   * @param {boolean} keepsSpace
   * @param {boolean} isFollowed  whether bounding boxes of such children follow the matrices of the drawing
   */
  constructor(element, axes, z, keepsSpace, isFollowed) {
    this.element = element;
    this.axes = axes;
    this.z = z;
    this.keepsSpace = keepsSpace;
    this.isFollowed = isFollowed;
  }

  /** @param {import('./boxes.js').Box} box */
  static ofBox(box) {
    const { plane, element, keepsSpace } = box;
    const axes = Axes.ofBox(box);
    const { x, y, isFollowed } = axes;
    const eye = perspectiveOf(box);
    const map = plane ? plane.maps[0] : IDENTITY;
    const isAffine = x[2] === 0 && y[2] === 0;
    const isSame = keepsSpace === box.keepsSpaceInBounds && (!keepsSpace || plane?.isDepthFollowedByBounds);
    let z = keepsSpace ? [map[8], map[9], map[11]] : NONE;
    if (eye) z = [0, 1, 3].map((c, k) => eye[8] * x[k] + eye[9] * y[k] + z[k] + eye[11] * map[12 + c]);
    return new Space(element, axes, z, keepsSpace, isFollowed && isSame && (!eye || isAffine));
  }

  /** Whether children are drawn in the plane, whatever their transforms. */
  get isFlat() {
    return this.z === NONE;
  }

  /** Whether that holds for bounding boxes, too. */
  get isSimple() {
    return this.isFlat && this.isFollowed;
  }

  /**
   * The axes of an element in this space.
   * @param {Element} element
   * @param {boolean} isLeaf
   * @param {Look} look
   * @returns {Axes}
   */
  axesOf(element, isLeaf, look) {
    const values = css.valuesOf(element, look);
    // In a flat space, the vanishing line is that of the plane, wherever a leaf is turned and moved to.
    const leavesPlane =
      css.leavesPlane(values) ||
      (!(isLeaf && this.isSimple) && css.read(values, 'rotate').includes(' ')) ||
      (!this.isSimple && ['translate', 'scale'].some((property) => css.read(values, property).split(' ').length > 2));
    if (!leavesPlane) return this.axes;
    const m = css.linearMatrix(element, values, look);
    if (m && this.#isFollowedBy(element, m, look)) {
      if (m[2] === 0 && m[6] === 0) return this.axes;
      return new Axes(element, this.#image(m, 0), this.#image(m, 4), this.#image(m, 8), true, this.axes);
    }
    const box = look.boxOf(element);
    return box ? Axes.ofBox(box) : this.axes;
  }

  // The image of a row of a matrix.
  #image(m, row) {
    const [a, b, c] = [m[row], m[row + 1], m[row + 2]];
    const { axes: { x, y }, z } = this;
    return [a * x[0] + b * y[0] + c * z[0], a * x[1] + b * y[1] + c * z[1], a * x[2] + b * y[2] + c * z[2]];
  }

  /** Whether bounding boxes follow the drawing of a child with a transform that leaves the plane. */
  #isFollowedBy(child, m, look) {
    if (!this.isFollowed) return false;
    // A matrix that is nearly the identity does not drop z in bounding boxes.
    const isTurned = m.some((value, i) => Math.abs(value - Number(i % 5 === 0)) >= 1 / 64);
    if (!this.keepsSpace && !isTurned && (m[2] !== 0 || m[6] !== 0)) return false;
    return this.isFlat || !this.mayWrap(child, look);
  }

  /**
   * Whether an anonymous box may be around a child, which then is without perspective and 3D space in bounding boxes,
   * though not in the drawing.
   */
  mayWrap(child, look) {
    const values = css.valuesOf(child, look);
    const display = css.read(values, 'display');
    const isInline = INLINES.has(display) || (display === 'inline' && css.isReplaced(child));
    if (!isInline && !BLOCKS.has(display)) return true;
    this.#isOrdinary ??= isOrdinary(this.element, look);
    if (!this.#isOrdinary) return true;
    if (!isInline && isInFlow((property) => css.read(values, property))) return false;
    this.#hasBlocks ??= hasBlocks(this.element, look);
    return this.#hasBlocks;
  }
}

const isInFlow = (read) => read('float') === 'none' && !/absolute|fixed/.test(read('position'));

/** Whether anonymous boxes in an element can only be around lines beside blocks. */
function isOrdinary(element, look) {
  const style = look.styleOf(element);
  if (!CONTAINERS.has(style.display) || css.isReplaced(element) || WRAPPERS.has(element.localName)) return false;
  return style.columnCount === 'auto' && style.columnWidth === 'auto';
}

/** Whether an element may have blocks, beside which its lines are in anonymous boxes. */
function hasBlocks(element, look) {
  if (/flex|grid/.test(look.styleOf(element).display)) return false;
  for (const child of flatChildren(element)) {
    const values = css.valuesOf(child, look);
    const read = (property) => css.read(values, property);
    const display = read('display');
    if (display === 'contents') return true;
    if (!INLINES.has(display) && !/^(none|inline|ruby)$/.test(display) && isInFlow(read)) return true;
  }
  return ['::before', '::after'].some((part) => {
    const style = look.document.defaultView.getComputedStyle(element, part);
    return BLOCKS.has(style.display) && isInFlow((property) => style.getPropertyValue(property));
  });
}
