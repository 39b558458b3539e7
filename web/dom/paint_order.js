// The order in which elements are painted (CSS 2.1, appendix E; depth in a 3D space) and which of them a point hits.
import { flatParent, isInTopLayer } from './boxes.js';
import { isInside } from './geometry.js';
import { isInlineBox, isolatesStacking } from './style.js';

// For browsers a box contains its left and top sides, not its right and bottom ones; the library has another rule for
// points on sides. Points are moved right and down by this many pixels, so that none is exactly on a side.
const NUDGE = 1e-6;

/** The children in the tree that is laid out. */
function flatChildren(element) {
  if (element.shadowRoot) return element.shadowRoot.children;
  if (element.localName === 'slot') {
    const assigned = element.assignedElements();
    if (assigned.length > 0) return assigned;
  }
  return element.children;
}

const isFlexOrGrid = (style) => /flex|grid/.test(style.display);

export class PaintOrder {
  /**
   * @param {Element} root  a stacking context
   * @param {import('../dom.js').Look} look
   */
  constructor(root, look) {
    this.look = look;
    /** Back to front. */
    this.items = [];
    this.#paintContext(root);
  }

  /** Whether an element is a stacking context. */
  static isolates(element, look) {
    return stackLevel(element, look).isContext;
  }

  /**
   * @param {number} x
   * @param {number} y
   * @param {number} tolerance
   * @param {Element | Document} within
   */
  hitsAt(x, y, tolerance, within) {
    const hits = [];
    // Elements inside a shadow root are left out: their host is hit by its own outline.
    const scope = within.getRootNode();
    for (const item of this.items) {
      if (item.element.getRootNode() !== scope) continue;
      if (within.nodeType === 1 && item.element !== within && !isDescendant(item.element, within)) continue;
      if (this.#isHit(item, x, y, tolerance)) hits.push(item);
    }
    // A table row or row group is hit only together with something in it: it has no area of its own between the cells.
    const isRow = ({ box }) => /^table-.*(row|group)/.test(box.style.display);
    const others = hits.filter((hit) => !isRow(hit));
    const shown = hits.filter((hit) => !isRow(hit) || others.some(({ element }) => hit.element.contains(element)));
    return frontToBack(shown, x, y).map((item) => item.element);
  }

  #isHit(item, x, y, tolerance) {
    const outline = item.outline ?? this.#outline(item);
    const [left, top, right, bottom] = item.bounds;
    // False without an outline: the bounds are empty.
    if (!(left - tolerance <= x && x <= right + tolerance && top - tolerance <= y && y <= bottom + tolerance)) return false;
    if (item.rects) {
      return item.rects.some((r) =>
        r.left - tolerance <= x && x < r.right + tolerance && r.top - tolerance <= y && y < r.bottom + tolerance);
    }
    return isInside(outline.points, x + NUDGE, y + NUDGE, tolerance);
  }

