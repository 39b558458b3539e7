// The search box. search_index.js holds `searchIndex`, entries [name, address, description], and `searchSynonyms`, from a
// word to names of entries. An entry is found when each word of the query is its name or a word of it, is the beginning
// of a synonym, occurs within the name, or occurs in the description, in this order of rank.
'use strict';

const EXACT = 0;
const WORD_OF_NAME = 1;
const SYNONYM = 2;
const SUBSTRING_OF_NAME = 3;
const DESCRIPTION = 6;
const MAX_HITS = 30;

/** The words of a name: "Zan_RayIntersectPlane" gives zan, ray, intersect, plane. */
function partsOf(name) {
  return name.replace(/([a-z])([A-Z0-9])/g, '$1 $2').toLowerCase().split(/[^a-z0-9]+/);
}

function rankOf(word, [name, , description]) {
  const lower = name.toLowerCase();
  if (lower === word || lower === `zan_${word}`) return EXACT;
  if (partsOf(name.split('::').pop()).includes(word)) return WORD_OF_NAME;
  for (const [synonym, names] of Object.entries(searchSynonyms)) {
    const place = synonym.startsWith(word) ? names.indexOf(name) : -1;
    if (place >= 0) return SYNONYM + place / names.length;
  }
  if (lower.includes(word)) return SUBSTRING_OF_NAME;
  return description.toLowerCase().includes(word) ? DESCRIPTION : Infinity;
}

/** The best entries for a query, the best one first. */
function findEntries(query) {
  const words = query.toLowerCase().split(/\s+/).filter(Boolean);
  if (words.length === 0) return [];
  const rank = (entry) => words.reduce((sum, word) => sum + rankOf(word, entry), 0);
  return searchIndex
    .map((entry) => ({ entry, rank: rank(entry) }))
    .filter((hit) => hit.rank < Infinity)
    .sort((a, b) => a.rank - b.rank || a.entry[0].length - b.entry[0].length)
    .slice(0, MAX_HITS)
    .map((hit) => hit.entry);
}

function element(name, text = '') {
  return Object.assign(document.createElement(name), { textContent: text });
}

function showHits(list, query) {
  const items = findEntries(query).map(([name, address, description]) => {
    const link = element('a');
    link.href = address;
    link.append(element('b', name), ' ', element('span', description));
    const item = element('li');
    item.append(link);
    return item;
  });
  if (items.length === 0) items.push(element('li', 'nothing found'));
  list.replaceChildren(...items);
  list.hidden = query.trim() === '';
}

function start() {
  const input = document.querySelector('#search input');
  const list = document.querySelector('#search ol');
  const close = () => (list.hidden = true);
  input.addEventListener('input', () => showHits(list, input.value));
  input.addEventListener('focus', () => showHits(list, input.value));
  list.addEventListener('click', close);
  document.addEventListener('click', (event) => event.target.closest('#search') || close());
  document.addEventListener('keydown', (event) => {
    const links = [...list.querySelectorAll('a')];
    const at = links.indexOf(document.activeElement);
    if (event.key === '/' && document.activeElement !== input) input.focus();
    else if (list.hidden) return;
    else if (event.key === 'Escape') close();
    else if (event.key === 'ArrowDown') links[Math.min(at + 1, links.length - 1)]?.focus();
    else if (event.key === 'ArrowUp') (links[at - 1] ?? input).focus();
    else if (event.key === 'Enter' && document.activeElement === input) links[0]?.click();
    else return;
    event.preventDefault();
  });
}

start();
