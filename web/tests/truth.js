// The browser's own answers and pixels, with which outlines and hits are compared.
import { pixels } from './browser.js';

/** The distance of a point from an outline. */
export function distanceTo(points, x, y) {
  let best = Infinity;
  points.forEach((a, i) => {
    const b = points[(i + 1) % points.length];
    const [dx, dy] = [b.x - a.x, b.y - a.y];
    const share = ((x - a.x) * dx + (y - a.y) * dy) / (dx * dx + dy * dy || 1);
    const t = Math.max(0, Math.min(1, share));
    best = Math.min(best, Math.hypot(a.x + t * dx - x, a.y + t * dy - y));
  });
  return best;
}

export function holds(points, x, y) {
  let inside = false;
  points.forEach((a, i) => {
    const b = points[(i + 1) % points.length];
    if (a.y > y !== b.y > y && x < ((b.x - a.x) * (y - a.y)) / (b.y - a.y) + a.x) inside = !inside;
  });
  return inside;
}

/** Pixels more than a pixel and a half off the edges where an element, painted alone, and its outline disagree. */
export async function wrongPixels(page, id, points) {
  const style = await page.addStyleTag({
    content: `* { visibility: hidden !important; animation-play-state: paused !important; }
      html, body { background: #fff !important; }
      ::-webkit-scrollbar { visibility: hidden; }
      #${id} { visibility: visible !important; background: #000 !important; border-color: #000 !important; color: #000 !important; }`,
  });
  const picture = await pixels(page);
  await style.evaluate((element) => element.remove());
  const wrong = [];
  for (let y = 1; y < picture.height; y += 3) {
    for (let x = 1; x < picture.width; x += 3) {
      const [px, py] = [x + 0.5, y + 0.5];
      if (picture.isPainted(x, y) !== holds(points, px, py) && distanceTo(points, px, py) > 1.6) wrong.push([x, y]);
    }
  }
  return wrong;
}

/** The corners of an element, measured by probe elements of zero size that are added and removed. Runs in the page. */
export function probeCorners(id) {
  const element = document.getElementById(id);
  const style = getComputedStyle(element);
  const before = element.getAttribute('style');
  if (element.localName === 'svg' || element.localName === 'canvas' || element.localName === 'input') return [];
  if (style.display === 'inline' || style.display === 'table-row') return [];
  if (style.position === 'static') element.style.position = 'relative';
  const corners = [['Left', 'Top'], ['Right', 'Top'], ['Right', 'Bottom'], ['Left', 'Bottom']].map(([h, v]) => {
    const probe = document.createElement('i');
    const scroll = { Left: element.scrollLeft, Top: element.scrollTop, Right: -element.scrollLeft, Bottom: -element.scrollTop };
    const at = (side) => `${side.toLowerCase()}:${scroll[side] - parseFloat(style[`border${side}Width`])}px`;
    probe.style.cssText = `all:initial;position:absolute;display:block;width:0;height:0;${at(h)};${at(v)}`;
    element.append(probe);
    const { left, top } = probe.getBoundingClientRect();
    probe.remove();
    return { x: left, y: top };
  });
  if (before === null) element.removeAttribute('style');
  else element.setAttribute('style', before);
  return corners;
}

/**
 * Points more than a pixel off all edges where the first hit is not the browser's. Elements with a corner
 * behind the eye are not compared. Runs in the page.
 */
export function hitsUnlikeBrowser() {
  const look = zan.look();
  const wrong = [];
  const name = (element) => element?.id || element?.localName || 'nothing';
  const isIn = (element, x, y, tolerance = 0) => look.hitsAt(x, y, { within: element, tolerance }).includes(element);
  const steps = [[1.25, 0], [-1.25, 0], [0, 1.25], [0, -1.25]];
  for (let y = 7.5; y < innerHeight; y += 23) {
    for (let x = 7.5; x < innerWidth; x += 23) {
      const ours = look.hitsAt(x, y).find((element) => !look.outlineOf(element).behind.includes(true));
      const theirs = document.elementFromPoint(x, y);
      if (ours === theirs || theirs === null || (!ours && theirs === document.documentElement)) continue;
      if (look.outlineOf(theirs).behind.includes(true)) continue;
      // At an edge of one of them either answer is right.
      if (isIn(theirs, x, y, 1.25) && !isIn(theirs, x, y)) continue;
      if (ours && !steps.every(([dx, dy]) => isIn(ours, x + dx, y + dy))) continue;
      wrong.push(`${name(ours)} instead of ${name(theirs)} at (${x}, ${y})`);
    }
  }
  return wrong;
}

// 63 colours that are far from each other and from white.
const PALETTE = Array.from({ length: 63 }, (_, i) => [i % 4, (i >> 2) % 4, i >> 4].map((level) => level * 85));

/**
 * Points, with one colour two pixels around, where the first hit with an id is not the element that is painted there.
 * Every element with an id gets a colour of its own.
 */
export async function hitsUnlikePaint(page, ids) {
  const colour = (i) => `rgb(${PALETTE[i]}) !important`;
  const rules = ids.map((id, i) => `#${id} { background: ${colour(i)}; border-color: ${colour(i)}; }`);
  const style = await page.addStyleTag({
    content: `* { background: none !important; color: transparent !important; box-shadow: none !important; } ${rules.join('')}`,
  });
  const picture = await pixels(page);
  await style.evaluate((element) => element.remove());
  const colours = [...PALETTE.slice(0, ids.length), [255, 255, 255]];
  const seen = (x, y) => {
    const off = colours.map((colour) => colour.reduce((sum, value, c) => sum + Math.abs(value - picture.at(x, y)[c]), 0));
    return ids[off.indexOf(Math.min(...off))] ?? 'nothing';
  };
  const points = [];
  for (let y = 7; y < picture.height - 5; y += 23) {
    for (let x = 7; x < picture.width - 5; x += 23) {
      const here = seen(x, y);
      const even = [[2, 0], [-2, 0], [0, 2], [0, -2]].every(([dx, dy]) => seen(x + dx, y + dy) === here);
      if (even) points.push([x + 0.5, y + 0.5, here]);
    }
  }
  return page.evaluate(([points, ids]) => {
    const look = zan.look();
    return points.flatMap(([x, y, here]) => {
      const ours = look.hitsAt(x, y).find((element) => ids.includes(element.id))?.id ?? 'nothing';
      return ours === here ? [] : [`${ours} instead of ${here}, which is painted, at (${x}, ${y})`];
    });
  }, [points, ids]);
}
