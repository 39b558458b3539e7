// Measures outlines and hits on pages of several hundred elements, in milliseconds (the least of several runs): node web/bench/dom.js.
import { openBrowser, show } from '../tests/browser.js';

const repeat = (count, text) => Array.from({ length: count }, (_, i) => text(i)).join('');
const card = (i) => `<section><h2>Card ${i}</h2><p>Some <b>words</b> and <a href="#">a link</a></p></section>`;

const pages = {
  'a plain page': `<main>${repeat(110, card)}</main>`,
  'cards in one space': `<style>main { perspective: 900px } div { transform-style: preserve-3d; transform: rotateY(25deg) }
    section { display: inline-block; width: 120px; transform: translateZ(20px) rotateX(10deg) }</style>
    <main><div>${repeat(110, card)}</div></main>`,
  'a turned page': `<style>body { transform: perspective(900px) rotateY(25deg) }</style><main>${repeat(110, card)}</main>`,
  'spaces in spaces': `<style>main { perspective: 900px; float: left; width: 200px }
    section, p { transform-style: preserve-3d; transform: rotateY(15deg) } b, h2 { display: block; transform: translateZ(9px) }</style>
    ${repeat(110, (i) => `<main>${card(i)}</main>`)}`,
};

// In the page: times in milliseconds.
function measure() {
  const elements = [...document.querySelectorAll('body *')];
  const least = (runs, run) => {
    const times = Array.from({ length: runs }, (_, i) => {
      const start = performance.now();
      run(i);
      return performance.now() - start;
    });
    return Math.min(...times);
  };
  const outlines = least(15, () => {
    const look = zan.look();
    for (const element of elements) look.outlineOf(element);
  });
  const point = (i) => [(i * 97) % innerWidth, (i * 61) % innerHeight];
  const first = least(15, (i) => zan.look().hitsAt(...point(i)));
  const look = zan.look();
  // Many at a time: browsers' clocks have a resolution of 0.1 ms.
  const hits = least(10, () => {
    for (let i = 0; i < 50; ++i) look.hitsAt(...point(i));
  }) / 50;
  const alone = least(10, () => {
    for (let i = 0; i < 50; ++i) zan.outlineOf(elements[(i * 37) % elements.length]);
  }) / 50;
  return { elements: elements.length, outline: outlines / elements.length, first, hits, alone };
}

const { browser, page } = await openBrowser();
console.log('page                   elements  outline   first hit test  further ones  outline without look');
for (const [name, html] of Object.entries(pages)) {
  await show(page, `<!doctype html>${html}`);
  const { elements, outline, first, hits, alone } = await page.evaluate(measure);
  const ms = (value, width) => `${value.toFixed(3)} ms`.padStart(width);
  console.log(name.padEnd(22), String(elements).padStart(8), ms(outline, 9), ms(first, 15), ms(hits, 13), ms(alone, 21));
}
await browser.close();
