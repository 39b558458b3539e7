// Checks one case: compares its outlines and hits with the browser's answers and pixels.
import { show } from './browser.js';
import { hitsUnlikeBrowser, hitsUnlikePaint, probeCorners, wrongPixels } from './truth.js';

/**
 * The differences between a page's outlines and hits and the browser's.
 * @param {import('playwright-core').Page} page
 * @param {import('./cases.js').Case} testCase
 * @returns {Promise<string[]>}
 */
export async function problemsOf(page, testCase) {
  const { what, html, prepare, argument, mayBeEdgeOn, paintedCorners, skip = [], paint = [], inexact = [], edgeOn = [], noProbe = [] } = testCase;
  await show(page, `<!doctype html><title>${what}</title>${html}`);
  if (prepare) await page.evaluate(prepare, argument);
  const outlines = await page.evaluate(() => {
    const look = zan.look();
    return [...document.querySelectorAll('[id]')].map((element) => [element.id, look.outlineOf(element)]);
  });
  const problems = [];
  const shown = outlines.filter(([id]) => !skip.includes(id));
  for (const [id, outline] of shown) {
    if (outline.exact === inexact.includes(id)) problems.push(`${id}: exact is ${outline.exact}`);
    if (!mayBeEdgeOn && outline.edgeOn !== edgeOn.includes(id)) problems.push(`${id}: edgeOn is ${outline.edgeOn}`);
    const probes = noProbe.includes(id) ? [] : await page.evaluate(probeCorners, id);
    const here = outline.points.filter((point) => probes.some((probe) => isNear(point, probe))).length;
    const inFront = outline.behind.filter((behind) => !behind).length;
    if (probes.length > 0 && here < inFront && !(paintedCorners && (await wrongPixels(page, id, outline.points)).length === 0)) {
      const [points, corners] = [outline.points, probes].map((list) => JSON.stringify(list));
      problems.push(`${id}: outline ${points} does not reach the probed corners ${corners}`);
    }
    const isCut = outline.behind.includes(true) && outline.behind.includes(false);
    if (paint === 'cut' ? !isCut : !paint.includes(id)) continue;
    const wrong = await wrongPixels(page, id, outline.points);
    if (wrong.length > 0) problems.push(`${id}: ${wrong.length} wrong pixels, one of them at (${wrong[0]})`);
  }
  const wrongHits = await wrongHitsOf(page, testCase, shown.map(([id]) => id));
  if (wrongHits.length > 0) problems.push(`${wrongHits.length} wrong hits, one of them: ${wrongHits[0]}`);
  return problems;
}

async function wrongHitsOf(page, { noHits, paintedHits, eitherHits }, ids) {
  if (noHits) return [];
  if (paintedHits) return hitsUnlikePaint(page, ids);
  const wrong = await page.evaluate(hitsUnlikeBrowser);
  if (!eitherHits || wrong.length === 0) return wrong;
  const place = (text) => text.slice(text.indexOf(' at '));
  const otherwise = new Set((await hitsUnlikePaint(page, ids)).map(place));
  return wrong.filter((text) => otherwise.has(place(text)));
}

function isNear(a, b) {
  const near = (p, q) => Math.abs(p - q) <= 0.05 + 2e-6 * Math.abs(q);
  return near(a.x, b.x) && near(a.y, b.y);
}
