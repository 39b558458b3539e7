// Which elements a point hits. For most elements the browser's bounding box alone shows that they are not hit.
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

  /**
   * @param {Element} root
   * @param {import('../dom.js').Look} look
   */
  constructor(root, look) {
    this.#look = look;
    this.#gather(root, look.boxOf(root)?.plane ?? look.parentBoxOf(root)?.plane ?? null);
  }

  // Gathers an element, whose parent's plane is given, and what is in it. Only elements that may have a plane of their
  // own, are inside an SVG image or are in the top layer get a box now. In an upright plane, what `translate` and `scale`
  // do to a box does not matter: its bounding box is right.
  #gather(element, plane) {
    const look = this.#look;
    const style = look.styleOf(element);
    const isInUpright = !plane || plane.isUpright;
    const isSpecial =
      style.transform !== 'none' || style.rotate !== 'none' ||
      (!isInUpright && (style.translate !== 'none' || style.scale !== 'none')) ||
      isInsideSvg(element) || isInTopLayer(element, look);
    const candidate = { element, plane, seen: null, size: 0, hit: null };
    if (isSpecial) {
      const box = look.boxOf(element);
      if (box) candidate.plane = plane = box.plane;
    } else {
      candidate.seen = element.getBoundingClientRect();
      if (!isInUpright) {
        candidate.size = (element.offsetWidth + element.offsetHeight) * (element.currentCSSZoom ?? 1);
      }
    }
    this.#candidates.push(candidate);
    for (const child of flatChildren(element)) this.#gather(child, plane);
  }

  /**
   * @param {number} x
   * @param {number} y
   * @param {number} tolerance
   * @param {Node} scope  elements of another tree are left out: the host of a shadow tree is hit by its own outline
   * @returns {Element[]} front to back
   */
  at(x, y, tolerance, scope) {
    const sizes = new Map([[null, Infinity]]);
    const boxes = [];
    for (const candidate of this.#candidates) {
      const { element, plane, seen } = candidate;
      if (seen && !isNear(seen, x, y, tolerance + SLACK)) {
        let sizeInFront = sizes.get(plane);
        if (sizeInFront === undefined) sizes.set(plane, (sizeInFront = plane.sizeInFront(x, y, tolerance)));
        if (candidate.size < sizeInFront) continue;
      }
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
