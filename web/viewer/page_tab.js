// The second tab: any page, and the outlines of its elements.
import { look } from 'zan/dom.js';
import { bundled } from './bundled.js';
import { paint } from './overlay.js';
import { Clock, cornerPoints, cornersOf, factsOf, make, showHits } from './panels.js';
import { Stage } from './stage.js';

const byId = (id) => document.getElementById(id);
const MOST = 3000; // outlines that are drawn at a time

export class PageTab {
  /** @param {(text: string) => void} say  shows a message */
  constructor(say) {
    this.say = say;
    this.clock = new Clock();
    this.kept = null;
    this.front = null;
    this.stage = new Stage(byId('page-stage'), 'The page, with the outlines of its elements', {
      point: () => this.#draw(),
      click: () => this.#keep(),
      drag: (dx, dy) => this.#scroll(-dx, -dy),
      wheel: (dx, dy) => this.#scroll(dx, dy),
      key: (key) => this.#key(key),
      resize: () => this.#draw(),
    });
    const choice = byId('page-choice');
    choice.append(...bundled.pages.map(({ name, title }) => make('option', { value: name }, title)));
    choice.addEventListener('change', () => {
      this.#show(bundled.pages.find(({ name }) => name === choice.value)?.html ?? this.own);
    });
    byId('page-file').addEventListener('change', ({ target }) => {
      if (target.files[0]) this.open(target.files[0]);
      target.value = '';
    });
    byId('paste').addEventListener('click', () => this.#toggleSource());
    byId('source').addEventListener('submit', (event) => {
      event.preventDefault();
      this.#showOwn(byId('source-text').value, 'Pasted page');
      this.#toggleSource();
    });
    byId('page-tolerance').addEventListener('input', () => this.#draw());
    byId('from-net').addEventListener('change', () => this.#show(this.html));
    byId('all-outlines').addEventListener('change', () => this.#draw());
    addEventListener('resize', () => this.#draw());
  }

  /** Shows the first page, once. */
  async start() {
    if (!this.html) await this.#show(bundled.pages[0].html);
    this.#draw();
  }

  /** @param {File} file */
  async open(file) {
    await this.#showOwn(await file.text(), file.name);
  }

  #toggleSource() {
    const form = byId('source');
    form.hidden = !form.hidden;
    byId('paste').setAttribute('aria-expanded', !form.hidden);
    if (!form.hidden) byId('source-text').focus();
  }

  async #showOwn(html, name) {
    const choice = byId('page-choice');
    choice.querySelector('[value="own"]')?.remove();
    choice.append(make('option', { value: 'own', selected: '' }, name));
    this.own = html;
    await this.#show(html);
  }

  async #show(html) {
    this.html = html;
    this.clock = new Clock();
    this.kept = null;
    if (await this.stage.show(html, byId('from-net').checked)) this.#draw();
  }

  #keep() {
    this.#drawNow(this.stage.document); // the pointer may have moved since
    this.kept = this.kept === this.front ? null : this.front;
    this.#draw();
  }

  // Scrolls what the pointer is over, as far as it goes, else the page.
  #scroll(dx, dy) {
    const { document } = this.stage;
    for (let element = this.front; element; element = element.parentElement) {
      const { overflowY } = document.defaultView.getComputedStyle(element);
      const room = dy > 0 ? element.scrollHeight - element.clientHeight - element.scrollTop : element.scrollTop;
      if (!['auto', 'scroll'].includes(overflowY) || room < 1) continue;
      element.scrollBy(dx, dy);
      return this.#draw();
    }
    document.defaultView.scrollBy(dx, dy);
    this.#draw();
  }

  #key(key) {
    const by = { ArrowDown: 60, ArrowUp: -60, PageDown: 500, PageUp: -500, ' ': 500 }[key];
    if (!by) return false;
    this.#scroll(0, by);
    return true;
  }

  #draw() {
    if (!this.html || this.drawing) return;
    this.drawing = requestAnimationFrame(() => {
      this.drawing = 0;
      const { document } = this.stage;
      if (this.stage.element.clientWidth === 0 || !document?.body) return;
      this.#drawNow(document);
      if (document.getAnimations().some(({ playState }) => playState === 'running')) this.#draw();
    });
  }

  #drawNow(document) {
    const { stage } = this;
    const { pointer } = stage;
    const tolerance = Number(byId('page-tolerance').value);
    if (!this.kept?.isConnected) this.kept = null;
    const everything = byId('all-outlines').checked ? [...document.body.querySelectorAll('*')].slice(0, MOST) : [];
    const { hits, outlines } = this.clock.measure(() => {
      const seen = look(document);
      const hits = pointer ? seen.hitsAt(pointer.x, pointer.y, { tolerance }) : [];
      const asked = new Set([...everything, ...hits, ...(this.kept ? [this.kept] : [])]);
      return { hits, outlines: new Map([...asked].map((element) => [element, seen.outlineOf(element)])) };
    });
    this.front = hits[0] ?? null;
    // Without the root and the body, which are behind everything.
    const listed = hits.filter((element) => element !== document.documentElement && element !== document.body);
    const shapes = [...outlines].map(([element, { points }]) => ({
      points,
      name: nameOf(element),
      order: listed.indexOf(element),
      kept: element === this.kept,
    }));
    paint(stage.clearedContext(), stage.size, { shapes, pointer, tolerance });
    showHits(
      byId('page-hits'),
      listed.map((element) => ({ name: nameOf(element), detail: sizeOf(element) })),
      pointer !== null,
    );
    byId('page-tolerance').nextElementSibling.textContent = `${tolerance} px`;
    this.#fillElement(this.kept ?? listed[0], outlines);
    byId('page-speed').replaceChildren(
      make('b', {}, `${outlines.size} ${outlines.size === 1 ? 'outline' : 'outlines'}`),
      pointer ? ' and hits in ' : ' in ',
      make('b', {}, `${this.clock.microseconds.toFixed(0)} µs`),
      ' a frame',
    );
  }

  #fillElement(element, outlines) {
    byId('element-name').textContent = element ? nameOf(element) : '';
    if (!element)
      return byId('element').replaceChildren(make('p', { class: 'empty' }, 'Point at an element; a click keeps it.'));
    const outline = outlines.get(element);
    const count = outline.behind.filter(Boolean).length;
    const path = [];
    for (let at = element; at && at.localName !== 'html'; at = at.parentElement) path.unshift(at.localName);
    byId('element').replaceChildren(
      cornersOf(cornerPoints(outline)),
      factsOf([
        ['Outline', `${outline.points.length} points`],
        ['Behind the eye', count === 0 ? 'no corner' : count === 4 ? 'all of it' : `${count} of 4 corners, cut`],
        ['Edge-on', outline.edgeOn ? 'yes' : 'no'],
        ['Exact', outline.exact ? 'yes' : 'no: something here is not supported'],
        ['Path', path.slice(-5).join(' › ')],
      ]),
    );
  }
}

function nameOf(element) {
  const classes = typeof element.className === 'string' ? element.className.trim().split(/\s+/)[0] : '';
  return element.localName + (element.id ? `#${element.id}` : classes ? `.${classes}` : '');
}

function sizeOf(element) {
  const { offsetWidth, offsetHeight } = element;
  return offsetWidth === undefined ? '' : `${offsetWidth} × ${offsetHeight}`;
}
