// Takes the README's picture of the viewer: viewer_picture.js FILE.
import { openBrowser } from './browser.js';

const { browser, page } = await openBrowser();
await page.setViewportSize({ width: 1280, height: 800 });
await page.goto(new URL('../../build/web/viewer/index.html', import.meta.url).href);
await page.waitForSelector('.check.good');
// The time of a frame is the mean of many.
for (let i = 0; i < 140; ++i) {
  await page.mouse.move(441 + i / 4, 383 + i / 4);
  await page.evaluate(() => new Promise(requestAnimationFrame));
}
await page.screenshot({ path: process.argv[2], type: 'jpeg', quality: 86 });
await browser.close();
