// The order in which elements are painted (CSS 2.1, appendix E; depth in a 3D space).
import { flatChildren, flatParent, isInTopLayer } from './boxes.js';
import { isInlineBox, isolatesStacking } from './style.js';

const isFlexOrGrid = (style) => /flex|grid/.test(style.display);

/** The painting order of some elements: nothing is read of others. */
class PaintOrder {
  /**
   * @param {Element} root
   * @param {Set<Element>} among  the elements, with all their ancestors
   * @param {import('../dom.js').Look} look
   */
  constructor(root, among, look) {
    this.look = look;
    this.among = among;
    /** Back to front. */
    this.elements = [];
    this.#paintContext(root);
  }

  #children(element) {
    const children = [];
    for (const child of flatChildren(element)) if (this.among.has(child)) children.push(child);
    return children;
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
    for (const child of this.#children(element)) {
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
    this.elements.push(element);
    let at = 0;
    for (; at < levels.length && levels[at].level < 0; ++at) this.#paintLevel(levels[at]);
    for (const block of flow.blocks) this.elements.push(block);
    for (const float of flow.floats) this.#paint(float, []);
    for (const [inline, isWhole] of flow.inlines) {
      if (isWhole) this.#paint(inline, []);
      else this.elements.push(inline);
    }
    for (; at < levels.length; ++at) this.#paintLevel(levels[at]);
  }

  #paintLevel({ element, isContext }) {
    if (isContext) this.#paintContext(element);
    else this.#paint(element, []);
  }

  #gatherFlow(element, flow) {
    const isFlexOrGridContainer = isFlexOrGrid(this.look.styleOf(layoutParent(element, this.look)));
    let children = this.#children(element);
    if (isFlexOrGridContainer) {
      const order = (child) => Number(this.look.styleOf(child).order);
      children.sort((a, b) => order(a) - order(b));
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

/**
 * Sorts boxes that are painted at a point front to back: by depth where they share a 3D space, else by painting order.
 * @param {import('./boxes.js').Box[]} boxes
 * @param {number} x
 * @param {number} y
 * @param {import('../dom.js').Look} look
 */
export function sortFrontToBack(boxes, x, y, look) {
  const among = new Set();
  for (const { element } of boxes) {
    for (let e = element; e && !among.has(e); e = flatParent(e)) among.add(e);
  }
  const order = new PaintOrder(look.document.documentElement, among, look);
  const index = new Map(order.elements.map((element, i) => [element, i]));
  const planes = new Map(boxes.map((box) => [box, planesOf(box.plane)]));
  const depth = (plane) => {
    const value = plane.depthAt(...plane.toOuter(x, y));
    return Number.isFinite(value) ? value : -Infinity;
  };
  return boxes.sort((a, b) => {
    const planesA = planes.get(a);
    const planesB = planes.get(b);
    for (let i = 0; i < planesA.length && i < planesB.length && planesA[i].space === planesB[i].space; ++i) {
      if (planesA[i] === planesB[i]) continue;
      const depthA = depth(planesA[i]);
      const depthB = depth(planesB[i]);
      if (Math.abs(depthA - depthB) > 1e-6 * Math.max(1, Math.abs(depthA), Math.abs(depthB))) return depthB - depthA;
      break;
    }
    return index.get(b.element) - index.get(a.element);
  });
}

/** A plane and all planes outside it, outermost first. */
function planesOf(plane) {
  const planes = [];
  for (let p = plane; p; p = p.outer) planes.unshift(p);
  return planes;
}
