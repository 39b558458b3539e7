// The outline of any element of a page as the browser draws it, through transforms, perspective and 3D spaces, clipped
// in front of the eye; and the elements at a point, front to back. The page is not changed.
import { flatParent, isInTopLayer, makeBox, outlineOfBox } from './dom/boxes.js';
import { isEdgeOn } from './dom/geometry.js';
import { Hits } from './dom/hits.js';

export { load } from './wasm.js';

/**
 * @typedef {object} Outline
 * @property {{x: number, y: number}[]} points
 *   the border box in viewport pixels: its corners in front of the eye, in the order top left, top right, bottom right,
 *   bottom left, with the points where clipping cuts an edge between them; empty when all is behind the eye or there
 *   is no box
 * @property {boolean[]} behind  which of the four corners are behind the eye
 * @property {boolean} edgeOn  the eye is nearly in the plane of the box, or in one that it is drawn on: the outline
 *   is thinner than a pixel
 * @property {boolean} exact  false where something that the box's place depends on is not supported
 */

/**
 * @typedef {object} HitOptions
 * @property {Element | Document} [within]  only this element and its descendants; the document unless given
 * @property {number} [tolerance]  how far beside an outline a point still hits, in pixels; 0 unless given
 */

/** A snapshot of a page that reads each style once. After a change of the page, make a new one. */
export class Look {
  /** @param {Document} document */
  constructor(document) {
    if (!document.defaultView) throw new TypeError('zan: the document has no window');
    this.document = document;
    this.styles = new Map();
    this.boxes = new Map();
    this.outlines = new Map();
    this.hits = new Map();
    this.stacking = new Map();
    this.scrolls = new Map();
    this.hasFullscreen = document.fullscreenElement !== null;
  }

  /**
   * The outline of an element's border box.
   * @param {Element} element
   * @returns {Outline}
   */
  outlineOf(element) {
    this.#check(element);
    const box = this.boxOf(element);
    if (!box) return { points: [], behind: [false, false, false, false], edgeOn: false, exact: true };
    const { points, behind } = this.outlineOfBox(box);
    const corners = [];
    for (let i = 0; i < points.length; i += 2) corners.push({ x: points[i], y: points[i + 1] });
    let edgeOn = false;
    for (let plane = box.plane, part = box; plane && !edgeOn; plane = plane.outer) {
      edgeOn = isEdgeOn(plane.map, part);
      part = this.boxOf(plane.element);
      part = { x: 0, y: 0, width: part.width, height: part.height };
    }
    return { points: corners, behind: behind.slice(), edgeOn, exact: box.exact };
  }

  /**
   * The elements whose outline contains a point or passes within a tolerance of it, front to back. Hidden elements and
   * hidden backfaces are left out. Clipping, rounded corners and `pointer-events` are ignored.
   * @param {number} x  in viewport pixels
   * @param {number} y
   * @param {HitOptions} [options]
   * @returns {Element[]}
   */
  hitsAt(x, y, { within = this.document, tolerance = 0 } = {}) {
    const element = within.nodeType === 9 ? within.documentElement : within;
    this.#check(element);
    let hits = this.hits.get(element);
    if (!hits) this.hits.set(element, (hits = new Hits(element, this)));
    return hits.at(x, y, tolerance, within.getRootNode());
  }

  #check(element) {
    if (element?.nodeType !== 1) throw new TypeError('zan: an element is needed');
    if (element.ownerDocument !== this.document) throw new TypeError('zan: the element is of another document');
  }

  /** @param {Element} element */
  styleOf(element) {
    let style = this.styles.get(element);
    if (!style) this.styles.set(element, (style = this.document.defaultView.getComputedStyle(element)));
    return style;
  }

  /**
   * @param {Element} element
   * @returns {import('./dom/boxes.js').Box | null}
   */
  boxOf(element) {
    let box = this.boxes.get(element);
    if (box === undefined) this.boxes.set(element, (box = makeBox(element, this.parentBoxOf(element), this)));
    return box;
  }

  /** How far an element is scrolled, in viewport pixels. */
  scrollOf(element) {
    let scroll = this.scrolls.get(element);
    if (!scroll) {
      const zoom = element.currentCSSZoom ?? 1;
      this.scrolls.set(element, (scroll = { x: element.scrollLeft * zoom, y: element.scrollTop * zoom }));
    }
    return scroll;
  }

  /** The box of the nearest ancestor that has one; null for the viewport. */
  parentBoxOf(element) {
    if (isInTopLayer(element, this)) return null;
    for (let parent = flatParent(element); parent; parent = flatParent(parent)) {
      const box = this.boxOf(parent);
      if (box) return box;
    }
    return null;
  }

  /** @param {import('./dom/boxes.js').Box} box */
  outlineOfBox(box) {
    let outline = this.outlines.get(box);
    if (!outline) this.outlines.set(box, (outline = outlineOfBox(box)));
    return outline;
  }
}

/**
 * A snapshot of a page, for many questions about it.
 * @param {Document} [page]  the document of this script unless given
 * @returns {Look}
 */
export const look = (page = document) => new Look(page);

/**
 * The outline of an element's border box, in pixels of its document's viewport.
 * @param {Element} element
 * @returns {Outline}
 */
export function outlineOf(element) {
  if (element?.nodeType !== 1) throw new TypeError('zan: an element is needed');
  return new Look(element.ownerDocument).outlineOf(element);
}

/**
 * The elements at a point, front to back: see Look.hitsAt.
 * @param {number} x
 * @param {number} y
 * @param {HitOptions} [options]
 * @returns {Element[]}
 */
export function hitsAt(x, y, options = {}) {
  const within = options.within ?? document;
  return new Look(within.ownerDocument ?? within).hitsAt(x, y, { ...options, within });
}