  #outline(item) {
    const { box } = item;
    item.outline = this.look.outlineOfBox(box);
    const { points } = item.outline;
    const bounds = (item.bounds = [Infinity, Infinity, -Infinity, -Infinity]);
    if (!box.plane?.isHidden && box.style.visibility === 'visible') {
      for (let i = 0; i < points.length; i += 2) {
        bounds[0] = Math.min(bounds[0], points[i]);
        bounds[1] = Math.min(bounds[1], points[i + 1]);
        bounds[2] = Math.max(bounds[2], points[i]);
        bounds[3] = Math.max(bounds[3], points[i + 1]);
      }
    }
    // An inline element has one rect a line; they are exact where the plane is only translated and scaled.
    if (box.isInline && (!box.plane || box.plane.isUpright)) {
      item.rects = [...box.element.getClientRects()];
    }
    return item.outline;
  }

  #add(element) {
    const box = this.look.boxOf(element);
    if (box) this.items.push({ element, box, index: this.items.length, outline: null, bounds: null, rects: null });
  }

  // Paints a stacking context together with the levels that belong to it.
  #paintContext(element) {
    const levels = [];
    this.#gatherLevels(element, levels);
    levels.sort((a, b) => a.level - b.level);  // stable: equal levels stay in the tree's order
    this.#paint(element, levels);
  }

  // Gathers the descendants that are painted at a level of this stacking context, not those inside nested contexts.
  #gatherLevels(element, levels) {
    for (const child of flatChildren(element)) {
      const { isContext, isLevel, level, isPainted } = stackLevel(child, this.look);
      if (!isPainted) continue;
      if (isLevel) levels.push({ element: child, level, isContext });
      if (!isContext) this.#gatherLevels(child, levels);
    }
  }

  // Paints an element as a whole. When it is no stacking context, `levels` is empty: the context around it paints them.
  #paint(element, levels) {
    const flow = { blocks: [], floats: [], inlines: [] };
    this.#gatherFlow(element, flow);
    this.#add(element);
    let at = 0;
    for (; at < levels.length && levels[at].level < 0; ++at) this.#paintLevel(levels[at]);
    for (const block of flow.blocks) this.#add(block);
    for (const float of flow.floats) this.#paint(float, []);
    for (const [inline, isWhole] of flow.inlines) {
      if (isWhole) this.#paint(inline, []);
      else this.#add(inline);
    }
    for (; at < levels.length; ++at) this.#paintLevel(levels[at]);
  }

  #paintLevel({ element, isContext }) {
    if (isContext) this.#paintContext(element);
    else this.#paint(element, []);
  }

  #gatherFlow(element, flow) {
    const isFlexOrGridContainer = isFlexOrGrid(this.look.styleOf(layoutParent(element, this.look)));
    let children = flatChildren(element);
    if (isFlexOrGridContainer) {
      const order = (child) => Number(this.look.styleOf(child).order);
      children = [...children].sort((a, b) => order(a) - order(b));
    }
    for (const child of children) {
      const { isLevel, isPainted } = stackLevel(child, this.look);
      if (isLevel || !isPainted) continue;
      const style = this.look.styleOf(child);
      if (style.display === 'contents') this.#gatherFlow(child, flow);
      else if (isFlexOrGridContainer) flow.inlines.push([child, true]);
      else if (style.float !== 'none') flow.floats.push(child);
      else if (isInlineBox(child, style.display)) {
        flow.inlines.push([child, false]);
        this.#gatherFlow(child, flow);
      } else if (style.display.startsWith('inline')) flow.inlines.push([child, true]);
      else {
        flow.blocks.push(child);
        this.#gatherFlow(child, flow);
      }
    }
  }
}

/** The element that lays out the children of this one: itself, or an ancestor where it has `display: contents`. */
function layoutParent(element, look) {
  let parent = element;
  while (look.styleOf(parent).display === 'contents') parent = flatParent(parent);
  return parent;
}

function isDescendant(element, ancestor) {
  if (ancestor.contains(element)) return true;
  for (let e = element; e; e = flatParent(e)) if (e === ancestor) return true;
  return false;
}

/** How an element takes part in stacking. */
function stackLevel(element, look) {
  const { stacking } = look;
  let answer = stacking.get(element);
  if (answer) return answer;
  const style = look.styleOf(element);
  answer = { isContext: false, isLevel: false, level: 0, isPainted: style.display !== 'none' };
  if (style.display !== 'none' && style.display !== 'contents') {
    const parent = flatParent(element);
    const positioned = style.position !== 'static';
    const ordered = positioned || (parent !== null && isFlexOrGrid(look.styleOf(layoutParent(parent, look))));
    if (ordered && style.zIndex !== 'auto') {
      answer.level = Number(style.zIndex);
      answer.isContext = true;
    }
    if (parent === null || isolatesStacking(element, style)) answer.isContext = true;
    if (isInTopLayer(element, look)) {
      answer.isContext = true;
      answer.level = Infinity;
    }
    answer.isLevel = positioned || answer.isContext;
  }
  stacking.set(element, answer);
  return answer;
}

/** Sorts the items at a point front to back: by depth where they share a 3D space, else by painting order. */
function frontToBack(items, x, y) {
  const planes = new Map(items.map((item) => [item, planesOf(item.box.plane)]));
  const depth = (plane, item) => {
    const value = plane.depthAt(...plane.toOuter(x, y));
    return Number.isFinite(value) ? value : -Infinity;
  };
  return items.sort((a, b) => {
    const planesA = planes.get(a);
    const planesB = planes.get(b);
    for (let i = 0; i < planesA.length && i < planesB.length && planesA[i].space === planesB[i].space; ++i) {
      if (planesA[i] === planesB[i]) continue;
      const depthA = depth(planesA[i], a);
      const depthB = depth(planesB[i], b);
      if (Math.abs(depthA - depthB) > 1e-6 * Math.max(1, Math.abs(depthA), Math.abs(depthB))) return depthB - depthA;
      break;
    }
    return b.index - a.index;
  });
}

/** A plane and all planes outside it, outermost first. */
function planesOf(plane) {
  const planes = [];
  for (let p = plane; p; p = p.outer) planes.unshift(p);
  return planes;
}
