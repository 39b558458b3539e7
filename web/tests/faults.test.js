// Do the cases notice when a rule is broken? Each fault changes one place in the sources; at least one of the cases
// whose titles match its pattern must fail.
import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { after, before, test } from 'node:test';
import { openBrowser } from './browser.js';
import { cases } from './cases.js';
import { problemsOf } from './check.js';

const style = (from, to, noticed) => ({ file: 'dom/style.js', from, to, noticed });
const boxes = (from, to, noticed) => ({ file: 'dom/boxes.js', from, to, noticed });
const offsets = (from, to, noticed) => ({ file: 'dom/offsets.js', from, to, noticed });
const hits = (from, to, noticed) => ({ file: 'dom/hits.js', from, to, noticed });
const bounds = (from, to, noticed) => ({ file: 'dom/bounds.js', from, to, noticed });
const order = (from, to, noticed) => ({ file: 'dom/paint_order.js', from, to, noticed });

const faults = [
  style("[x, y, z = 0] = transformOrigin.split(' ').map((text) => parseFloat(text) * zoom)", "[x, y, z = 0] = transformOrigin.split(' ').map((text) => parseFloat(text) * zoom).slice(0, 2)", /^transform about/),
  style('(Number(simple[1]) * whole) / 100', 'Number(simple[1])', /^translate: percent/),
  style('(value * term()) / zoom', 'value', /^translate: calc/),
  style('low, Math.min(value, high)', 'low, Math.max(value, high)', /^translate: calc/),
  style('length(step.x.toString(), width, 1)', '0', /^percentages in transform/),
  style('y: [0, 1, 0]', 'y: [0, 0, 1]', /^rotate: an axis by letter/),
  style('tokens.length === 3 ? tokens.map(Number)', 'tokens.length === 4 ? tokens.map(Number)', /^rotate: an axis by numbers/),
  style('[x, y = x, z = 1]', '[x, y = 1, z = 1]', /^scale/),
  style("if (scale !== 'none') steps.push(parseScale(scale));", "if (scale !== 'none') steps.unshift(parseScale(scale));", /^translate, then/),
  style("if (rotate !== 'none') steps.push", "if (rotate !== 'none') steps.unshift", /^translate, then/),
  style("!isInlineBox(element, display) && display !== 'contents'", "display !== 'contents'", /^inline boxes and/),
  style('&& !isReplaced(element)', '', /^replaced/),
  style('Math.max(parseFloat(perspective), 1)', 'parseFloat(perspective)', /^perspective is one/),
  boxes('(atOrigin ? 0 : box.x) + x', 'x', /^perspective's origin/),
  boxes('const distance = box.isTransformable ?', 'const distance = true ?', /^inline elements give/),
  boxes('const inSpace = plane && parent.keepsSpace', 'const inSpace = false', /^matrices accumulate/),
  boxes('const inSpace = plane && parent.keepsSpace', 'const inSpace = plane', /^without space/),
  boxes('isSpace = transformable;', 'isSpace = false;', /^perspective applies to an untransformed/),
  boxes('box.keepsSpace = transformable && ', 'box.keepsSpace = ', /^an inline box ends/),
  style('    clips ||', '    false ||', /^flat by overflow/),
  style('given(style.viewTransitionName)', 'false', /^the root is flat/),
  style("style.opacity < 1 ||\n    style.filter", 'style.filter', /^flat by opacity/),
  style("style.filter !== 'none' ||\n    given(style.backdropFilter)", 'given(style.backdropFilter)', /^flat by filter/),
  style("given(style.backdropFilter) ||\n    style.clipPath", 'style.clipPath', /^flat by backdrop/),
  style("style.clipPath !== 'none' ||\n    (positioned", '(positioned', /^flat by clip-path/),
  style("(positioned && style.clip !== 'auto')", 'false', /^flat by position/),
  style("(positioned && style.clip !== 'auto')", "style.clip !== 'auto'", /^not flat by clip/),
  style("style.mixBlendMode !== 'normal' ||\n    style.isolation", 'style.isolation', /^flat by mix/),
  style("style.isolation !== 'auto' ||\n    hasMask", 'hasMask', /^flat by isolation/),
  style('given(style.maskImage ?? style.webkitMaskImage) ||', '', /^flat by mask/),
  style(' || given(style.maskBorderSource ?? style.webkitMaskBoxImageSource)', '', /^flat by -webkit-mask/),
  style("given(style.webkitBoxReflect) ||\n", '', /^flat by -webkit-box/),
  style("given(style.viewTransitionName) ||\n", '', /^flat by view/),
  style("['opacity', 'filter', 'backdrop-filter']", "['opacity']", /^flat by will-change: f/),
  style("['opacity', 'filter', 'backdrop-filter']", "['filter', 'opacity']", /^flat by will-change: b/),
  style("['opacity', 'filter', 'backdrop-filter']", "['filter', 'backdrop-filter']", /^flat by will-change: o/),
  style("['opacity', 'filter', 'backdrop-filter']", "['opacity', 'filter', 'backdrop-filter', 'mask', 'transform']", /^not flat by will-change/),
  style("contains(style.contain, ['paint', 'content', 'strict'])", "contains(style.contain, ['content', 'strict'])", /^flat by contain: p/),
  style("contains(style.contain, ['paint', 'content', 'strict'])", "contains(style.contain, ['paint', 'strict'])", /^flat by contain: c/),
  style("contains(style.contain, ['paint', 'content', 'strict'])", "contains(style.contain, ['paint', 'content'])", /^flat by contain: s/),
  style("contains(style.contain, ['paint', 'content', 'strict'])", "style.contain !== 'none'", /^not flat by contain/),
  style("|| style.contentVisibility !== 'visible';\n\n", ';\n\n', /^flat by content-v/),
  { file: 'dom/geometry.js', from: 'points.length / 2, x, y', to: 'Math.min(4, points.length / 2), x, y', noticed: /^(partly behind the eye|one corner)/ },
  { file: 'dom.js', from: 'edgeOn = isEdgeOn(plane.map, part)', to: 'edgeOn = false', noticed: /^edge-on/ },
  offsets('x: x + (left +', 'x: x + (0 +', /^inline boxes in/),
  offsets('y -= scroll.y;', '', /^scrolled|^absolute in|^sticky/),
  offsets("style.boxSizing === 'border-box' && isSize(computed)", 'true', /^scroll bars/),
  offsets("style.display === 'table-cell' && style.borderCollapse === 'collapse'", 'false', /collapsed borders/),
  boxes('box.place = [found.x, found.y];', 'box.place = [Math.round(found.x), Math.round(found.y)];', /^fractional/),
  boxes('if (rects.length > 1 && !(box.isInline && inUprightPlane)) box.exact = false;', '', /^columns in a plain/),
  boxes("(style.offsetPath ?? 'none') === 'none' &&", '', /^offset-path/),
  boxes("!(transformed && style.transformBox === 'content-box')", 'true', /^transform-box/),
  boxes('if (isInsideSvg(element)) return placeByBounds(box, seen, null, false);', '', /^inner SVG/),
  boxes('if (element.assignedSlot) return element.assignedSlot;', '', /^slots/),
  { file: 'dom.js', from: 'if (isInTopLayer(element, this)) return null;', to: '', noticed: /^the top layer/ },
  boxes('const zoom = element.currentCSSZoom ?? 1;', 'const zoom = 1;', /^zoom/),
  order('a.level - b.level', '0', /^levels, floats/),
  order('for (const float of flow.floats) this.#paint(float, []);\n', '', /^levels, floats/),
  order("else if (style.display.startsWith('inline')) flow.inlines.push([child, true]);\n      else", 'else', /^levels, floats/),
  order('if (!isContext) this.#gatherLevels(child, levels);', 'this.#gatherLevels(child, levels);', /^a z-index counts only/),
  order('children.sort(', 'children.slice().sort(', /^levels of flex/),
  order('return depthB - depthA', 'return index.get(b.element) - index.get(a.element)', /^depth in a space$/),
  order('> 1e-6 *', '> -1 *', /^ties in depth/),
  bounds('if (a === 0 && b === 0) return true;', 'return true;', /^partly behind the eye, painted/),
  bounds('range === 0 ||', 'true ||', /^a side in the plane of the eye/),
  bounds('isFollowed && isSame &&', '', /^flat by contain: p/),
  bounds('this.isFlat || !this.mayWrap(child, look)', 'true', /beside a block/),
  hits('isPlain && space.isSimple', 'isPlain', /^an inline box ends/),
  hits("box.style.visibility !== 'visible'", 'false', /^hidden boxes/),
  hits('box.plane?.isHidden || ', '', /^turned-away/),
  boxes('return orientation * determinant(m) < 0', 'return orientation < 0', /^turned-away/),
  boxes('(transformed || parent?.keepsSpace)', 'transformed', /^turned-away/),
  boxes('this.isHidden = outer !== null && outer.isHidden;', 'this.isHidden = false;', /^a hidden back/),
  hits(' && element.getRootNode() === scope', '', /^slots/),
  hits('!isRow(hit) || others', 'true || others', /^rows, cells/),
];

let browser;
let page;
before(async () => ({ browser, page } = await openBrowser()));
after(() => browser.close());

const only = new RegExp(process.env.ONLY ?? '');

for (const fault of faults.filter(({ from }) => only.test(from))) {
  test(`${fault.file}: ${fault.from.slice(0, 60)} -> ${fault.to.slice(0, 40)}`, async () => {
    const source = await readFile(new URL(`../${fault.file}`, import.meta.url), 'utf8');
    assert.ok(source.includes(fault.from), 'the sources no longer contain the text to replace');
    const suspects = cases.filter(({ what }) => fault.noticed.test(what));
    assert.ok(suspects.length > 0, 'no case matches the pattern');
    page.fault = fault;
    for (const testCase of suspects) if ((await problemsOf(page, testCase)).length > 0) return;
    assert.fail('not noticed');
  });
}
