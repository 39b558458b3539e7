// Which elements a point hits. For most elements the browser's bounding box alone shows that they are not hit.
import { VIEWPORT_AXES, Space } from './bounds.js';
import { flatChildren, isInTopLayer, isInsideSvg } from './boxes.js';
import { isInside } from './geometry.js';
import { sortFrontToBack } from './paint_order.js';

// For browsers a box contains its left and top sides, not its right and bottom ones; the library has another rule for
// points on sides. Points are moved right and down by this many pixels, so that none is exactly on a side.
const NUDGE = 1e-6;

// How far bounding boxes may be wrong, in pixels.
const SLACK = 1;

/** What may be hit: an element and the elements in it. */
export class Hits {
  #look;
  #candidates = [];
  #isPlain = new Map();

  /**
   * @param {Element} root
   * @param {import('../dom.js').Look} look
   */
  constructor(root, look) {
    this.#look = look;
    const parentBox = look.parentBoxOf(root);
    this.#gather(root, parentBox ? Space.ofBox(parentBox) : VIEWPORT_AXES.flat, null, true);
  }

  // Gathers an element and what is in it. `space` is that of the nearest ancestor with a box, `around` its bounding box
  // if that can be trusted.
  #gather(element, space, around, mayBeInSvg) {
    const look = this.#look;
    const seen = element.getBoundingClientRect();
    if (seen.right === 0 && seen.bottom === 0 && seen.width === 0) {
      const { display } = look.styleOf(element);
      if (display === 'none') return;
      if (display === 'contents') return this.#gatherChildren(element, space, null, mayBeInSvg);
    }
    const candidate = { element, seen, isTrusted: true, hit: null };
    this.#candidates.push(candidate);
    const name = element.localName;
    const isLeaf = element.firstElementChild === null && element.shadowRoot === null && name !== 'slot';
    if (!isLeaf && !this.#isPlain.has(element)) this.#findPlain(element);
    const isPlain = !isLeaf && this.#isPlain.get(element);
    let { axes } = space;
    if (mayBeInSvg && isInsideSvg(element)) {
      axes = VIEWPORT_AXES;
    } else if (!isPlain) {
      if (isInTopLayer(element, look)) space = VIEWPORT_AXES.flat;
      axes = space.axesOf(element, isLeaf, look);
    }
    candidate.isTrusted = axes.trusts(seen, axes === space.axes ? around : null, element, look);
    if (isLeaf) return;
    // An inline element with preserve-3d is no offset parent.
    const inner = isPlain && space.isSimple ? axes.flat : axes.spaceOf(element, space, look);
    this.#gatherChildren(element, inner, candidate.isTrusted ? seen : null, name === 'svg' || mayBeInSvg);
  }

  #gatherChildren(element, space, around, mayBeInSvg) {
    // Iterating over siblings takes less time than over a collection.
    if (element.shadowRoot !== null || element.localName === 'slot') {
      for (const child of flatChildren(element)) this.#gather(child, space, around, mayBeInSvg);
    } else {
      for (let child = element.firstElementChild; child; child = child.nextElementSibling) {
        this.#gather(child, space, around, mayBeInSvg);
      }
    }
  }

  // Determines which elements from this one down to its last leaf are plain: without transform, perspective or 3D space,
  // since otherwise they would be offset parents (except inline elements with preserve-3d). To read one offset parent
  // takes less time than those properties.
  #findPlain(element) {
    let leaf = element;
    while (leaf.lastElementChild && leaf.shadowRoot === null) leaf = leaf.lastElementChild;
    const { offsetParent } = leaf;
    let isPlain = Boolean(offsetParent);
    for (let e = leaf; e !== element;) {
      e = e.parentNode;
      if (e === offsetParent) isPlain = false;
      this.#isPlain.set(e, isPlain);
    }
  }

  /**
   * @param {number} x
   * @param {number} y
   * @param {number} tolerance
   * @param {Node} scope  elements of another tree are left out: the host of a shadow tree is hit by its own outline
   * @returns {Element[]} front to back
   */
  at(x, y, tolerance, scope) {
    const boxes = [];
    for (const candidate of this.#candidates) {
      if (candidate.isTrusted && !isNear(candidate.seen, x, y, tolerance + SLACK)) continue;
      const { element } = candidate;
      candidate.hit ??= new Target(this.#look.boxOf(element), this.#look);
      if (candidate.hit.isHit(x, y, tolerance) && element.getRootNode() === scope) boxes.push(candidate.hit.box);
    }
    // A table row or row group is hit only together with something in it: it has no area of its own between the cells.
    const isRow = ({ style }) => /^table-.*(row|group)/.test(style.display);
    const others = boxes.filter((hit) => !isRow(hit));
    const shown = boxes.filter((hit) => !isRow(hit) || others.some(({ element }) => hit.element.contains(element)));
    return sortFrontToBack(shown, x, y, this.#look).map(({ element }) => element);
  }
}

const isNear = ({ left, top, right, bottom }, x, y, tolerance) =>
  left - tolerance <= x && x <= right + tolerance && top - tolerance <= y && y <= bottom + tolerance;

/** A box with its outline. */
class Target {
  /**
   * @param {import('./boxes.js').Box | null} box
   * @param {import('../dom.js').Look} look
   */
  constructor(box, look) {
    this.box = box;
    this.bounds = { left: Infinity, top: Infinity, right: -Infinity, bottom: -Infinity };
    if (!box || box.plane?.isHidden || box.style.visibility !== 'visible') return;
    this.points = look.outlineOfBox(box).points;
    for (let i = 0; i < this.points.length; i += 2) {
      this.bounds.left = Math.min(this.bounds.left, this.points[i]);
      this.bounds.top = Math.min(this.bounds.top, this.points[i + 1]);
      this.bounds.right = Math.max(this.bounds.right, this.points[i]);
      this.bounds.bottom = Math.max(this.bounds.bottom, this.points[i + 1]);
    }
    // An inline element has one rect a line; they are exact where the plane is only translated and scaled.
    if (box.isInline && (!box.plane || box.plane.isUpright)) this.rects = [...box.element.getClientRects()];
  }

  isHit(x, y, tolerance) {
    if (!isNear(this.bounds, x, y, tolerance)) return false;
    if (this.rects) {
      return this.rects.some((r) =>
        r.left - tolerance <= x && x < r.right + tolerance && r.top - tolerance <= y && y < r.bottom + tolerance);
    }
    return isInside(this.points, x + NUDGE, y + NUDGE, tolerance);
  }
}
