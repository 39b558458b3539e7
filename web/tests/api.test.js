// Arguments, results and errors of the functions of dom.js. The places of outlines are tested in dom.test.js.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { openBrowser, show } from './browser.js';
import { distanceTo, holds } from './truth.js';

let browser;
let page;
before(async () => {
  ({ browser, page } = await openBrowser());
  await show(page, `<!doctype html><div id="outer" style="width: 200px; height: 100px"><b id="inner">b</b></div>
    <div id="other" style="width: 100px; height: 50px"></div><i id="none" hidden>i</i>
    <iframe id="frame" srcdoc="<body style='margin: 0'><div id=a style='width: 90px; height: 40px; rotate: y 30deg'>"></iframe>`);
});
after(() => browser.close());

const inPage = (run) => page.evaluate(run);
const message = (run) => inPage(`try { ${run}; 'nothing thrown' } catch (error) { error.message }`);

test('hits front to back, the root last', async () =>
  assert.deepEqual(await inPage(() => zan.hitsAt(12, 12).map((e) => e.id || e.localName)), ['inner', 'outer', 'body', 'html']));
test('hits within an element', async () =>
  assert.deepEqual(await inPage(() => zan.hitsAt(12, 12, { within: outer }).map((e) => e.id)), ['inner', 'outer']));
test('hits beside an outline', async () =>
  assert.deepEqual(await inPage(() => [4, 6].map((tolerance) => zan.hitsAt(213, 30, { within: outer, tolerance }).length)), [0, 1]));
test('the left and the top side are in a box, the right and the bottom are not', async () =>
  assert.deepEqual(await inPage(() => [[8, 30], [208, 30], [30, 8], [30, 108]].map(([x, y]) => zan.hitsAt(x, y, { within: outer }).includes(outer))), [true, false, true, false]));
test('an element without a box', async () =>
  assert.deepEqual(await inPage(() => zan.outlineOf(none)), { points: [], behind: [false, false, false, false], edgeOn: false, exact: true }));
test('an element of a frame, in pixels of the frame', async () =>
  assert.equal(await inPage(() => Math.round(zan.outlineOf(frame.contentDocument.getElementById('a')).points[1].x)), 84));
test('hits in a frame', async () =>
  assert.equal(await inPage(() => zan.hitsAt(20, 20, { within: frame.contentDocument })[0].id), 'a'));
test('a look is at one document', async () =>
  assert.match(await message(`zan.look().outlineOf(frame.contentDocument.body)`), /another document/));
test('an argument that is no element is refused', async () => assert.match(await message('zan.outlineOf(null)'), /an element is needed/));
test('a look does not notice a later change of the page, zan.outlineOf does', async () => {
  const widths = await inPage(() => {
    const look = zan.look();
    const widthOf = ({ points }) => points[1].x - points[0].x;
    const before = widthOf(look.outlineOf(other));
    other.style.width = '150px';
    return [before, widthOf(look.outlineOf(other)), widthOf(zan.outlineOf(other))];
  });
  assert.deepEqual(widths, [100, 100, 150]);
});
test('boxes that are partly behind the eye are hit where their outlines are, although their bounding boxes are elsewhere', async () => {
  const box = (i) => `<p style="position: absolute; margin: 0; left: ${(i * 83) % 700}px; top: ${(i * 47) % 350}px; width: ${5 + i * 9}px; height: ${70 - i}px">${i}</p>`;
  await show(page, `<!doctype html><div style="perspective: 150px; width: 700px"><div style="width: 700px; height: 400px; rotate: y 75deg">
    ${Array.from({ length: 60 }, (_, i) => box(i)).join('')}</div></div>`);
  const { missed, across } = await page.evaluate(`(() => {
    ${holds} ${distanceTo}
    const look = zan.look();
    const outlines = [...document.querySelectorAll('p')].map((element) => ({ element, ...look.outlineOf(element) }));
    const missed = [];
    for (let y = 3.5; y < innerHeight; y += 41) {
      for (let x = 3.5; x < innerWidth; x += 29) {
        const hits = zan.look().hitsAt(x, y);
        for (const { element, points } of outlines) {
          if (holds(points, x, y) !== hits.includes(element) && distanceTo(points, x, y) > 0.01) missed.push([element.textContent, x, y]);
        }
      }
    }
    return { missed, across: outlines.filter(({ behind }) => behind.includes(true) && behind.includes(false)).length };
  })()`);
  assert.deepEqual(missed, []);
  assert.ok(across > 10, `${across} boxes that are partly behind the eye`);
});
