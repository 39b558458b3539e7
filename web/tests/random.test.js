// Pages of boxes in random places and spaces, from seeds: outlines are compared with probes, hits with the browser's. A
// failure names the seed; SEED=n checks that page alone, PAGES=n checks n pages.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { openBrowser } from './browser.js';
import { problemsOf } from './check.js';

const first = Number(process.env.SEED ?? 1);
const count = process.env.SEED ? 1 : Number(process.env.PAGES ?? 12);

/** A page of a seed: boxes in boxes, with whatever moves and turns them. */
function pageOf(seed) {
  let state = seed * 2654435761;
  const below = (limit) => {
    state = (Math.imul(state ^ (state >>> 15), 2246822519) + 3266489917) | 0;
    return ((state ^ (state >>> 13)) >>> 0) % limit;
  };
  const sometimes = (oneIn, text) => (below(oneIn) === 0 ? text() : '');
  const px = (low, high) => `${low + below((high - low) * 10) / 10}px`;
  const degrees = () => `${below(1200) / 10 - 60}deg`;
  let boxes = 0;
  const box = (depth) => {
    const style = [
      `width: ${px(40, 400)}; height: ${px(30, 250)}; background: hsl(${below(360)} 60% 70%)`,
      sometimes(3, () => `position: ${['relative', 'absolute', 'absolute', 'fixed', 'sticky'][below(5)]}; left: ${px(-20, 90)}; top: ${px(-20, 90)}`),
      sometimes(6, () => `z-index: ${below(5) - 2}`),
      sometimes(3, () => `margin: ${px(-5, 20)} ${px(-5, 20)}`),
      sometimes(4, () => `padding: ${px(0, 15)}; border: ${px(0, 9)} solid #555`),
      sometimes(5, () => 'box-sizing: border-box'),
      sometimes(5, () => ['display: inline-block', 'float: left', 'display: flex', 'display: grid'][below(4)]),
      sometimes(4, () => `perspective: ${px(300, 1500)}; perspective-origin: ${px(-50, 300)} ${below(100)}%`),
      sometimes(2, () => 'transform-style: preserve-3d'),
      sometimes(3, () => `transform: translate3d(${below(30)}%, ${px(-30, 30)}, ${px(-60, 60)}) rotate${'XYZ'[below(3)]}(${degrees()}) skewX(${below(20)}deg)`),
      sometimes(6, () => `rotate: ${['x', 'y', 'z', '1 2 3'][below(4)]} ${degrees()}`),
      sometimes(8, () => `scale: ${0.5 + below(10) / 10} ${0.5 + below(10) / 10}`),
      sometimes(6, () => `transform-origin: ${below(120)}% ${px(-20, 90)} ${px(-30, 30)}`),
      sometimes(12, () => 'opacity: 0.99'),
      sometimes(12, () => `zoom: ${0.8 + below(8) / 10}`),
    ];
    const inside = Array.from({ length: depth > 0 ? 1 + below(3) : 0 }, () => box(depth - 1)).join('');
    return `<div id="b${boxes++}" style="${style.filter(Boolean).join('; ')}">${inside}</div>`;
  };
  return `<style>body { min-height: 1200px; margin: ${px(0, 20)} }</style>${box(3)}${box(2)}`;
}

let browser;
let page;
before(async () => ({ browser, page } = await openBrowser()));
after(() => browser.close());

for (let seed = first; seed < first + count; ++seed) {
  test(`the page of seed ${seed}`, async () => {
    const testCase = {
      what: `seed ${seed}`, html: pageOf(seed), mayBeEdgeOn: true, paintedCorners: true, eitherHits: true,
      prepare: (seed) => window.scrollTo(0, (seed * 37) % 200), argument: seed,
    };
    assert.deepEqual(await problemsOf(page, testCase), []);
  });
}
