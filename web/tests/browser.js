// Drives a headless Chromium: pages with the package loaded, and their pixels.
import { readFile } from 'node:fs/promises';
import { inflateSync } from 'node:zlib';
import { chromium } from 'playwright-core';

const PACKAGE = new URL('../../build/web/package/', import.meta.url);
const ORIGIN = 'http://zan.test/';
const TYPES = { js: 'text/javascript', wasm: 'application/wasm', html: 'text/html' };
const FLAGS = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync', '--hide-scrollbars=false',
];

/** Opens a browser with a page. `page.fault` (file, from, to) replaces text in a source file as the page loads it. */
export async function openBrowser() {
  const executablePath = process.env.CHROMIUM ?? '/usr/bin/chromium';
  const browser = await chromium.launch({ executablePath, args: FLAGS, ignoreDefaultArgs: ['--hide-scrollbars'] });
  const page = await browser.newPage({ viewport: { width: 1000, height: 700 } });
  page.on('pageerror', (error) => console.error(`script error on a page: ${error.message}`));
  await page.route(`${ORIGIN}**`, async (route) => {
    const path = new URL(route.request().url()).pathname.slice(1);
    if (path === '') return route.fulfill({ contentType: TYPES.html, body: page.content });
    try {
      let body = await readFile(new URL(path, PACKAGE));
      if (page.fault?.file === path) body = body.toString().replace(page.fault.from, page.fault.to);
      return await route.fulfill({ contentType: TYPES[path.split('.').pop()], body });
    } catch {
      return route.fulfill({ status: 404, body: '' });
    }
  });
  return { browser, page };
}

/** Shows a document with `zan`, the package's dom.js, loaded. */
export async function show(page, html) {
  page.content = html;
  await page.goto(ORIGIN);
  await page.evaluate(async () => {
    window.zan = await import('/dom.js');
    await window.zan.load();
  });
}

/** The pixels of the page: {width, height, at(x, y), isPainted(x, y)}; pixels with a channel below 160 are painted. */
export async function pixels(page) {
  const png = await page.screenshot();
  const width = png.readUInt32BE(16);
  const height = png.readUInt32BE(20);
  const channels = png[25] === 6 ? 4 : 3;
  const data = [];
  for (let at = 8; at < png.length; at += 12 + png.readUInt32BE(at)) {
    if (png.toString('latin1', at + 4, at + 8) === 'IDAT') data.push(png.subarray(at + 8, at + 8 + png.readUInt32BE(at)));
  }
  const raw = inflateSync(Buffer.concat(data));
  const stride = width * channels;
  const rows = Buffer.alloc(stride * height);
  const paeth = (a, b, c) => {
    const [pa, pb, pc] = [b - c, a - c, a + b - 2 * c].map(Math.abs);
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
  };
  for (let y = 0; y < height; ++y) {
    const filter = raw[y * (stride + 1)];
    for (let i = 0; i < stride; ++i) {
      const left = i >= channels ? rows[y * stride + i - channels] : 0;
      const up = y > 0 ? rows[(y - 1) * stride + i] : 0;
      const corner = i >= channels && y > 0 ? rows[(y - 1) * stride + i - channels] : 0;
      const predicted = [0, left, up, (left + up) >> 1, paeth(left, up, corner)][filter];
      rows[y * stride + i] = raw[y * (stride + 1) + 1 + i] + predicted;
    }
  }
  const at = (x, y) => rows.subarray((y * width + x) * channels, (y * width + x) * channels + 3);
  return { width, height, at, isPainted: (x, y) => at(x, y).some((value) => value < 160) };
}
