// What computed styles say about an element's own matrix, about 3D spaces and flattening, and about stacking. Lengths
// are multiplied by the element's zoom, which makes them viewport pixels before any transform.
import { concat, identity, rotation, scaling, translation } from './geometry.js';

/** @typedef {import('./geometry.js').Matrix} Matrix */

const REPLACED = new Set([
  'audio', 'button', 'canvas', 'embed', 'iframe', 'img', 'input', 'meter', 'object', 'progress', 'select', 'svg',
  'textarea', 'video',
]);
const AXES = { x: [1, 0, 0], y: [0, 1, 0], z: [0, 0, 1] };

/** Whether an element is a replaced element or a form control: one box even where `display` is `inline`. */
export const isReplaced = (element) => REPLACED.has(element.localName);

/** Whether an element has inline boxes, which have no size of their own and cannot be transformed. */
export const isInlineBox = (element, display) =>
  (display === 'inline' || display === 'ruby' || display === 'ruby-text') && !isReplaced(element);

/** Whether transforms and perspective apply to an element. */
export const isTransformable = (element, display) =>
  !isInlineBox(element, display) && display !== 'contents' && !display.startsWith('table-column');

/**
 * A computed length or percentage; also calc(), min(), max() and clamp().
 * @param {string} text
 * @param {number} whole  the length of 100 %
 * @param {number} zoom
 * @returns {number}
 */
