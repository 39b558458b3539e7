// The viewer, opened from the disk and used with mouse, keyboard and finger.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync } from 'node:fs';
import { after, afterEach, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { openBrowser } from './browser.js';

const VIEWER = new URL('../../build/web/viewer/index.html', import.meta.url).href;
const DECKS = new URL('../../examples/scene/decks/', import.meta.url);
const SCENE = ['demo', 'release']
  .map((build) => fileURLToPath(new URL(`../../build/${build}/examples/scene/zan-scene`, import.meta.url)))
  .find(existsSync);

let browser;
let page;
let errors;
before(async () => {
  ({ browser } = await openBrowser());
  await open({ viewport: { width: 1280, height: 800 }, reducedMotion: 'reduce' });
});
after(() => browser.close());
afterEach(() => assert.deepEqual(errors, []));

async function open(options) {
  await page?.close();
  errors = [];
  page = await browser.newPage(options);
  page.on('pageerror', (error) => errors.push(error.message));
  await page.goto(VIEWER);
  await page.waitForSelector('[data-ready]');
}

const names = (list) => page.$$eval(`${list} .name`, (all) => all.map((name) => name.textContent));
const cornerTexts = () => page.$$eval('#layer .corners div', (all) => all.map((corner) => corner.textContent));
const text = (selector) => page.$eval(selector, (element) => element.textContent);
// The viewer draws in the next frame; the one after that begins when it has drawn.
const drawn = () =>
  page.evaluate(() => new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(resolve))));

async function pointAt(x, y) {
  const stage = await page.$('.view:not([hidden]) .stage');
  const box = await stage.boundingBox();
  await page.mouse.move(box.x + x * box.width, box.y + y * box.height);
  await drawn();
}

async function choose(deck) {
  await page.mouse.move(2, 2);
  await page.fill('#deck-tolerance', '6');
  await page.$eval('#steps', (steps) => steps.replaceChildren());
  await page.selectOption('#deck-choice', deck);
  await page.waitForSelector('#steps li');
  await drawn();
}

async function drop(name, content) {
  await page.evaluate(
    ([name, content]) => {
      const dataTransfer = new DataTransfer();
      dataTransfer.items.add(new File([content], name));
      dispatchEvent(new DragEvent('drop', { dataTransfer, cancelable: true }));
    },
    [name, content],
  );
}

test('the self-check runs in the page', async () => {
  await page.waitForSelector('.check.good, .check.bad', { timeout: 120000 });
  assert.match(await text('#selfcheck'), /the same bits: (\d+) of \1 operations/);
});

// The layers of this deck are rectangles, so the browser's own hit is the layer that is in front.
test('the layer in front is the one that the browser hits, from every step', async () => {
  await choose('gallery');
  await page.$eval('#deck-stage iframe', (frame) => (frame.inert = false));
  await page.focus('#deck-stage');
  const unlike = [];
  for (const step of await names('#steps')) {
    for (const [x, y] of [
      [0.11, 0.13],
      [0.31, 0.52],
      [0.52, 0.41],
      [0.77, 0.33],
      [0.63, 0.83],
      [0.93, 0.71],
    ]) {
      await pointAt(x, y);
      const browsers = await page.$eval(
        '#deck-stage iframe',
        (frame, [x, y]) => {
          const hit = frame.contentDocument.elementFromPoint(x * frame.clientWidth, y * frame.clientHeight);
          return hit?.closest('.step')?.id;
        },
        [x, y],
      );
      const zans = (await names('#deck-hits'))[0];
      if (zans !== browsers) unlike.push(`${step} (${x}, ${y}): ${zans}, in the browser ${browsers}`);
    }
    await page.keyboard.press('ArrowRight');
  }
  assert.deepEqual(unlike, []);
});

