//! [outline]
import { load, look } from 'zan/dom.js';
await load();
const now = look();
const { points, behind, exact } = now.outlineOf(document.querySelector('.card'));
const hits = now.hitsAt(400, 300, { tolerance: 5 });
//! [outline]
console.log(points.length, behind.includes(true), exact, hits.map(({ localName }) => localName).join(' '));

//! [draw]
const overlay = document.querySelector('svg polygon');
function frame() {
  const { points } = look().outlineOf(document.querySelector('.card'));
  overlay.setAttribute('points', points.map(({ x, y }) => `${x},${y}`).join(' '));
  requestAnimationFrame(frame);
}
frame();
//! [draw]
console.log(overlay.getAttribute('points').split(' ').length);
