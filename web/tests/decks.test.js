// The decks of examples/scene, from each of their cameras, laid out by the browser.
import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { after, before, test } from 'node:test';
import { openBrowser } from './browser.js';
import { problemsOf } from './check.js';

// Runs in the page: lays the deck out as its format says and looks from one of its steps.
function lookFrom(camera) {
  const root = document.getElementById('impress');
  const number = (element, name, otherwise) => Number(element.dataset[name] ?? otherwise);
  const steps = [...root.querySelectorAll('.step')];
  const canvas = document.createElement('div');
  canvas.append(...root.childNodes);
  root.append(canvas);
  let before = { x: 0, y: 0, z: 0 };
  const poses = steps.map((step) => {
    before = Object.fromEntries(['x', 'y', 'z'].map((axis) => [axis, number(step, axis, before[axis])]));
    const angles = { x: number(step, 'rotateX', 0), y: number(step, 'rotateY', 0), z: number(step, 'rotateZ', step.dataset.rotate ?? 0) };
    return { ...before, angles, order: [...(step.dataset.rotateOrder ?? 'xyz')], scale: number(step, 'scale', 1) };
  });
  const turn = ({ angles, order }) => order.map((axis) => `rotate${axis.toUpperCase()}(${angles[axis]}deg)`).join(' ');
  const place = 'position: absolute; transform-style: preserve-3d; opacity: 1;';
  steps.forEach((step, i) => {
    const { x, y, z, scale } = poses[i];
    step.style.cssText = `${place} transform: translate(-50%, -50%) translate3d(${x}px, ${y}px, ${z}px) ${turn(poses[i])} scale(${scale})`;
  });
  const { x, y, z, angles, order, scale } = poses[camera];
  const back = { angles: { x: -angles.x, y: -angles.y, z: -angles.z }, order: [...order].reverse() };
  canvas.style.cssText = `${place} transform: ${turn(back)} translate3d(${-x}px, ${-y}px, ${-z}px)`;
  const fitting = Math.min(innerWidth / number(root, 'width', 1024), innerHeight / number(root, 'height', 768));
  const windowScale = Math.max(Math.min(fitting, number(root, 'maxScale', 1) || Infinity), number(root, 'minScale', 0));
  const perspective = number(root, 'perspective', 1000) / windowScale;
  root.style.cssText = `${place} top: 50%; left: 50%; transform-origin: 0 0; transform: perspective(${perspective}px) scale(${windowScale / scale})`;
  document.body.style.overflow = 'hidden';
}

let browser;
let page;
before(async () => ({ browser, page } = await openBrowser()));
after(() => browser.close());

for (const deck of ['gallery', 'zoom']) {
  const html = await readFile(new URL(`../../examples/scene/decks/${deck}.html`, import.meta.url), 'utf8');
  const cameras = html.match(/class="step"/g).length;
  for (let camera = 0; camera < cameras; ++camera) {
    test(`${deck}, camera ${camera}`, async () => {
      const testCase = {
        what: deck, html: html.replace(/<script.*/g, ''), prepare: lookFrom, argument: camera,
        paint: 'cut', skip: ['impress'], mayBeEdgeOn: true, eitherHits: true,
      };
      assert.deepEqual(await problemsOf(page, testCase), []);
    });
  }
}
