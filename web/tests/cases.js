// A page for each rule. Every element with an id is compared with the browser.

/**
 * @typedef {object} Case
 * @property {string} what  the title
 * @property {string} html
 * @property {(argument: any) => void} [prepare]  runs in the page before anything is compared
 * @property {any} [argument]  of prepare
 * @property {string[]} [skip]  elements, by id, that are not compared
 * @property {string[] | 'cut'} [paint]  elements whose outlines are compared with a screenshot; 'cut': the clipped ones
 * @property {string[]} [inexact]  elements whose outlines must not be exact
 * @property {string[]} [edgeOn]  elements that must be edge-on
 * @property {boolean} [mayBeEdgeOn]  edgeOn is not compared
 * @property {string[]} [noProbe]  elements whose corners are not probed
 * @property {boolean} [paintedCorners]  a corner that differs from its probe is no failure where the screenshot confirms the outline
 * @property {boolean} [noHits]  hits are not compared
 * @property {boolean} [paintedHits]  hits are compared with what is painted, not with the browser's
 * @property {boolean} [eitherHits]  hits must agree with the browser's or with what is painted
 */

const room = (inside, style = '') =>
  `<div id="room" style="perspective: 400px; width: 600px; height: 300px; margin: 60px 100px; ${style}">${inside}</div>`;
const box = (id, style, inside = '') =>
  `<div id="${id}" style="width: 200px; height: 120px; background: #ccc; ${style}">${inside}</div>`;
const turned = (inside, style = '') => room(box('turned', `transform: rotateY(50deg) rotateX(10deg); ${style}`, inside));

const spaceOf = (property) =>
  turned(box('child', 'width: 90px; height: 50px; margin: 30px 50px; transform: translateZ(30px) rotateX(60deg)'), `transform-style: preserve-3d; ${property}`);

const FLATTENING = [
  'overflow-x: hidden', 'overflow-y: scroll', 'overflow: clip', 'overflow-x: clip', 'opacity: 0.99', 'filter: blur(0)',
  'backdrop-filter: blur(1px)', 'clip-path: inset(-200px)', 'position: absolute; clip: rect(-500px, 900px, 900px, -500px)',
  'mix-blend-mode: multiply', 'isolation: isolate', 'mask: linear-gradient(#000, #000)',
  '-webkit-mask-box-image: linear-gradient(#000, #000)', '-webkit-box-reflect: below 2000px', 'view-transition-name: a',
  'contain: paint', 'contain: content', 'contain: strict', 'content-visibility: auto', 'will-change: opacity',
  'will-change: filter', 'will-change: backdrop-filter', 'will-change: transform, opacity',
];
const NOT_FLATTENING = [
  'contain: layout', 'contain: size', 'contain: style', 'will-change: transform', 'will-change: clip-path', 'will-change: mask',
  'will-change: isolation', 'will-change: mix-blend-mode', 'clip: rect(0, 0, 0, 0)', 'position: relative; z-index: 3',
];
// With these properties the browser's bounding boxes, probes and hits disagree with what it paints.
const containsPaint = /contain: (paint|content|strict)|visibility/;