test('the list has what is under the pointer, front to back, and the distance of the nearest outline', async () => {
  await choose('gallery');
  await pointAt(0.4, 0.4);
  assert.deepEqual(await names('#deck-hits'), ['doorway', 'painting', 'back-wall']);
  assert.match(await text('#deck-nearest'), /^nearest outlinepainting\d+\.\d+ px$/);
  await page.mouse.move(2, 2);
  await drawn();
  assert.equal(await text('#deck-hits'), 'Point at the stage');
});

test('a step without a size is a camera, not a layer', async () => {
  await choose('dusk');
  await pointAt(0.5, 0.5);
  assert.deepEqual((await names('#deck-hits')).slice(0, 2), ['forest', 'near-range']);
  assert.ok(!(await names('#deck-hits')).includes('overview'));
});

test('a wider tolerance hits what is beside', async () => {
  await choose('gallery');
  await pointAt(0.29, 0.4);
  assert.deepEqual(await names('#deck-hits'), ['doorway', 'back-wall']);
  await page.focus('#deck-tolerance');
  await page.keyboard.press('End');
  await drawn();
  await pointAt(0.29, 0.4);
  assert.ok((await names('#deck-hits')).includes('painting'));
});

test('walking cuts the layers that the camera passes', async () => {
  await choose('gallery');
  const cut = async () => Number(/(\d+) of them cut/.exec(await page.getAttribute('#plan', 'aria-label'))[1]);
  assert.equal(await cut(), 0);
  await page.fill('#walk', '1500');
  await page.focus('#deck-stage');
  for (let i = 0; i < 10; ++i) await page.keyboard.press('a');
  await drawn();
  assert.equal(await cut(), 3);
  await pointAt(0.02, 0.5);
  assert.equal(await text('#layer-name'), 'left-wall');
  assert.match(await text('#layer'), /2 of 4 corners, cut/);
  // The wall's far edge is upright, its middle at half the height of the stage. The panel has the corners in two rows.
  const corners = await cornerTexts();
  const far = [0, 2, 1, 3].map((i) => corners[i]).filter((corner) => corner !== 'behind the eye');
  const [upper, lower] = far.map((corner) => corner.split(', ').map(Number));
  assert.equal(upper[0], lower[0]);
  const middle = (await (await page.$('#deck-stage')).boundingBox()).height / 2;
  assert.ok(Math.abs((upper[1] + lower[1]) / 2 - middle) < 0.2, `${upper} and ${lower}, not about ${middle}`);
});

test('keys for steps, walking and the pointer, and turning by a drag', async () => {
  await choose('gallery');
  await page.focus('#deck-stage');
  await page.keyboard.press('ArrowLeft');
  await drawn();
  assert.match(await text('#step-name'), /^exit +9 \/ 9/);
  await page.keyboard.press('Home');
  await page.keyboard.press('w');
  await page.keyboard.press('Shift+ArrowLeft');
  await drawn();
  assert.equal(await page.inputValue('#walk'), '50');
  assert.equal((await names('#deck-hits'))[0], 'doorway');
  const place = () =>
    page.$eval(
      '#deck-stage iframe',
      (frame) => frame.contentDocument.getElementById('painting').getBoundingClientRect().left,
    );
  const before = await place();
  await pointAt(0.3, 0.5);
  await page.mouse.down();
  await pointAt(0.5, 0.5);
  await page.mouse.up();
  await drawn();
  assert.notEqual(await place(), before);
  assert.match(await text('#step-name'), /^doorway/);
});

test('a dropped deck is shown, layers are as large as the browser makes them, and scripts do not run', async () => {
  await drop(
    'own.html',
    `<style>.active { padding: 20px }</style><div id="impress"><div class="step" id="one">As wide as its text
      <script>parent.ran = 1</script><img src="x" onerror="parent.ran = 2"></div><div class="step" data-x="2000">b</div></div>`,
  );
  await page.waitForSelector('#steps button:has-text("step-2")');
  assert.deepEqual(await names('#steps'), ['one', 'step-2']);
  await pointAt(0.5, 0.5);
  const corner = await page.$eval('#deck-stage iframe', (frame) => {
    const { left, top } = frame.contentDocument.getElementById('one').getBoundingClientRect();
    return `${left.toFixed(1)}, ${top.toFixed(1)}`;
  });
  assert.equal(await text('#layer .corners div'), corner);
  assert.equal(await page.evaluate(() => window.ran), undefined);
});

