// Reads a deck in the impress.js format from a document, and lets the browser draw it from any pose.

const LIMIT = 1e9;
const SMALLEST_SIZE = 0.001;
const SMALLEST_SCALE = 0.00001;

/**
 * @typedef {object} Step
 * @property {HTMLElement} element
 * @property {string} name
 * @property {number} x
 * @property {number} y
 * @property {number} z
 * @property {{x: number, y: number, z: number}} angles  in degrees
 * @property {string} order  of the rotations; the last one is applied first
 * @property {number} scale
 * @property {number} width
 * @property {number} height
 */

/**
 * @typedef {object} Deck
 * @property {HTMLElement} root
 * @property {HTMLElement} canvas
 * @property {Step[]} steps
 * @property {number} width
 * @property {number} height
 * @property {number} perspective
 * @property {number} minScale  0 for none
 * @property {number} maxScale  0 for none
 */

function number(element, attribute, otherwise, smallest = -LIMIT) {
  const text = element.getAttribute(`data-${attribute}`);
  if (text === null) return otherwise;
  const value = text.trim() === '' ? NaN : Number(text);
  if (value >= smallest && Math.abs(value) <= LIMIT) return value;
  throw new Error(
    `<${element.localName}${element.id ? ` id="${element.id}"` : ''}> data-${attribute}="${text}": ` +
      `not a number from ${smallest === -LIMIT ? '-1e9' : smallest} to 1e9`,
  );
}

/**
 * Reads the deck in a document and lays its layers out in space.
 * @param {Document} page
 * @returns {Deck}
 */
export function layOut(page) {
  const root = page.getElementById('impress') ?? page.body;
  const elements = [...root.querySelectorAll('.step')];
  if (elements.length === 0) throw new Error('No deck: no element has the class "step"');
  const deck = {
    root,
    width: number(root, 'width', 1024, SMALLEST_SIZE),
    height: number(root, 'height', 768, SMALLEST_SIZE),
    perspective: number(root, 'perspective', 1000, SMALLEST_SIZE),
    minScale: number(root, 'min-scale', 0, 0),
    maxScale: number(root, 'max-scale', 1, 0),
  };
  const steps = [];
  for (const element of elements) steps.push(readStep(element, steps.at(-1), steps.length));
  page.body.classList.remove('impress-not-supported');
  page.body.classList.add('impress-supported', 'impress-enabled');
  const canvas = page.createElement('div');
  canvas.append(...root.childNodes);
  root.append(canvas);
  page.documentElement.style.height = '100%';
  page.body.style.cssText += 'height: 100%; overflow: hidden;';
  const inSpace = 'position: absolute; transform-style: preserve-3d; opacity: 1; transition: none;';
  root.style.cssText = `${inSpace} top: 50%; left: 50%; transform-origin: 0 0;`;
  canvas.style.cssText = inSpace;
  for (const step of steps) {
    const turns = [...step.order].map((axis) => `rotate${axis.toUpperCase()}(${step.angles[axis]}deg)`);
    step.element.style.position = 'absolute';
    step.element.style.transformStyle = 'preserve-3d';
    const place = `translate3d(${step.x}px, ${step.y}px, ${step.z}px)`;
    step.element.style.transform = `translate(-50%, -50%) ${place} ${turns.join(' ')} scale(${step.scale})`;
  }
  for (const step of steps) {
    step.width = step.element.offsetWidth;
    step.height = step.element.offsetHeight;
  }
  return { ...deck, canvas, steps };
}

/**
 * Keeps the sizes of steps up to date, which change as fonts load and as the deck shows the active step in another way.
 * @param {Step[]} steps
 * @param {() => void} changed  called after a change
 * @returns {ResizeObserver}
 */
export function watchSizes(steps, changed) {
  const observer = new ResizeObserver((entries) => {
    for (const { target, borderBoxSize } of entries) {
      const { inlineSize, blockSize } = borderBoxSize[0];
      const isHorizontal = getComputedStyle(target).writingMode === 'horizontal-tb';
      const [width, height] = isHorizontal ? [inlineSize, blockSize] : [blockSize, inlineSize];
      Object.assign(
        steps.find(({ element }) => element === target),
        { width, height },
      );
    }
    changed();
  });
  for (const { element } of steps) observer.observe(element, { box: 'border-box' });
  return observer;
}

function readStep(element, before, index) {
  const order = element.getAttribute('data-rotate-order') ?? 'xyz';
  if ([...order].sort().join('') !== 'xyz') throw new Error(`data-rotate-order="${order}": not x, y and z, each once`);
  if (element.parentElement.closest('.step')) throw new Error('A step inside a step is not supported');
  const position = Object.fromEntries(
    ['x', 'y', 'z'].map((axis) => {
      if (element.hasAttribute(`data-rel-${axis}`) && !element.hasAttribute(`data-${axis}`))
        throw new Error('Relative positions (data-rel-) are not supported');
      return [axis, number(element, axis, before?.[axis] ?? 0)];
    }),
  );
  const angles = {
    x: number(element, 'rotate-x', 0),
    y: number(element, 'rotate-y', 0),
    z: number(element, 'rotate-z', number(element, 'rotate', 0)),
  };
  return {
    element,
    name: element.id || `step-${index + 1}`,
    ...position,
    angles,
    order,
    scale: number(element, 'scale', 1, SMALLEST_SCALE),
  };
}

/**
 * The factor from a step's units, at scale 1, to the pixels of a window.
 * @param {Deck} deck
 * @param {{width: number, height: number}} window
 */
export function windowScale(deck, window) {
  let scale = Math.min(window.width / deck.width, window.height / deck.height);
  if (deck.maxScale !== 0) scale = Math.min(scale, deck.maxScale);
  return Math.max(scale, deck.minScale);
}

/**
 * Lets the browser draw the deck as a camera sees it.
 * @param {Deck} deck
 * @param {import('./space.js').View} view
 * @param {number} active  which step the camera belongs to
 */
export function drawBy({ root, canvas, steps }, view, active) {
  root.style.transform = `perspective(${view.distance}px) scale(${view.zoom})`;
  canvas.style.transform = `matrix3d(${view.spaceToStep.toFloat64Array().join(', ')})`;
  steps.forEach(({ element }, i) => {
    element.classList.toggle('active', i === active);
    element.classList.toggle('present', i === active);
    element.classList.toggle('past', i < active);
    element.classList.toggle('future', i > active);
  });
}
