// One case: its outlines and hits beside what the browser says and paints.
import { show } from './browser.js';
import { hitsBesideBrowser, hitsBesidePaint, probeCorners, wrongPixels } from './truth.js';

/**
 * What is wrong with a page.
 * @param {import('playwright-core').Page} page
 * @param {import('./cases.js').Case} rule
 * @returns {Promise<string[]>}
 */
export async function problemsOf(page, rule) {
  const { what, html, prepare, argument, mayBeEdgeOn, paintedCorners, skip = [], paint = [], inexact = [], edgeOn = [], noProbe = [] } = rule;
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
      problems.push(`${id}: ${JSON.stringify(outline.points)} beside probes at ${JSON.stringify(probes)}`);
    }
    const isCut = outline.behind.includes(true) && outline.behind.includes(false);
    if (paint === 'cut' ? !isCut : !paint.includes(id)) continue;
    const wrong = await wrongPixels(page, id, outline.points);
    if (wrong.length > 0) problems.push(`${id}: ${wrong.length} pixels painted otherwise, one at (${wrong[0]})`);
  }
  const wrongHits = await hitsOf(page, rule, shown.map(([id]) => id));
  if (wrongHits.length > 0) problems.push(`${wrongHits.length} hits, one of them ${wrongHits[0]}`);
  return problems;
}

async function hitsOf(page, { noHits, paintedHits, eitherHits }, ids) {
  if (noHits) return [];
  if (paintedHits) return hitsBesidePaint(page, ids);
  const wrong = await page.evaluate(hitsBesideBrowser);
  if (!eitherHits || wrong.length === 0) return wrong;
  const place = (text) => text.slice(text.indexOf(' at '));
  const otherwise = new Set((await hitsBesidePaint(page, ids)).map(place));
  return wrong.filter((text) => otherwise.has(place(text)));
}

function isNear(a, b) {
  const near = (p, q) => Math.abs(p - q) <= 0.05 + 2e-6 * Math.abs(q);
  return near(a.x, b.x) && near(a.y, b.y);
}
