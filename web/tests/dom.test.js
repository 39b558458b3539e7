// Outlines and hits beside headless Chromium's own boxes, hits and pictures.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { openBrowser, show } from './browser.js';
import { cases } from './cases.js';
import { hitsBesideBrowser, hitsBesidePaint, probeCorners, wrongPixels } from './truth.js';

let browser;
let page;
before(async () => ({ browser, page } = await openBrowser()));
after(() => browser.close());

const only = process.env.ONLY ? new RegExp(process.env.ONLY) : /./;

for (const { what, html, skip = [], paint = [], inexact = [], edgeOn = [], noProbe = [], prepare, paintedHits, noHits } of cases) {
  if (!only.test(what)) continue;
  test(what, async () => {
    await show(page, `<!doctype html><title>${what}</title>${html}`);
    if (prepare) await page.evaluate(prepare);
    const outlines = await page.evaluate(() => {
      const look = zan.look();
      return [...document.querySelectorAll('[id]')].map((element) => [element.id, look.outlineOf(element)]);
    });
    const problems = [];
    for (const [id, outline] of outlines) {
      if (skip.includes(id)) continue;
      if (outline.exact === inexact.includes(id)) problems.push(`${id}: exact is ${outline.exact}`);
      if (outline.edgeOn !== edgeOn.includes(id)) problems.push(`${id}: edgeOn is ${outline.edgeOn}`);
      const corners = noProbe.includes(id) ? [] : await page.evaluate(probeCorners, id);
      const front = outline.points.filter((p) => corners.some((c) => isNear(p, c))).length;
      const expected = outline.behind.filter((behind) => !behind).length;
      if (corners.length > 0 && front < expected) {
        problems.push(`${id}: ${JSON.stringify(outline.points)} beside probes ${JSON.stringify(corners)}`);
      }
      if (paint.includes(id)) {
        const wrong = await wrongPixels(page, id, outline.points);
        if (wrong.length > 0) problems.push(`${id}: ${wrong.length} pixels painted otherwise, as ${wrong.slice(0, 3).join('  ')}`);
      }
    }
    const ids = outlines.map(([id]) => id).filter((id) => !skip.includes(id));
    const wrongHits = noHits ? [] : paintedHits ? await hitsBesidePaint(page, ids) : await page.evaluate(hitsBesideBrowser);
    if (wrongHits.length > 0) problems.push(`${wrongHits.length} hits, as ${wrongHits.slice(0, 3).join(', ')}`);
    assert.deepEqual(problems, []);
  });
}

function isNear(a, b) {
  const near = (p, q) => Math.abs(p - q) <= 0.05 + 2e-6 * Math.abs(q);
  return near(a.x, b.x) && near(a.y, b.y);
}
