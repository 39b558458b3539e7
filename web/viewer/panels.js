// Fills the panels. Texts of shown documents are set as text, never as HTML.
import { colourOf } from './overlay.js';

const MOST = 50; // rows of a list

/**
 * An element with attributes, listeners (values that are functions) and children.
 * @param {string} name
 * @param {Record<string, unknown>} attributes
 * @param {...(Node | string)} children
 */
export function make(name, attributes = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) {
    if (typeof value === 'function') element.addEventListener(key, value);
    else if (value !== null && value !== false) element.setAttribute(key, value);
  }
  element.append(...children);
  return element;
}

export const pixels = (value) => `${value.toFixed(value < 100 ? 2 : 1)} px`;
export const percent = (share) =>
  share === null
    ? '–'
    : share === 0
      ? '0 %'
      : share < 0.001
        ? '<0.1 %'
        : `${(100 * share).toFixed(share < 0.0995 ? 1 : 0)} %`;

/**
 * The list of what is under the pointer.
 * @param {HTMLElement} list
 * @param {{name: string, detail: string}[]} hits
 * @param {boolean} isPointing
 */
export function showHits(list, hits, isPointing) {
  const shown = hits.slice(0, MOST);
  list.replaceChildren(
    ...shown.map(({ name, detail }, i) =>
      make(
        'li',
        {},
        make('b', { style: `background: ${colourOf(i)}` }, String(i + 1)),
        make('span', { class: 'name' }, name),
        make('span', { class: 'number' }, detail),
      ),
    ),
  );
  if (isPointing) announce(shown.map(({ name }) => name));
  if (hits.length === 0)
    list.append(make('li', { class: 'empty' }, isPointing ? 'Nothing here' : 'Point at the stage'));
}

/**
 * The four corners of a layer or an element.
 * @param {({x: number, y: number} | null)[]} corners  null for one that is behind the eye
 */
export function cornersOf(corners) {
  const names = ['top left', 'top right', 'bottom right', 'bottom left'];
  const text = ({ x, y }) => `${x.toFixed(1)}, ${y.toFixed(1)}`;
  return make(
    'div',
    { class: 'corners' },
    ...[0, 1, 3, 2].map((i) =>
      make(
        'div',
        {
          class: corners[i] ? '' : 'behind',
          'aria-label': `${names[i]}: ${corners[i] ? text(corners[i]) : 'behind the eye'}`,
        },
        corners[i] ? text(corners[i]) : 'behind the eye',
      ),
    ),
  );
}

/**
 * The corners that an outline has: its points but those where an edge is cut.
 * @param {{points: {x: number, y: number}[], behind: boolean[]}} outline
 */
export function cornerPoints({ points, behind }) {
  const corners = [null, null, null, null];
  let at = 0;
  for (let i = 0; i < 4; ++i) {
    const next = behind[(i + 1) % 4];
    if (!behind[i]) corners[i] = points[at++];
    if (behind[i] !== next) ++at;
  }
  return points.length > 0 ? corners : [null, null, null, null];
}

/** @param {[string, string][]} facts */
export const factsOf = (facts) =>
  make('dl', { class: 'facts' }, ...facts.flatMap(([name, value]) => [make('dt', {}, name), make('dd', {}, value)]));

let said;
/** Has screen readers say what is under the pointer, once it rests. */
function announce(names) {
  clearTimeout(said);
  said = setTimeout(() => {
    document.getElementById('said').textContent = names.length === 0 ? 'Nothing here' : names.join(', ');
  }, 500);
}

/** Measures work that takes microseconds: the mean of the last 60 runs but the slowest tenth. */
export class Clock {
  #times = [];
  measure(work) {
    const start = performance.now();
    const result = work();
    this.#times.push(performance.now() - start);
    if (this.#times.length > 60) this.#times.shift();
    return result;
  }
  get microseconds() {
    const usual = [...this.#times].sort((a, b) => a - b).slice(0, Math.ceil(0.9 * this.#times.length));
    return (1000 * usual.reduce((sum, time) => sum + time, 0)) / Math.max(usual.length, 1);
  }
}