test('of decks chosen in quick succession the last one is shown, and a deck from a file can be chosen again', async () => {
  await page.$eval('#deck-choice', (choice) => {
    for (const deck of ['gallery', 'zoom', 'own', 'zoom']) {
      choice.value = deck;
      choice.dispatchEvent(new Event('change'));
    }
  });
  await page.waitForSelector('#steps button:has-text("joker")');
  const { canvases, steps } = await page.$eval('#deck-stage iframe', ({ contentDocument }) => ({
    canvases: contentDocument.querySelectorAll('#impress > div').length,
    steps: contentDocument.querySelectorAll('#impress > div > .step').length,
  }));
  assert.deepEqual([canvases, steps], [1, 8]);
  await page.selectOption('#deck-choice', 'own');
  await page.waitForSelector('#steps button:has-text("step-2")');
});

const badDecks = [
  ['no step', '<p>nothing</p>', /No deck/],
  ['a number out of range', '<div class="step" data-x="1e10">', /data-x="1e10": not a number from/],
  [
    'a scale of 0',
    '<div class="step" id="a" data-scale="0">',
    /<div id="a"> data-scale="0": not a number from 0.00001 to 1e9/,
  ],
  ['a rotation order with a letter twice', '<div class="step" data-rotate-order="xxy">', /not x, y and z, each once/],
  ['a relative position', '<div class="step" data-rel-x="9">', /Relative positions/],
  ['a step inside a step', '<div class="step"><div class="step">', /A step inside a step/],
];
test('a wrong deck is refused with its reason, and the deck before it stays', async () => {
  await choose('dusk');
  for (const [what, html, reason] of badDecks) {
    await drop('bad.html', html);
    await page
      .waitForFunction((reason) => new RegExp(reason).test(document.getElementById('toast').textContent), reason.source)
      .catch(() => assert.fail(what));
    await page.waitForFunction(() =>
      document.querySelector('#deck-stage iframe').contentDocument.getElementById('sky'),
    );
    assert.equal((await names('#steps'))[0], 'overview', what);
  }
});

test('the second tab: outlines of a pasted page, a kept element, scrolling', async () => {
  await page.click('#tab-page');
  await page.click('#paste');
  await page.fill(
    '#source-text',
    `<!doctype html><body style="margin: 0; height: 3000px"><script>parent.ran = 1</script>
    <div style="perspective: 300px"><p id="leaning"
      style="margin: 50px; width: 400px; height: 200px; transform: rotateY(40deg)">a<b>b</b></p></div>`,
  );
  await page.check('#from-net');
  await page.click('#source button');
  await page.waitForFunction(() =>
    document.querySelector('#page-stage iframe').contentDocument.getElementById('leaning'),
  );
  await pointAt(0.25, 0.3);
  assert.deepEqual(await names('#page-hits'), ['p#leaning', 'div']);
  await page.mouse.down();
  await page.mouse.up();
  await pointAt(0.9, 0.9);
  assert.equal(await text('#element-name'), 'p#leaning');
  const top = () => text('#element .corners div').then((corner) => Number(corner.split(', ')[1]));
  const before = await top();
  await page.mouse.wheel(0, 40);
  await drawn();
  assert.equal(await top(), before - 40);
  assert.equal(await page.evaluate(() => window.ran), undefined);
  await page.check('#all-outlines');
  await drawn();
  assert.match(await text('#page-speed'), /^4 outlines/);
  await page.click('#tab-deck');
});

