// Opens every page of the site in a headless Chromium, as wide as a phone: script errors, missing files, dead links, names
// without a link, stars left from emphasis in a table, pages wider than the screen. Then it asks the search.
//
// node docs/site/check.mjs, from the top of the tree after docs/site/finish.py. Prints the problems; status 1 then.
import { readdirSync, readFileSync } from 'node:fs';
import { pathToFileURL } from 'node:url';
import { openBrowser } from '../../web/tests/browser.js';

const SITE = 'build/docs/html/';
const WIDTH = 360;
const QUESTIONS = [
  ['slerp', 'Zan_Slerp'],
  ['camera', 'Zan_LookAtMatrix'],
  ['pick', 'Guide: Picking'],
  ['intersect', 'Zan_RayIntersectPlane'],
  ['hull', 'Zan_ComputeConvexHull'],
  ['invert', 'Zan_Matrix3::Invert'],
  ['quaternion', 'Zan_QuatToMatrix4'],
  ['overlap', 'Zan_SectRect'],
  ['start', 'Zan_Birth'],
  ['edge distance', 'Zan_TransformPoly3D::GetMinimumEdgeDistance'],
  ['secondaryflow', 'nothing found'],
];
const MAX_PLACE = 5;

/** In the page: its links and anchors, and what is wrong with it. */
function examine(width) {
  const problems = [];
  const content = document.querySelector('#doc-content') ?? document.body;
  const widest = Math.max(document.documentElement.scrollWidth, content.scrollWidth);
  if (widest > width) problems.push(`is ${widest} pixels wide`);
  const names = new Set(searchIndex.map(([name]) => name).filter((name) => /^(Zan|Bel|OSKA|VUN)p?_/.test(name)));
  const walker = document.createTreeWalker(content, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) {
    const text = walker.currentNode;
    if (text.parentElement.closest('a, h1, h2, h3, h4, script, .title, .memname, .ttc')) continue;
    const unlinked = (text.data.match(/\w+/g) ?? []).filter((name) => names.has(name));
    if (unlinked.length > 0) problems.push(`does not link ${unlinked}`);
    const isCell = text.parentElement.closest('td[class^=markdownTable]') && !text.parentElement.closest('code');
    if (isCell && /\*\S[^*]*\*/.test(text.data)) problems.push(`stars in a table: ${text.data}`);
  }
  const links = [...document.querySelectorAll('a[href]')].map((link) => link.href);
  const anchors = [...document.querySelectorAll('[id], a[name]')].map((element) => element.id || element.name);
  return { problems, links, anchors };
}

async function examinePages(page, pages, problems) {
  const links = new Map();
  const anchors = new Set();
  page.on('pageerror', (error) => problems.push(`${page.url()}: ${error.message}`));
  page.on('requestfailed', (request) => {
    // Going on to the next page ends the scripts that still load.
    const { errorText } = request.failure();
    if (errorText !== 'net::ERR_ABORTED') problems.push(`${page.url()}: ${errorText} ${request.url()}`);
  });
  await page.setViewportSize({ width: WIDTH, height: 740 });
  for (const name of pages) {
    const address = pathToFileURL(SITE + name).href;
    await page.goto(address);
    const found = await page.evaluate(examine, WIDTH);
    problems.push(...found.problems.map((problem) => `${name}: ${problem}`));
    for (const link of found.links) if (link.startsWith('file:')) links.set(decodeURI(link), name);
    anchors.add(address);
    for (const anchor of found.anchors) anchors.add(`${address}#${anchor}`);
  }
  return { links, anchors };
}

/** Links that scripts hold: those of the side tree and of the search. */
function linksOfScripts() {
  const links = new Map();
  for (const script of readdirSync(SITE).filter((name) => name.endsWith('.js'))) {
    for (const [, link] of readFileSync(SITE + script, 'utf8').matchAll(/"([\w~-]+\.html(?:#[^"]+)?)"/g)) {
      links.set(new URL(link, pathToFileURL(SITE)).href, script);
    }
  }
  return links;
}

async function askSearch(page, problems) {
  await page.goto(pathToFileURL(`${SITE}index.html`).href);
  for (const [query, answer] of QUESTIONS) {
    await page.fill('#search input', query);
    const hits = await page.$$eval('#search li', (items) => items.map((item) => (item.querySelector('b') ?? item).textContent));
    if (!hits.slice(0, MAX_PLACE).includes(answer)) problems.push(`search for '${query}': ${hits.slice(0, MAX_PLACE)}`);
  }
  await page.fill('#search input', 'slerp');
  await page.press('#search input', 'Enter');
  await page.waitForURL(/group__matrixparts\.html#/, { timeout: 5000 }).catch(() => problems.push('Enter does not open the first hit'));
}

async function checkThemes(page, problems) {
  for (const [colorScheme, isRight] of [['light', (level) => level > 200], ['dark', (level) => level < 60]]) {
    await page.emulateMedia({ colorScheme });
    const background = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
    if (!isRight(Number(background.match(/\d+/)[0]))) problems.push(`the ${colorScheme} theme has the background ${background}`);
  }
}

const problems = [];
const { browser, page } = await openBrowser();
const pages = readdirSync(SITE).filter((name) => name.endsWith('.html'));
const { links, anchors } = await examinePages(page, pages, problems);
for (const [link, from] of [...links, ...linksOfScripts()]) {
  if (!anchors.has(link)) problems.push(`${from}: dead link ${link}`);
}
await askSearch(page, problems);
await checkThemes(page, problems);
await browser.close();
console.log(problems.length > 0 ? problems.join('\n') : `${pages.length} pages, ${links.size} links, ${QUESTIONS.length} searches`);
process.exitCode = problems.length > 0 ? 1 : 0;
