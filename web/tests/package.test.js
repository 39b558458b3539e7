// The package: packed and installed, imported by node, a page without a bundler and a worker; and its types.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { mkdir, mkdtemp, readFile, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { promisify } from 'node:util';
import { openBrowser, show } from './browser.js';

const run = promisify(execFile);
const PACKAGE = fileURLToPath(new URL('../../build/web/package/', import.meta.url));
const TSC = fileURLToPath(new URL('node_modules/typescript/bin/tsc', import.meta.url));

let folder;
before(async () => {
  folder = await mkdtemp(join(tmpdir(), 'zan-'));
  await mkdir(join(folder, 'node_modules/zan'), { recursive: true });
  const { stdout } = await run('npm', ['pack', '--silent', '--pack-destination', folder], { cwd: PACKAGE });
  await run('tar', ['-xzf', join(folder, stdout.trim()), '--strip-components=1', '-C', join(folder, 'node_modules/zan')]);
});
after(() => rm(folder, { recursive: true }));

const PROGRAM = `await load();
  const points = new Layer({ width: 200, height: 100 }, Matrix4.rotation(0, 1, 0, 1).concat(Matrix4.perspective(800))).points;`;

test('node imports the packed package', async () => {
  await writeFile(join(folder, 'main.mjs'), `import { Layer, Matrix4, load } from 'zan';
    import { look } from 'zan/dom.js';
    ${PROGRAM} console.log(points.length, typeof look);`);
  const { stdout } = await run(process.execPath, [join(folder, 'main.mjs')]);
  assert.equal(stdout, '8 function\n');
});

test('the packed README begins with an example and ends before what only the documentation has', async () => {
  const readme = await readFile(join(folder, 'node_modules/zan/README.md'), 'utf8');
  assert.match(readme, /^# Zan in browsers and node\n\n```js\nimport /);
  assert.doesNotMatch(readme, /<!--|\.\/dev|\]\(/);
});

test('the declarations have the types of the program, and refuse wrong arguments', async () => {
  await writeFile(join(folder, 'package.json'), '{"type": "module"}');
  await writeFile(join(folder, 'main.ts'), `
    import { Layer, Matrix3, Matrix4, ZanError, addRatio, computeConvexHull, fixMul, load, sectRect, slerp } from 'zan';
    import { look, type Outline } from 'zan/dom.js';
    ${PROGRAM}
    const rect = { top: 0, left: 0, bottom: 1, right: 1 };
    export const hull: Float64Array = computeConvexHull(points);
    export const product: number = fixMul(65536, 65536);
    export const { num, den } = addRatio({ num: 1, den: 2 }, { num: 1, den: 3 }, 0).destination;
    export const half = slerp(Matrix4.identity.toQuat(), { x: 0, y: 0, z: 1, w: 0 }, 0.5);
    export const turned: Matrix4 = Matrix4.fromQuat(half).concat(new DOMMatrix());
    export const overlap: boolean = sectRect(rect, rect).result;
    export const outline: Outline = look().outlineOf(document.body);
    try {
      new Matrix3([0, 0, 0, 0, 0, 0, 0, 0, 0]).inverse();
    } catch (error) {
      if (error instanceof ZanError) error.number.toFixed();
    }
    // @ts-expect-error
    fixMul('1', 2);
    // @ts-expect-error
    new Layer({ width: 1 }, Matrix4.identity);
    // @ts-expect-error
    Matrix4.identity.points;`);
  const options = ['--noEmit', '--strict', '--target', 'es2022', '--module', 'nodenext', '--lib', 'es2022,dom'];
  await run(process.execPath, [TSC, ...options, join(folder, 'main.ts')]).catch((error) => assert.fail(error.stdout));
});

test('a page and a worker import it without a bundler, and load takes less than 50 ms', async () => {
  const { browser, page } = await openBrowser();
  try {
    await show(page, '<!doctype html><p>p</p>');
    const inWorker = await page.evaluate(() => {
      const program = `import { Layer, Matrix3, load } from '${location.origin}/zan.js';
        await load();
        postMessage(new Layer({ width: 2, height: 1 }, Matrix3.translation(3, 4)).points);`;
      const worker = new Worker(URL.createObjectURL(new Blob([program], { type: 'text/javascript' })), { type: 'module' });
      return new Promise((resolve, reject) => {
        worker.onmessage = ({ data }) => resolve([...data]);
        worker.onerror = ({ message }) => reject(new Error(message));
      });
    });
    assert.deepEqual(inWorker, [3, 4, 5, 4, 5, 5, 3, 5]);
    const [matrix, back] = await page.evaluate(async () => {
      const { Matrix3, load } = await import('/zan.js');
      await load();
      const matrix = new DOMMatrix('translate(1px, 2px) rotate(30deg) scale(3, 4)');
      return [matrix, Matrix3.from(matrix).toDOMMatrix()].map((m) => [...m.toFloat64Array()]);
    });
    assert.deepEqual(back, matrix);
    const times = [];
    for (let i = 0; i < 3; ++i) {
      await page.goto(page.url());
      times.push(await page.evaluate(async () => {
        const { load } = await import('/zan.js');
        const start = performance.now();
        await load();
        return performance.now() - start;
      }));
    }
    assert.ok(Math.min(...times) < 50, `${times} ms`);
  } finally {
    await browser.close();
  }
});

test('the self-check in a browser', async () => {
  const { browser, page } = await openBrowser();
  try {
    await show(page, '<!doctype html><p>p</p>');
    const check = () => page.evaluate(async () => (await import('/selfcheck.js')).selfCheck());
    const { same, line, details } = await check();
    assert.ok(same, details.join('\n'));
    assert.match(line, /^This browser gives the same bits: (\d+) of \1 operations$/);
  } finally {
    await browser.close();
  }
});

const example = (file) => readFile(new URL(`../examples/${file}`, import.meta.url), 'utf8');

test('the example of zan.js', async () => {
  await writeFile(join(folder, 'example.mjs'), await example('package.js'));
  const { stdout } = await run(process.execPath, [join(folder, 'example.mjs')]);
  assert.deepEqual(stdout.trim().split('\n'), ['4 true true', 'true 8', '0.5', '11002d 8 unable to invert matrix.']);
});

test('the example of dom.js', async () => {
  const { browser, page } = await openBrowser();
  try {
    const lines = [];
    page.on('console', (message) => lines.push(message.text()));
    page.content = `<!doctype html><script type="importmap">{ "imports": { "zan/": "/" } }</script><svg><polygon /></svg>
      <main style="perspective: 500px"><div class="card" style="width: 800px; height: 400px; rotate: y 80deg">
      <p>p</p></div></main><script type="module">${await example('dom.js')}</script>`;
    await page.goto('http://zan.test/');
    await page.waitForFunction(() => document.querySelector('polygon').hasAttribute('points'));
    assert.deepEqual(lines, ['4 false true div main body html', '4']);
  } finally {
    await browser.close();
  }
});
