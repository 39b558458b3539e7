// The first tab: a deck, its outlines, and a camera that flies, turns and walks.
import { bundled } from './bundled.js';
import { drawBy, layOut, watchSizes } from './deck.js';
import { paint } from './overlay.js';
import { Clock, cornerPoints, cornersOf, factsOf, make, percent, pixels, showHits } from './panels.js';
import { paintPlan } from './plan.js';
import { between, hitTest, moved, placed, project, turned, viewFrom, viewFromStep } from './space.js';
import { Stage } from './stage.js';

const byId = (id) => document.getElementById(id);
const FLIGHT = 1100; // milliseconds
const WALK = 50; // units per key press
const TURN = 0.004; // radians per pixel of a drag

export class DeckTab {
  /** @param {(text: string) => void} say  shows a message */
  constructor(say) {
    this.say = say;
    this.deck = null;
    this.clock = new Clock();
    this.stage = new Stage(byId('deck-stage'), 'The deck, with the outlines of its layers', {
      point: () => this.#draw(),
      click: () => this.#flyToFront(),
      drag: (dx, dy) => this.#move({ base: turned(this.base, -dx * TURN, dy * TURN) }),
      wheel: (dx, dy) => this.#move({ walk: this.walk - dy }),
      key: (key) => this.#key(key),
      resize: () => this.#draw(),
    });
    this.#fillChoice();
    byId('deck-file').addEventListener('change', ({ target }) => {
      if (target.files[0]) this.open(target.files[0]);
      target.value = '';
    });
    byId('previous').addEventListener('click', () => this.#go(-1));
    byId('next').addEventListener('click', () => this.#go(1));
    byId('walk').addEventListener('input', ({ target }) => this.#move({ walk: Number(target.value) }));
    byId('deck-tolerance').addEventListener('input', () => this.#draw());
    addEventListener('resize', () => this.#draw());
  }

  /** Shows the first deck, once. */
  async start() {
    if (!this.deck) await this.#show(bundled.decks[0].html);
    this.#draw();
  }

  /** @param {File} file */
  async open(file) {
    const html = await file.text();
    if (!(await this.#show(html))) return;
    this.own = html;
    const choice = byId('deck-choice');
    choice.querySelector('[value="own"]')?.remove();
    choice.append(make('option', { value: 'own', selected: '' }, file.name));
  }

  #fillChoice() {
    const choice = byId('deck-choice');
    choice.append(...bundled.decks.map(({ name, title }) => make('option', { value: name }, title)));
    choice.addEventListener('change', () => {
      this.#show(bundled.decks.find(({ name }) => name === choice.value)?.html ?? this.own);
    });
  }

  // Replaces the deck unless there is an error in the new one.
  async #show(html) {
    const before = this.html;
    try {
      if (!(await this.stage.show(html))) return false;
      this.deck = layOut(this.stage.document);
      this.layers = placed(this.deck.steps);
      this.sizes?.disconnect();
      this.sizes = watchSizes(this.deck.steps, () => {
        this.layers = placed(this.deck.steps);
        this.#draw();
      });
    } catch (error) {
      this.say(error.message);
      if (before) await this.#show(before);
      return false;
    }
    this.html = html;
    this.clock = new Clock();
    byId('steps').replaceChildren(...this.deck.steps.map((step, i) => make('li', {}, this.#stepRow(step, i))));
    this.#arrive(0);
    return true;
  }

  #stepRow({ name }, i) {
    const bar = make('span', { class: 'share', 'aria-hidden': 'true' }, make('i'));
    return make(
      'button',
      { type: 'button', click: () => this.flyTo(i) },
      make('span', { class: 'name' }, name),
      bar,
      make('span', { class: 'number' }),
    );
  }

  // Puts the camera at a step.
  #arrive(step) {
    this.flight = null;
    this.stepPose = this.layers[step].pose;
    this.#change({ active: step, base: this.stepPose, walk: 0 });
  }

  // Changes the camera by hand, which ends a flight.
  #move(values) {
    this.flight = null;
    this.#change(values);
  }

  #change(values) {
    if (!this.deck) return;
    Object.assign(this, values);
    const slider = byId('walk');
    this.walk = Math.min(Math.max(this.walk, Number(slider.min)), Number(slider.max));
    slider.value = this.walk;
    this.#draw();
  }

  get pose() {
    return moved(this.base, 0, 0, -this.walk * this.base.scale);
  }

  /** @param {number} step */
  flyTo(step) {
    const from = this.pose;
    const to = this.layers[step].pose;
    if (matchMedia('(prefers-reduced-motion: reduce)').matches) return this.#arrive(step);
    const flight = { start: performance.now() };
    this.flight = flight;
    this.#change({ active: step, base: from, walk: 0 });
    const fly = (now) => {
      if (this.flight !== flight) return;
      const t = Math.min(Math.max((now - flight.start) / FLIGHT, 0), 1);
      if (t === 1) return this.#arrive(step);
      this.#change({ base: between(from, to, t * t * t * (t * (6 * t - 15) + 10)) });
      requestAnimationFrame(fly);
    };
    requestAnimationFrame(fly);
  }

  #go(by) {
    const count = this.deck.steps.length;
    this.flyTo((this.active + by + count) % count);
  }

  #flyToFront() {
    this.#drawNow(); // the pointer may have moved since
    const front = this.answer?.hits[0];
    if (front) this.flyTo(front.layer.index);
  }

  #key(key) {
    const letter = key.length === 1 ? key.toLowerCase() : key;
    const walk = { w: [0, 0, 1], s: [0, 0, -1], a: [-1, 0, 0], d: [1, 0, 0], q: [0, -1, 0], e: [0, 1, 0] }[letter];
    const tolerance = byId('deck-tolerance');
    if (walk) {
      const [x, y] = walk.map((value) => value * WALK * this.base.scale);
      this.#move({ base: moved(this.base, x, y, 0), walk: this.walk + walk[2] * WALK });
    } else if (letter === 'ArrowRight' || letter === 'PageDown' || letter === ' ') {
      this.#go(1);
    } else if (letter === 'ArrowLeft' || letter === 'PageUp') {
      this.#go(-1);
    } else if (letter === 'Home') {
      this.flyTo(0);
    } else if (letter === '+' || letter === '-') {
      tolerance.value = Number(tolerance.value) + (letter === '+' ? 2 : -2);
      this.#draw();
    } else {
      return false;
    }
    return true;
  }

  // Draws once in the next frame, however many changes there are before it.
  #draw() {
    if (!this.deck || this.drawing) return;
    this.drawing = requestAnimationFrame(() => {
      this.drawing = 0;
      if (this.stage.element.clientWidth > 0) this.#drawNow();
    });
  }

