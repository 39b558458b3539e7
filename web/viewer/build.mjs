// Makes the viewer, one page that opens from a disk: build.mjs FOLDER, where the package and the self-check have been
// built. Every module becomes a data URL; the import map gives it its name.
import { readdir, readFile, mkdir, writeFile } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';

const built = path.resolve(process.argv[2] ?? 'build/web');
const here = path.dirname(fileURLToPath(import.meta.url));
const text = (file) => readFile(file, 'utf8');
const packed = async (file) => gzipSync(await readFile(file), { level: 9 }).toString('base64');

/** The modules of a folder and of its subfolders: [name, source] with relative imports replaced by names. */
async function modulesOf(folder, prefix) {
  const files = (await readdir(folder, { recursive: true })).filter((file) => file.endsWith('.js')).sort();
  return Promise.all(
    files.map(async (file) => {
      const name = (relative) => prefix + path.posix.join(path.posix.dirname(file), relative);
      const source = await text(path.join(folder, file));
      return [
        prefix + file,
        source.replace(/(\bfrom |\bimport\()'(\.[^']*)'/g, (all, before, relative) => `${before}'${name(relative)}'`),
      ];
    }),
  );
}

async function documentsOf(...folders) {
  const documents = [];
  for (const folder of folders) {
    for (const file of (await readdir(folder)).filter((name) => name.endsWith('.html')).sort()) {
      const html = await text(path.join(folder, file));
      documents.push({ name: path.basename(file, '.html'), title: /<title>(.*)<\/title>/.exec(html)[1], html });
    }
  }
  return documents;
}

const modules = [...(await modulesOf(path.join(built, 'package'), 'zan/')), ...(await modulesOf(here, 'viewer/'))];
const imports = Object.fromEntries(
  modules.map(([name, source]) => [name, `data:text/javascript;base64,${Buffer.from(source).toString('base64')}`]),
);
imports.zan = imports['zan/zan.js'];
const bundled = {
  wasm: await packed(path.join(built, 'package/zan.wasm')),
  selfcheck: {
    script: await text(path.join(built, 'package/selfcheck/zan-selfcheck.cjs')),
    wasm: await packed(path.join(built, 'package/selfcheck/zan-selfcheck.wasm')),
  },
  decks: await documentsOf(path.join(here, 'decks'), path.join(here, '../../examples/scene/decks')),
  pages: await documentsOf(path.join(here, 'pages')),
};
const json = (type, value, id = '') =>
  `<script type="${type}"${id}>${JSON.stringify(value).replaceAll('<', '\\u003c')}</script>`;
const css = await text(path.join(here, 'style.css'));
const page = (await text(path.join(here, 'index.html')))
  .replace('<link rel="stylesheet" href="style.css">', () => `<style>\n${css}</style>`)
  .replace('<script type="module" src="main.js"></script>', () =>
    [
      json('importmap', { imports }),
      json('application/json', bundled, ' id="bundled"'),
      `<script type="module">import 'viewer/main.js';</script>`,
    ].join('\n'),
  );
await mkdir(path.join(built, 'viewer'), { recursive: true });
await writeFile(path.join(built, 'viewer/index.html'), page);
console.log(`${path.relative('.', built)}/viewer/index.html: ${Math.round(page.length / 1000)} kB`);