test('a flight: on the way the camera is between, at the end the step is in the middle', async () => {
  await page.emulateMedia({ reducedMotion: 'no-preference' });
  await choose('gallery');
  const boxOf = (id) =>
    page.$eval(
      '#deck-stage iframe',
      (frame, id) => {
        const { left, right, top, bottom } = frame.contentDocument.getElementById(id).getBoundingClientRect();
        return { left, right, top, bottom, margin: frame.clientWidth - right };
      },
      id,
    );
  const { left: before } = await boxOf('back-wall');
  const onTheWay = await page.evaluate(async () => {
    const wall = document.querySelector('#deck-stage iframe').contentDocument.getElementById('back-wall');
    [...document.querySelectorAll('#steps button')]
      .find(({ textContent }) => textContent.includes('back-wall'))
      .click();
    const lefts = [];
    for (const start = performance.now(); performance.now() < start + 1400;) {
      await new Promise(requestAnimationFrame);
      lefts.push(wall.getBoundingClientRect().left);
    }
    return lefts;
  });
  const { left, margin } = await boxOf('back-wall');
  const between = onTheWay.filter((value) => left < value && value < before);
  assert.ok(between.length > 0, `from ${before} to ${left} without a picture between`);
  assert.ok(Math.abs(left - margin) < 0.01, `${left} from the left, ${margin} from the right`);
  // The corners of the front layer, in the panel, are where the browser has them.
  await pointAt(0.5, 0.05);
  const { left: x1, right: x2, top: y1, bottom: y2 } = await boxOf(await text('#layer-name'));
  const corners = [x1, y1, x2, y1, x1, y2, x2, y2].map((value) => value.toFixed(1));
  assert.equal((await cornerTexts()).join(', '), corners.join(', '));
  await page.emulateMedia({ reducedMotion: 'reduce' });
});

test('a click flies to the layer in front', async () => {
  await choose('gallery');
  await pointAt(0.01, 0.4);
  await page.mouse.down();
  await page.mouse.up();
  await drawn();
  assert.match(await text('#step-name'), /^left-wall +3/);
});