export const cases = [
  // Own matrix
  { what: 'transform about an origin with z', html: room(box('a', 'transform: rotateY(60deg) skewX(10deg); transform-origin: 30% 90px 50px')) },
  { what: 'translate: percentages are of the border box', html: room(box('a', 'height: 900px; padding: 10px 20px; border: 5px solid; translate: 50% -25% 40px; transform: rotateX(80deg)')) },
  { what: 'translate: calc(), min(), max() and clamp()', html: room(box('a', 'zoom: 1.5; height: 600px; translate: calc(10% + 2 * min(20%, 30px)) clamp(10px, max(2%, min(5%, 3em)), 20px) calc(20px - 5px); transform: rotateX(80deg)')) },
  { what: 'rotate: an angle', html: box('a', 'margin: 100px; rotate: 33deg') },
  { what: 'rotate: an axis by letter', html: room(box('a', 'rotate: x 40deg') + box('b', 'rotate: y 0.1turn')) },
  { what: 'rotate: an axis by numbers', html: room(box('a', 'rotate: 1 2 -0.5 70deg')) },
  { what: 'rotate: an axis without length', html: room(box('a', 'rotate: 0 0 0 70deg')) },
  { what: 'percentages in transform', html: room(box('a', 'padding: 5px; height: 900px; transform: translate(-25%, 10%) rotateX(80deg) translate3d(10%, 3px, 20px)')), paintedHits: true },
  { what: 'scale: one, two and three numbers', html: room(box('a', 'scale: 0.5') + box('b', 'scale: 1.2 -0.5') + box('c', 'scale: 1 1 3; transform: rotateX(50deg)')) },
  { what: 'translate, then rotate, then scale, then transform', html: room(box('a', 'translate: 90px 20px; rotate: y 40deg; scale: 1.5 0.5; transform: rotateZ(30deg) translateX(40px); transform-origin: 10px 20px 5px')) },
  { what: 'a perspective of its own', html: box('a', 'margin: 80px; transform: perspective(300px) rotateY(50deg)') },
  { what: 'inline boxes and table columns are not transformed', html: room('<span id="a" style="transform: rotate(30deg)">some words</span><table><col id="b" style="transform: rotate(40deg)" width="90"><tr><td id="c">cell</td></tr></table>'), skip: ['b'] },
  { what: 'display: contents has no box', html: room(`<div id="a" style="display: contents; transform: rotate(30deg)">${box('b', 'transform: rotateY(30deg)')}</div>`), skip: ['a'] },
  { what: 'replaced inline elements turn', html: room('text <svg id="a" width="120" height="90" style="transform: rotateY(50deg)"></svg> <canvas id="b" width="100" height="80" style="transform: rotateX(40deg)"></canvas> <input id="c" style="display: inline; rotate: 20deg">') },
  { what: 'rows, cells and captions turn', html: '<table style="margin: 50px; perspective: 300px" border="1"><caption id="d" style="rotate: x 30deg">caption</caption><tr id="a" style="transform: rotate(10deg)"><td>one<td id="b" style="transform: translateX(30px) rotate(20deg)">two</tr><tr><td id="c">three</table>' },
  // Perspective
  { what: 'perspective is from the parent only', html: room(box('a', '', box('b', 'width: 90px; transform: rotateY(60deg)'))), paintedHits: true },
  { what: 'an element with display: contents gives no perspective', html: room(`<div style="display: contents; perspective: 20px">${box('a', 'transform: rotateY(40deg)')}</div>`) },
  { what: "perspective's origin is in the border box", html: room(box('a', 'transform: rotateX(40deg)'), 'perspective-origin: 20% 30px; border: 20px solid; padding: 30px') },
  { what: 'perspective is one pixel at least', html: room(box('a', 'width: 40px; height: 30px; transform: translateX(300px) rotateX(0.3deg)'), 'perspective: 0.2px') },
  { what: 'inline elements give no perspective', html: `<span id="a" style="perspective: 100px">${box('b', 'display: inline-block; rotate: y 50deg')}</span>` },
  { what: 'perspective applies to an untransformed preserve-3d box as well', html: room(box('a', 'transform-style: preserve-3d', box('b', 'transform: translateZ(100px) rotateY(20deg)'))) },
  // Space
  { what: 'matrices accumulate in space', html: turned(box('a', 'transform-style: preserve-3d; transform: translateZ(60px) rotateX(50deg)', box('b', 'width: 90px; transform: rotateY(70deg) translateZ(30px)')), 'transform-style: preserve-3d'), paint: ['b'] },
  { what: 'without space z is dropped', html: turned(box('a', 'transform: translateZ(60px) rotateX(50deg)', box('b', 'width: 90px; transform: rotateY(70deg)'))), paint: ['b'] },
  { what: 'a flat box without transform ends the space', html: turned(box('a', '', box('b', 'width: 90px; transform: rotateX(70deg)')), 'transform-style: preserve-3d'), paint: ['b'], paintedHits: true },
  { what: 'a flat box ends the space for an absolute box whose container is further out, too', html: turned(box('a', '', box('b', 'position: absolute; left: 40px; width: 90px; transform: rotateX(70deg)')), 'transform-style: preserve-3d'), paint: ['b'], paintedHits: true },
  { what: 'an inline box ends the space, though not in bounding boxes', html: turned(`<span style="transform-style: preserve-3d">${box('b', 'display: inline-block; width: 90px; transform: rotateX(70deg)')}</span>`, 'transform-style: preserve-3d'), paint: ['b'], noProbe: ['b'], paintedHits: true },
  { what: 'turned in a line beside a block: in bounding boxes such a line ends the space', html: turned(`<p>block</p>line ${box('b', 'display: inline-block; width: 90px; transform: rotateY(-50deg) translateZ(90px)')}`, 'transform-style: preserve-3d'), paint: ['b'], noProbe: ['b'], paintedHits: true },
  { what: 'an inline box without preserve-3d ends the space', html: turned(`<span>${box('b', 'display: inline-block; width: 90px; transform: rotateX(70deg)')}</span>`, 'transform-style: preserve-3d'), paint: ['b'], paintedHits: true },
  ...FLATTENING.map((property) => ({ what: `flat by ${property}`, html: spaceOf(property), paint: ['child'], noProbe: containsPaint.test(property) ? ['child'] : [], paintedHits: containsPaint.test(property) })),
  ...NOT_FLATTENING.map((property) => ({ what: `not flat by ${property}`, html: spaceOf(property), paint: ['child'] })),
  { what: "the root is flat", html: `<style>html { transform-style: preserve-3d; transform: perspective(500px) rotateX(30deg) } body { transform-style: preserve-3d; transform: rotateY(20deg) }</style>${box('a', 'margin: 100px; transform: translateZ(50px) rotateX(40deg)')}`, paint: ['a'] },
  { what: "the body's overflow makes the body flat, also where that overflow applies to the viewport", html: `<style>html { perspective: 500px } body { overflow: hidden; transform-style: preserve-3d; transform: rotateY(20deg) }</style>${box('a', 'margin: 100px; transform: translateZ(50px) rotateX(40deg)')}`, paint: ['a'] },
  { what: 'the body keeps its overflow when the root has one, too', html: `<style>html { overflow: hidden; perspective: 500px } body { overflow: auto; height: 500px; transform-style: preserve-3d; transform: rotateY(20deg) }</style>${box('a', 'margin: 100px; transform: translateZ(50px) rotateX(40deg)')}`, paint: ['a'] },
  // The eye
  { what: 'partly behind the eye', html: room(box('a', 'height: 900px; transform: rotateX(80deg)')), paint: ['a'] },
  { what: 'partly behind the eye, turned', html: room(box('a', 'width: 1500px; height: 900px; margin-left: -400px; transform: rotateZ(20deg) rotateY(75deg)')), paint: ['a'], paintedHits: true },
  { what: 'one corner behind the eye', html: room(box('a', 'width: 700px; height: 500px; transform: translateZ(200px) rotateY(50deg) rotateX(40deg)')), paint: ['a'] },
  { what: 'behind the eye', html: room(box('a', 'transform: translateZ(500px) rotateY(10deg)')), paint: ['a'] },
  { what: 'a side in the plane of the eye', html: room(box('a', 'height: 400px; transform-origin: top; transform: rotateX(90deg)'), 'perspective-origin: 50% -100px'), noProbe: ['a'], paint: ['a'], paintedHits: true },
  { what: 'partly behind the eye, painted outside of the bounding box', html: room(box('a', 'height: 500px; transform-origin: top; transform: rotateX(89deg)'), 'perspective-origin: 50% -100px'), paint: ['a'], paintedHits: true },
  { what: 'edge-on', html: room(box('a', 'position: relative; top: 90px; transform: rotateX(90deg)'), ''), paint: [], edgeOn: ['a'] },
  { what: 'partly behind the eye on a turned plane', html: room(box('a', 'width: 600px; height: 300px; perspective: 100px; transform: rotateY(30deg)', box('b', 'width: 600px; height: 300px; transform: rotateX(60deg)'))), paint: ['b'], paintedHits: true },
  { what: 'partly behind the eye on a plane that is so, too', html: room(box('a', 'width: 900px; height: 300px; perspective: 100px; transform: rotateY(60deg)', box('b', 'width: 900px; height: 300px; transform: rotateX(60deg)'))), paint: ['b'], paintedHits: true },
  { what: 'scaled to nothing', html: room(box('a', 'scale: 0') + box('b', 'transform: scaleX(0)')) },

  // Place
  { what: 'fractional borders and offsets of offset parents', html: turned('<div style="position: relative; border: 3.4px solid; margin: 7.3px; padding: 1.7px"><div id="a" style="position: relative; left: 5.26px; border: 2.6px solid; padding: 3.3px"><div id="b" style="width: 33.3px; height: 17.7px; margin: 2.45px"></div></div></div>') },
  { what: 'many nested boxes with fractional offsets', html: turned(`${'<div style="position: relative; padding: 0.45px; left: 0.3px">'.repeat(9)}<div id="a" style="width: 60.4px; height: 40.2px">`) },
  { what: 'absolute at fractions, seen from the side', html: turned(box('a', 'position: absolute; left: 10.4px; top: 20.7px; margin: 3.3px; width: 50%; height: 33%'), 'transform: rotateY(88deg)') },
  { what: 'scrolled containers, static and positioned', html: room(`<div id="s" style="overflow: scroll; width: 300px; height: 200px; transform: rotateY(30deg)"><div style="overflow: auto; height: 260px; width: 340px; border: 4px solid"><div style="height: 400px; width: 500px"><div id="a" style="width: 90px; height: 50px; margin: 120px 80px; transform: rotateX(20deg)"></div></div></div></div>`), prepare: () => document.querySelectorAll('#s, #s > div').forEach((s) => s.scrollTo(25, 35)), paintedHits: true },
  { what: 'absolute in a static scroller', html: turned('<div style="overflow: scroll; width: 150px; height: 80px"><div style="height: 300px">text<p><b id="b">line</b></div><div id="a" style="position: absolute; left: 50px; top: 30px; width: 40px; height: 30px"></div></div>'), prepare: () => document.querySelector('#turned > div').scrollTo(0, 40), noHits: true },
  { what: 'absolute in a positioned scroller', html: turned('<div style="position: relative; overflow: scroll; width: 150px; height: 80px; border: 5px solid"><div style="height: 300px">text</div><div id="a" style="position: absolute; left: 50px; top: 60px; width: 40px; height: 30px"></div></div>'), prepare: () => document.querySelector('#turned > div').scrollTo(0, 40), noHits: true },
  { what: 'fixed to the viewport of a scrolled page', html: `<div style="height: 3000px"><div style="perspective: none">${box('a', 'position: fixed; left: 50.5px; top: 60px; transform: perspective(300px) rotateY(40deg)')}${box('b', 'margin: 300px; rotate: 20deg')}</div></div>`, prepare: () => window.scrollTo(0, 151) },
  { what: 'fixed inside a transform', html: `<div style="height: 900px">${turned(`<div>${box('a', 'position: fixed; left: 50.5px; top: 60px; width: 60px; height: 50px; rotate: x 30deg')}</div>`, 'overflow: auto; height: 140px; transform-style: preserve-3d')}</div>`, prepare: () => window.scrollTo(0, 31) },
  { what: 'sticky', html: turned(`<div id="s" style="overflow: auto; height: 110px; width: 180px"><div style="height: 40px"></div><div id="a" style="position: sticky; top: 7px; height: 30px; width: 80px; background: #999"></div><div style="height: 400px"></div></div>`), prepare: () => document.querySelector('#s').scrollTo(0, 90), noHits: true },
  { what: 'places in a static body with borders', html: `<style>html { border: 5px solid; padding: 7px; margin: 3px } body { border: 4px solid; padding: 6px; margin: 11px }</style>${turned(box('a', 'position: absolute; width: 50px'))}${box('b', 'position: absolute; left: 20px; top: 30px; transform: perspective(200px) rotateX(30deg)')}` },
  { what: 'places in a positioned body', html: `<style>html { border: 5px solid; padding: 7px; margin: 3px } body { border: 4px solid; padding: 6px; position: relative }</style>${turned('')}${box('b', 'position: absolute; left: 20px; top: 30px; transform: perspective(200px) rotateX(30deg)')}` },
  { what: 'places in a transformed body', html: `<style>html { perspective: 800px; border: 5px solid } body { border: 4px solid; padding: 6px; transform: rotateY(30deg) }</style>${turned('')}${box('b', 'position: absolute; left: 20.5px; top: 30px; transform: perspective(200px) rotateX(30deg)')}${box('c', 'margin: 10.3px')}`, paintedHits: true },
  { what: 'places under a positioned, transformed, scrolled root', html: `<style>html { position: relative; margin: 12px; border: 5px solid; height: 1500px; transform: rotate(5deg); transform-origin: 0 0 } body { height: 1200px }</style>${turned('')}${box('b', 'position: absolute; left: 20.5px; top: 30px; transform: perspective(200px) rotateX(30deg)')}`, prepare: () => window.scrollTo(0, 40) },
  { what: 'a table with collapsed borders', html: turned('<table style="border-collapse: collapse; border: 5px solid"><tr><td id="a" style="border: 9px solid; padding: 3px">one<td id="b" style="border: 3px solid">two<tr><td id="c" style="border: 1px solid">three</table>'), noProbe: ['a', 'b', 'c'] },
  { what: 'a table with separate borders and a caption', html: turned('<table id="t" style="border: 5px solid; border-spacing: 3.5px"><caption id="d">words</caption><tr><td id="a">one<td><div id="b">two</div></table>'), noProbe: ['d', 't', 'a'] },
  { what: 'order of flex items', html: turned(`<div style="display: flex; gap: 3.3px">${[3, 1, 2].map((i) => `<div id="f${i}" style="order: ${i}; flex: ${i}; height: 40px; rotate: y ${i}0deg"></div>`).join('')}</div>`) },
  { what: 'scrolling from right to left', html: turned('<div id="s" dir="rtl" style="position: relative; overflow: scroll; width: 150px; height: 100px; border: 3px solid"><div id="a" style="width: 400px; height: 30px; background: #999"></div><div id="b" style="position: absolute; left: 20px; top: 40px; width: 30px; height: 20px"></div></div>'), prepare: () => document.querySelector('#s').scrollTo(-50, 0), noProbe: ['s'], noHits: true },
  { what: 'zoom', html: `<div style="zoom: 1.5">${room(box('a', 'zoom: 0.8; border: 3px solid; translate: 10% 5px; transform: rotateY(40deg) translateX(20px); transform-origin: 20px 30px', '<div id="b" style="zoom: 1.3; margin: 5px; width: 50px; height: 20px"></div>'), 'margin: 20px')}</div>` },
  { what: 'scroll bars are in the border box', html: room(box('a', 'box-sizing: content-box; overflow: scroll; padding: 5px; border: 3px solid; transform: rotateY(40deg)') + box('b', 'box-sizing: border-box; overflow: scroll; padding: 5px; border: 3px solid; transform: rotateY(40deg)')) },
  { what: 'slots and shadow roots', html: turned('<div id="h"><div id="a" style="width: 50px; height: 30px; rotate: y 30deg"></div></div>'), prepare: () => { document.querySelector('#h').attachShadow({ mode: 'open' }).innerHTML = '<div style="perspective: 100px; padding: 12.3px"><slot></slot></div>'; } },
  { what: 'the top layer', html: turned('<dialog id="d" style="transform: perspective(300px) rotateY(30deg)">words</dialog>'), prepare: () => document.querySelector('#d').showModal(), paintedHits: true },
  { what: 'inline boxes in a turned plane', html: turned('<p></p>words <span id="a" style="border: 2px solid; padding: 3px">in a line</span> and <b id="b">others</b>', 'border: 3.4px solid') },
  { what: 'images of SVG in a turned plane', html: turned('text <svg id="a" width="60.5" height="40.2" style="border: 2px solid; margin: 3.3px"></svg>') },
  // Hits
  { what: 'levels, floats, blocks and lines', html: `<style>div, span { margin: -10px 0 0 -6px } </style><div style="padding: 30px">${box('a', 'position: relative; z-index: 1')}${box('b', 'position: relative; z-index: -1; margin-top: -60px')}${box('c', 'float: left')}${box('d', 'margin-top: -60px; width: 400px')}${box('e', 'display: inline-block; margin-left: -50px')}${box('f', 'opacity: 0.9; margin-top: -70px; margin-left: 60px')}${box('g', 'position: absolute; top: 150px; left: 130px', box('h', 'position: relative; z-index: 2; left: 30px'))}${box('i', 'position: absolute; top: 45px; left: 50px')}</div>` },
  { what: 'a z-index counts only inside its stacking context', html: `<div style="isolation: isolate">${box('a', 'position: relative; z-index: 99')}</div>${box('b', 'position: relative; margin: -60px 0 0 40px')}<div style="isolation: isolate">${box('c', 'position: relative; z-index: -1; margin: -60px 0 0 70px')}</div>` },
  { what: 'levels of flex items and order', html: `<div style="display: flex">${box('a', 'z-index: 1; margin-right: -80px', 'x')}${box('b', 'margin-right: -80px; order: -1')}${box('c', 'margin-right: -80px; order: -1')}${box('d', 'order: -2; margin-right: -80px')}</div>` },
  { what: 'depth in a space', html: room(`<div id="s" style="transform-style: preserve-3d; transform: rotateY(20deg); height: 200px">${box('a', 'position: absolute; transform: translate3d(40px, 30px, 50px)')}${box('b', 'position: absolute; transform: rotateY(40deg)')}${box('c', 'position: absolute; z-index: 3; transform: translate(150px, 50px) rotateX(50deg)')}${box('d', 'position: absolute; transform: translate3d(100px, 80px, -40px)', box('e', 'margin: 20px; transform: translateZ(200px)'))}</div>`), paintedHits: true },
  { what: 'ties in depth go by painting order', html: room(`<div id="s" style="transform-style: preserve-3d; height: 200px">${box('a', 'position: absolute; transform: rotateY(30deg)')}${box('b', 'position: absolute; z-index: 1; transform: rotateY(30deg)')}${box('c', 'position: absolute; transform: rotateY(30deg)')}</div>`) },
  { what: 'depth in a space within a flat plane within a space', html: room(`<div style="transform-style: preserve-3d"><div id="s" style="transform: rotateY(30deg) translateZ(-50px); height: 250px"><div style="transform-style: preserve-3d">${box('a', 'position: absolute; transform: translateZ(30px)')}${box('b', 'position: absolute; transform: translate(90px, 30px) rotateY(10deg)')}</div></div>${box('c', 'position: absolute; top: 0; transform: translate3d(60px, 60px, -40px)')}</div>`), paintedHits: true, paint: ['a', 'b'], noProbe: ['a', 'b'] },
  { what: 'hidden boxes are not hit', html: room(box('a', '') + box('b', 'visibility: hidden; margin-top: -90px', box('c', 'visibility: visible; width: 50px'))) },
  { what: 'turned-away boxes are not hit', html: room(`<div id="s" style="transform-style: preserve-3d; transform: rotateY(140deg); height: 200px">${box('a', 'position: absolute; backface-visibility: hidden')}${box('b', 'position: absolute; transform: rotateY(180deg); backface-visibility: hidden; left: 100px', box('d', 'width: 60px'))}${box('c', 'position: absolute; backface-visibility: hidden; left: 300px; width: 90px; transform: scaleX(-1)')}</div>`), paintedHits: true },
  { what: 'a hidden back in a flat plane', html: room(`<div id="s" style="transform: rotateY(140deg); height: 200px">${box('a', 'backface-visibility: hidden')}${box('b', 'rotate: y 180deg; backface-visibility: hidden', box('d', 'width: 80px; rotate: 5deg'))}</div>`), paintedHits: true },
  { what: 'lines of inline boxes', html: '<p style="width: 200px">words and words and words <span id="a">of a line that goes on and on to a second line and a third</span> words' },
  // Not supported
  { what: 'inline boxes of several lines in a turned plane', html: turned('words and words and <span id="a">of a line that goes on and on to a second line and a third</span>'), inexact: ['a'], noHits: true },
  { what: 'columns', html: turned('<div style="columns: 2; height: 60px"><div id="a">words that go on and on to a second column and a third one, on and on and on</div></div>'), inexact: ['a'], noProbe: ['a'] },
  { what: 'columns in a plain page', html: '<div style="columns: 2; height: 30px; width: 300px"><div id="a">words that go on and on to a second column and a third one, on and on</div></div>', inexact: ['a'], noProbe: ['a'], noHits: true },
  { what: 'transform-box: content-box', html: room(box('a', 'transform-box: content-box; padding: 20px; rotate: 30deg')), inexact: ['a'], noProbe: ['a'] },
  { what: 'inner SVG elements', html: '<svg id="s" width="200" height="100"><rect id="a" width="90" height="50" transform="rotate(10)" /></svg>', inexact: ['a'] },
  { what: 'offset-path', html: room(box('a', "offset-path: path('M 0 0 L 100 50'); offset-distance: 50%")), inexact: ['a'], noProbe: ['a'], noHits: true },
];
