// A stage: a frame with a document that is shown, a canvas over it, and what the pointer and the keys do there.
//
// The document may come from anywhere. The frame is sandboxed: its scripts do not run, it opens no windows, sends no
// forms and does not navigate. It keeps this page's origin, without which its elements could not be read.

const OFFLINE = `<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline';
  img-src data:; font-src data:">`;
const DRAG = 4; // pixels before a press becomes a drag
const TAP_AGAIN = 24; // a tap this near to the one before acts as a click

/**
 * @typedef {object} Handlers
 * @property {(point: {x: number, y: number} | null) => void} point  the pointer moved, or left
 * @property {() => void} click
 * @property {(dx: number, dy: number) => void} drag
 * @property {(dx: number, dy: number) => void} wheel
 * @property {(key: string) => boolean} key  whether the key meant something
 * @property {() => void} resize
 */

export class Stage {
  /**
   * @param {HTMLElement} element
   * @param {string} label
   * @param {Handlers} handlers
   */
  constructor(element, label, handlers) {
    this.element = element;
    this.handlers = handlers;
    this.pointer = null;
    this.requests = 0;
    this.frame = document.createElement('iframe');
    this.frame.sandbox = 'allow-same-origin';
    this.frame.inert = true;
    this.frame.title = label;
    this.canvas = document.createElement('canvas');
    element.replaceChildren(this.frame, this.canvas);
    element.tabIndex = 0;
    element.setAttribute('role', 'application');
    element.setAttribute('aria-label', label);
    this.#listen();
    new ResizeObserver(() => this.#resize()).observe(element);
  }

  /** The shown document. */
  get document() {
    return this.frame.contentDocument;
  }

  get size() {
    return { width: this.element.clientWidth, height: this.element.clientHeight };
  }

  /**
   * Shows a document; resolves when it is laid out, to false if another one has been asked for since.
   * @param {string} html
   * @param {boolean} [fromNet]  whether its pictures, styles and fonts may load
   */
  async show(html, fromNet = false) {
    const request = ++this.requests;
    const loaded = new Promise((resolve) => this.frame.addEventListener('load', resolve, { once: true }));
    this.frame.srcdoc = (fromNet ? '' : OFFLINE) + html;
    await loaded;
    return request === this.requests;
  }

  /** Clears the canvas and returns its drawing context, in CSS pixels. */
  clearedContext() {
    const context = this.canvas.getContext('2d');
    const ratio = devicePixelRatio || 1;
    const { width, height } = this.size;
    if (this.canvas.width !== Math.round(width * ratio) || this.canvas.height !== Math.round(height * ratio)) {
      this.canvas.width = Math.round(width * ratio);
      this.canvas.height = Math.round(height * ratio);
    }
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    context.clearRect(0, 0, width, height);
    return context;
  }

  #resize() {
    const { width, height } = this.size;
    if (width > 0 && height > 0) this.handlers.resize();
  }

  #moveTo(x, y) {
    this.pointer = x === null ? null : { x, y };
    this.handlers.point(this.pointer);
  }

  #listen() {
    const { element, handlers } = this;
    const at = ({ clientX, clientY }) => {
      const box = element.getBoundingClientRect();
      return [clientX - box.left, clientY - box.top];
    };
    const fingers = new Map();
    let drag = null;
    let tapped = null;
    element.addEventListener('pointerdown', (event) => {
      fingers.set(event.pointerId, at(event));
      element.setPointerCapture(event.pointerId);
      drag = { from: at(event), last: at(event), moved: fingers.size > 1 };
    });
    element.addEventListener('pointermove', (event) => {
      const [x, y] = at(event);
      if (!fingers.has(event.pointerId)) return this.#moveTo(x, y);
      const other = [...fingers].find(([id]) => id !== event.pointerId)?.[1];
      if (other) {
        const [a, b] = [fingers.get(event.pointerId), [x, y]].map((p) => Math.hypot(p[0] - other[0], p[1] - other[1]));
        fingers.set(event.pointerId, [x, y]);
        return handlers.wheel(0, 3 * (a - b));
      }
      fingers.set(event.pointerId, [x, y]);
      drag.moved ||= Math.hypot(x - drag.from[0], y - drag.from[1]) > DRAG;
      if (!drag.moved) return;
      handlers.drag(x - drag.last[0], y - drag.last[1]);
      drag.last = [x, y];
    });
    element.addEventListener('pointerup', (event) => {
      fingers.delete(event.pointerId);
      if (!drag || drag.moved) return;
      const [x, y] = at(event);
      const again = tapped && Math.hypot(x - tapped[0], y - tapped[1]) < TAP_AGAIN;
      tapped = [x, y];
      this.#moveTo(x, y);
      // A finger has no hover: its first tap points, a second one at the place acts.
      if (event.pointerType === 'mouse' || again) {
        tapped = null;
        handlers.click();
      }
    });
    element.addEventListener('pointercancel', (event) => fingers.delete(event.pointerId));
    element.addEventListener('pointerleave', (event) => event.pointerType === 'mouse' && this.#moveTo(null));
    element.addEventListener(
      'wheel',
      (event) => {
        event.preventDefault();
        const unit = [1, 16, element.clientHeight][event.deltaMode];
        handlers.wheel(event.deltaX * unit, event.deltaY * unit);
      },
      { passive: false },
    );
    element.addEventListener('keydown', (event) => {
      if (event.ctrlKey || event.altKey || event.metaKey) return;
      const step = { ArrowLeft: [-8, 0], ArrowRight: [8, 0], ArrowUp: [0, -8], ArrowDown: [0, 8] }[event.key];
      if (event.shiftKey && step) {
        const { width, height } = this.size;
        const { x, y } = this.pointer ?? { x: width / 2, y: height / 2 };
        this.#moveTo(Math.min(Math.max(x + step[0], 0), width), Math.min(Math.max(y + step[1], 0), height));
      } else if (event.key === 'Enter') {
        handlers.click();
      } else if (!handlers.key(event.key)) {
        return;
      }
      event.preventDefault();
    });
  }
}