test('every control has a name', async () => {
  for (const tab of ['page', 'deck']) {
    await page.click(`#tab-${tab}`);
    const lines = (await page.locator('body').ariaSnapshot()).split('\n').map((line) => line.trim());
    const controls = lines.filter((line) =>
      /^- (button|slider|combobox|tab|checkbox|textbox|application)\b/.test(line),
    );
    assert.ok(controls.length > 7, `only ${controls.length} controls`);
    assert.deepEqual(
      controls.filter((line) => !/^- \w+ "/.test(line)),
      [],
    );
  }
});

// What a function, called in the page, makes of a deck with the viewer's modules.
function ofDeck(deck, take) {
  return page.evaluate(`(async () => {
    const { layOut } = await import('viewer/deck.js');
    const { bundled } = await import('viewer/bundled.js');
    const space = await import('viewer/space.js');
    const frame = document.createElement('iframe');
    frame.srcdoc = bundled.decks.find(({ name }) => name === '${deck}').html.replace(/<script.*/g, '');
    document.body.append(frame);
    await new Promise((resolve) => (frame.onload = resolve));
    const deck = layOut(frame.contentDocument);
    const answer = (${take})(deck, space.placed(deck.steps), space, { width: 1280, height: 800 });
    frame.remove();
    return answer;
  })()`);
}

for (const deck of ['gallery', 'zoom']) {
  const skip = SCENE ? false : 'zan-scene has not been built';
  test(`${deck}: outlines, shares and edge-on layers are those of zan-scene`, { skip }, async () => {
    const path = fileURLToPath(new URL(`${deck}.html`, DECKS));
    const stdio = ['ignore', 'pipe', 'ignore'];
    const { cameras } = JSON.parse(execFileSync(SCENE, [path, '--all', '--json', '-'], { stdio }));
    const views = await ofDeck(deck, (deck, layers, { project, viewFromStep }, size) =>
      deck.steps.map((step) =>
        project(layers, viewFromStep(deck, step, size)).map(({ points, share, edgeOn }) => ({ points, share, edgeOn })),
      ),
    );
    for (const [i, camera] of cameras.entries()) {
      const isTurned = camera.layers.some(({ decomposition }) => decomposition.rotation.some((angle) => angle !== 0));
      for (const [j, { id, outline, onScreen, edgeOn }] of camera.layers.entries()) {
        const { points, share, edgeOn: seenEdgeOn } = views[i][j];
        const what = `${id} from ${camera.id}`;
        assert.equal(points.length, outline.length, what);
        // Sine and cosine are each C library's own. A last bit of them is a billionth of a pixel at most, except where a
        // corner is so near to the plane of the eye that it is 100000 pixels away: its coordinates grow with 1 / w, and
        // their error with 1 / w^2.
        const tolerance = (value) => (isTurned ? 1e-9 * Math.max(1, (value / 1e5) ** 2) : 0);
        for (const [k, point] of outline.entries()) {
          const other = [points[k].x, points[k].y];
          assert.ok(point.every((value, axis) => Math.abs(value - other[axis]) <= tolerance(value)), `${what}: ${other}, not ${point}`);
        }
        assert.equal(share === null, onScreen === null, what);
        assert.ok(Math.abs((share ?? 0) - (onScreen ?? 0)) <= 1e-9, `${what}: a share of ${share}, not ${onScreen}`);
        assert.equal(seenEdgeOn, edgeOn, what);
      }
    }
  });
}

test('a flight begins and ends at the views of its steps, and is halfway in the middle', async () => {
  const unlike = await ofDeck('gallery', (deck, layers, { between, viewFrom, viewFromStep }, size) => {
    const differ = (a, b) => {
      const [p, q] = [a, b].map(({ spaceToEye }) => spaceToEye.toFloat64Array());
      return p.some((value, i) => Math.abs(value - q[i]) > 1e-8);
    };
    return layers.flatMap((from) =>
      layers.flatMap((to) => {
        const view = (t) => viewFrom(deck, between(from.pose, to.pose, t), size);
        const back = viewFrom(deck, between(to.pose, from.pose, 0.5), size);
        const wrong = [
          differ(view(0), viewFromStep(deck, from.step, size)) && 'begins elsewhere',
          differ(view(1), viewFromStep(deck, to.step, size)) && 'ends elsewhere',
          differ(view(0.5), back) && 'is not halfway in the middle',
        ];
        return wrong.filter(Boolean).map((what) => `${from.step.name} to ${to.step.name}: ${what}`);
      }),
    );
  });
  assert.deepEqual(unlike, []);
});

test('a narrow screen has everything within its width, and a finger points, then flies', async () => {
  await open({ viewport: { width: 360, height: 740 }, hasTouch: true, reducedMotion: 'reduce', colorScheme: 'dark' });
  assert.equal(await page.getAttribute('html', 'data-theme'), 'dark');
  const box = await (await page.$('#deck-stage')).boundingBox();
  const tap = () => page.touchscreen.tap(box.x + box.width * 0.5, box.y + box.height * 0.65);
  await tap();
  await drawn();
  assert.deepEqual([(await names('#deck-hits'))[0], (await text('#step-name')).slice(0, 4)], ['title', 'over']);
  await tap();
  await drawn();
  assert.match(await text('#step-name'), /^title/);
  for (const tab of ['#tab-deck', '#tab-page']) {
    await page.tap(tab);
    const wide = await page.$$eval('.top *, .view:not([hidden]) *', (all) =>
      all
        .filter((element) => {
          const { left, right, width } = element.getBoundingClientRect();
          return width > 1 && (left < 0 || right > 360);
        })
        .map((element) => element.outerHTML.slice(0, 60)),
    );
    assert.deepEqual(wide, []);
  }
});
