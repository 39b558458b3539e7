// Compares outlines and hits with headless Chromium's own boxes, hits and pixels.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { openBrowser } from './browser.js';
import { cases } from './cases.js';
import { problemsOf } from './check.js';

let browser;
let page;
before(async () => ({ browser, page } = await openBrowser()));
after(() => browser.close());

const only = new RegExp(process.env.ONLY ?? '');

for (const testCase of cases.filter(({ what }) => only.test(what))) {
  test(testCase.what, async () => assert.deepEqual(await problemsOf(page, testCase), []));
}