export function length(text, whole, zoom) {
  const simple = /^(-?[\d.]+(?:e[-+]?\d+)?)(px|%)?$/.exec(text);
  if (simple) return simple[2] === '%' ? (Number(simple[1]) * whole) / 100 : Number(simple[1]) * zoom;
  const tokens = text.match(/[a-z-]+\(|[(),*/]|[-+](?=\s)|[-+]?[\d.]+(?:e[-+]?\d+)?(?:px|%)?/gi) ?? [];
  let at = 0;
  const functions = {
    min: Math.min,
    max: Math.max,
    clamp: (low, value, high) => Math.max(low, Math.min(value, high)),
  };
  const term = () => {
    const token = tokens[at++] ?? 'nothing';
    if (!token.endsWith('(')) return length(token, whole, zoom);
    const values = [sum()];
    while (tokens[at] === ',') {
      ++at;
      values.push(sum());
    }
    ++at;  // the closing parenthesis
    return (functions[token.slice(0, -1)] ?? ((value) => value))(...values);
  };
  const product = () => {
    let value = term();
    while (tokens[at] === '*' || tokens[at] === '/') {
      const operator = tokens[at++];
      // A factor is a plain number, which the zoom does not scale.
      value = operator === '*' ? (value * term()) / zoom : (value / term()) * zoom;
    }
    return value;
  };
  const sum = () => {
    let value = product();
    while (tokens[at] === '+' || tokens[at] === '-') value += tokens[at++] === '+' ? product() : -product();
    return value;
  };
  return tokens.length > 1 ? sum() : NaN;
}

/** Splits a computed value at the spaces outside parentheses. */
function parts(text) {
  const result = [''];
  let depth = 0;
  for (const character of text) {
    depth += Number(character === '(') - Number(character === ')');
    if (character === ' ' && depth === 0) result.push('');
    else result[result.length - 1] += character;
  }
  return result;
}

/**
 * `transform` as a matrix in viewport pixels. Its functions are multiplied here where the browser exposes them (typed
 * OM): the six digits of `matrix3d(…)` are too few near the eye.
 */
function transformMatrix(element, text, width, height, zoom) {
  const typed = text.startsWith('matrix3d') ? typedTransform(element, width / zoom, height / zoom) : null;
  const m = typed ?? parseTransform(text);
  for (const i of [12, 13, 14]) m[i] *= zoom;
  for (const i of [3, 7, 11]) m[i] /= zoom;
  return m;
}

function parseTransform(text) {
  if (text === 'none') return identity();
  const numbers = text.slice(text.indexOf('(') + 1, -1).split(',').map(Number);
  const [a, b, c, d, e, f] = numbers;
  return new Float64Array(numbers.length === 16 ? numbers : [a, b, 0, 0, c, d, 0, 0, 0, 0, 1, 0, e, f, 0, 1]);
}

function typedTransform(element, width, height) {
  const value = element.computedStyleMap?.().get('transform');
  if (!value?.toMatrix) return null;
  try {
    for (const step of value) {
      if (!('x' in step) || typeof step.x?.to !== 'function' || step.constructor.name !== 'CSSTranslate') continue;
      step.x = CSS.px(length(step.x.toString(), width, 1));
      step.y = CSS.px(length(step.y.toString(), height, 1));
    }
    return value.toMatrix().toFloat64Array();
  } catch {
    return null;  // a length that cannot be resolved without layout
  }
}

/** `rotate`: an optional axis (a letter or three numbers), then the angle. */
function parseRotation(text) {
  const tokens = text.split(' ');
  const degrees = parseFloat(tokens.pop());
  const axis = tokens.length === 3 ? tokens.map(Number) : (AXES[tokens[0]] ?? AXES.z);
  return rotation(axis, degrees);
}

function parseScale(text) {
  const [x, y = x, z = 1] = text.split(' ').map(Number);
  return scaling(x, y, z);
}

/**
 * The matrix of an element's own transform, with the top left corner of its border box as the origin.
 * @param {Element} element
 * @param {string} transformOrigin
 * @param {{transform: string, translate: string, rotate: string, scale: string}} transforms
 * @param {{width: number, height: number}} size
 * @param {number} zoom
 * @returns {Matrix}
 */
export function ownMatrix(element, transformOrigin, { transform, translate, rotate, scale }, { width, height }, zoom) {
  const steps = [];
  if (transform !== 'none') steps.push(transformMatrix(element, transform, width, height, zoom));
  if (scale !== 'none') steps.push(parseScale(scale));
  if (rotate !== 'none') steps.push(parseRotation(rotate));
  if (translate !== 'none') {
    const [x, y = '0px', z = '0px'] = parts(translate);
    steps.push(translation(length(x, width, zoom), length(y, height, zoom), length(z, 0, zoom)));
  }
  const [x, y, z = 0] = transformOrigin.split(' ').map((text) => parseFloat(text) * zoom);
  return concat(translation(-x, -y, -z), ...steps, translation(x, y, z));
}

/**
 * The computed values of an element, typed where the browser exposes that (typed OM): reading them takes less time.
 * @param {Element} element
 * @param {import('../dom.js').Look} look
 * @returns {StylePropertyMapReadOnly | CSSStyleDeclaration}
 */
export const valuesOf = (element, look) =>
  element.computedStyleMap ? element.computedStyleMap() : look.styleOf(element);

/** A computed value as text. */
export const read = (values, property) =>
  values.get ? values.get(property).toString() : values.getPropertyValue(property);

/** Whether `transform` leaves the plane. */
export function leavesPlane(values) {
  if (!values.get) return values.transform.startsWith('matrix3d');
  const transform = values.get('transform');
  return transform.is2D !== true && transform.value !== 'none';
}

/** The linear part of an element's own matrix; null if it contains a perspective. */
export function linearMatrix(element, values, look) {
  const steps = [];
  const m = elementsOf(values.get?.('transform')) ?? parseTransform(look.styleOf(element).transform);
  if (m[3] !== 0 || m[7] !== 0 || m[11] !== 0 || m[15] !== 1) return null;
  m[12] = m[13] = m[14] = 0;
  const scale = read(values, 'scale');
  const rotate = read(values, 'rotate');
  if (scale !== 'none') steps.push(parseScale(scale));
  if (rotate !== 'none') steps.push(parseRotation(rotate));
  return steps.length === 0 ? m : concat(m, ...steps);
}

// The matrix of a typed value; null where a length depends on layout.
function elementsOf(transform) {
  if (transform?.value === 'none') return identity();
  try {
    const m = transform.toMatrix();
    return [m.m11, m.m12, m.m13, m.m14, m.m21, m.m22, m.m23, m.m24, m.m31, m.m32, m.m33, m.m34, m.m41, m.m42, m.m43, m.m44];
  } catch {
    return null;
  }
}

/**
 * The four properties that transform an element; null when none does. They are read once: serializing a matrix is slow.
 */
export function transformsOf({ transform, translate, rotate, scale }) {
  if (transform === 'none' && translate === 'none' && rotate === 'none' && scale === 'none') return null;
  return { transform, translate, rotate, scale };
}

/** The distance from the eye in the perspective that an element applies to its children; 0 for none. */
export function perspectiveDistance(style, zoom) {
  const { perspective } = style;
  return perspective === 'none' ? 0 : Math.max(parseFloat(perspective), 1) * zoom;
}

/** Whether the overflow of an element applies to the viewport instead (overflow propagation). */
export function givesOverflowToViewport(element, look) {
  const { body, documentElement } = element.ownerDocument;
  if (element === documentElement) return true;
  if (element !== body) return false;
  const root = look.styleOf(documentElement);
  return root.overflowX === 'visible' && root.overflowY === 'visible' && root.contain === 'none';
}

const words = (text) => text.split(/[\s,]+/);
const contains = (text, list) => words(text).some((word) => list.includes(word));

/** Whether paint containment flattens a box. The browsers' bounding boxes of its children ignore it. */
export const containsPaint = (style) =>
  contains(style.contain, ['paint', 'content', 'strict']) || style.contentVisibility !== 'visible';

/**
 * Whether another property flattens an element with `preserve-3d`; paint containment is left out. The root always is
 * flat: the browser's own style sheet gives it a view-transition-name. A body is flat even where its overflow applies
 * to the viewport.
 * @param {CSSStyleDeclaration} style
 */
export function isForcedFlat(style) {
  const clips = style.overflowX !== 'visible' || style.overflowY !== 'visible';
  const positioned = style.position === 'absolute' || style.position === 'fixed';
  return (
    clips ||
    style.opacity < 1 ||
    style.filter !== 'none' ||
    given(style.backdropFilter) ||
    style.clipPath !== 'none' ||
    (positioned && style.clip !== 'auto') ||
    style.mixBlendMode !== 'normal' ||
    style.isolation !== 'auto' ||
    hasMask(style) ||
    given(style.webkitBoxReflect) ||
    given(style.viewTransitionName) ||
    contains(style.willChange, ['opacity', 'filter', 'backdrop-filter'])
  );
}

// Whether a property that not every browser supports is set.
const given = (value) => value !== undefined && value !== '' && value !== 'none';
const hasMask = (style) =>
  given(style.maskImage ?? style.webkitMaskImage) || given(style.maskBorderSource ?? style.webkitMaskBoxImageSource);

/** Whether an element is first drawn on a surface of its own: what is cut off there, behind the eye, is lost. */
export const isDrawnApart = (style) =>
  style.filter !== 'none' || given(style.backdropFilter) || style.clipPath !== 'none' || hasMask(style) ||
  style.mixBlendMode !== 'normal';

const STACKING = [
  'transform', 'translate', 'rotate', 'scale', 'perspective', 'opacity', 'filter', 'backdrop-filter', 'clip-path', 'mask',
  'mask-image', 'mask-border', 'mix-blend-mode', 'isolation', 'position', 'z-index', 'transform-style', 'contain',
  'view-transition-name', 'offset-path', '-webkit-box-reflect',
];

/**
 * Whether an element is a stacking context for a reason other than its `z-index`.
 * @param {Element} element
 * @param {CSSStyleDeclaration} style
 */
export function isolatesStacking(element, style) {
  if (style.position === 'fixed' || style.position === 'sticky') return true;
  if (style.opacity < 1 || style.mixBlendMode !== 'normal' || style.isolation !== 'auto') return true;
  if (style.filter !== 'none' || given(style.backdropFilter) || style.clipPath !== 'none' || hasMask(style)) return true;
  if (given(style.viewTransitionName) || given(style.offsetPath) || given(style.webkitBoxReflect)) return true;
  if (style.willChange !== 'auto' && contains(style.willChange, STACKING)) return true;
  if (!isTransformable(element, style.display)) return false;
  if (transformsOf(style) || style.perspective !== 'none' || style.transformStyle === 'preserve-3d') return true;
  return contains(style.contain, ['layout', 'paint', 'content', 'strict']) || style.contentVisibility !== 'visible';
}