  #drawNow() {
    const { deck, stage } = this;
    const tolerance = Number(byId('deck-tolerance').value);
    const { pointer } = stage;
    const isAtStep = this.base === this.stepPose && this.walk === 0;
    const step = deck.steps[this.active];
    const view = isAtStep ? viewFromStep(deck, step, stage.size) : viewFrom(deck, this.pose, stage.size);
    drawBy(deck, view, this.active);
    const { layers, answer } = this.clock.measure(() => {
      const layers = project(this.layers, view);
      return { layers, answer: pointer ? hitTest(layers, view, pointer, tolerance) : { hits: [], nearest: null } };
    });
    this.answer = answer;
    const order = layers.map((layer) => answer.hits.findIndex((hit) => hit.layer === layer));
    const shapes = layers.map(({ points, step }, i) => ({ points, name: step.name, order: order[i] }));
    const nearest = answer.nearest && { points: answer.nearest.layer.points, distance: answer.nearest.distance };
    paint(stage.clearedContext(), stage.size, { shapes, pointer, tolerance, nearest });
    paintPlan(byId('plan'), layers, view, order);
    this.#fillPanels(layers, answer, tolerance);
  }

  #fillPanels(layers, { hits, nearest }, tolerance) {
    const name = `${this.deck.steps[this.active].name}  ${this.active + 1} / ${layers.length}`;
    if (byId('step-name').textContent !== name) byId('step-name').textContent = name;
    byId('deck-tolerance').nextElementSibling.textContent = `${tolerance} px`;
    byId('walk').nextElementSibling.textContent = this.walk.toFixed(0);
    showHits(
      byId('deck-hits'),
      hits.map(({ layer, depth }) => ({ name: layer.step.name, detail: `depth ${depth.toFixed(0)}` })),
      this.stage.pointer !== null,
    );
    byId('deck-nearest').replaceChildren(
      'nearest outline',
      make('b', {}, nearest ? nearest.layer.step.name : '–'),
      make('span', { class: 'number' }, nearest ? pixels(nearest.distance) : ''),
    );
    const cut = layers.filter(({ behind }) => behind.includes(true) && behind.includes(false)).length;
    byId('plan').setAttribute(
      'aria-label',
      `From above: ${layers.length} layers, ${cut} of them cut by the near plane`,
    );
    const shown = hits[0]?.layer ?? nearest?.layer ?? layers[this.active];
    byId('layer-name').textContent = shown.step.name;
    byId('layer').replaceChildren(cornersOf(cornerPoints(shown)), factsOf(describe(shown)));
    [...byId('steps').querySelectorAll('button')].forEach((button, i) => {
      const { share } = layers[i];
      button.querySelector('i').style.width = `${100 * (share ?? 0)}%`;
      button.querySelector('.number').textContent = percent(share);
      if (i === this.active) button.setAttribute('aria-current', 'step');
      else button.removeAttribute('aria-current');
    });
    byId('deck-speed').replaceChildren(
      make('b', {}, `${layers.length} layers`),
      ' in ',
      make('b', {}, `${this.clock.microseconds.toFixed(0)} µs`),
      ' a frame',
    );
  }
}

function describe({ pose, behind, edgeOn, share }) {
  const {
    position,
    rotation: { x, y, z, w },
    scale,
  } = pose;
  const length = Math.hypot(x, y, z);
  const degrees = (2 * Math.atan2(length, w) * 180) / Math.PI;
  const axis = [x, y, z].map((value) => (value / length).toFixed(2).replace(/^-0\.00$/, '0.00')).join(' ');
  const count = behind.filter(Boolean).length;
  return [
    ['Behind the eye', count === 0 ? 'no corner' : count === 4 ? 'all of it' : `${count} of 4 corners, cut`],
    ['On screen', edgeOn ? 'edge-on' : percent(share)],
    [
      'Position',
      Object.values(position)
        .map((value) => Number(value.toFixed(1)))
        .join('  '),
    ],
    ['Rotation', length < 1e-9 ? 'none' : `${degrees.toFixed(1)}° about ${axis}`],
    ['Scale', `${Number(scale.toFixed(3))}`],
  ];
}
