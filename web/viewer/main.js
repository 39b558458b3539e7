// The viewer: its tabs, its theme, what is dropped on it, and the self-check.
import { load } from 'zan';
import { selfCheck } from 'zan/selfcheck.js';
import { bundled, bytesOf } from './bundled.js';
import { DeckTab } from './deck_tab.js';
import { PageTab } from './page_tab.js';

const byId = (id) => document.getElementById(id);

const toast = byId('toast');
let toastTimer;
function say(text) {
  toast.textContent = text;
  toast.hidden = false;
  clearTimeout(toastTimer);
  toastTimer = setTimeout(() => (toast.hidden = true), 8000);
}

function startTheme() {
  const button = byId('theme');
  const isDark = matchMedia('(prefers-color-scheme: dark)');
  const apply = (dark) => {
    document.documentElement.dataset.theme = dark ? 'dark' : 'light';
    button.setAttribute('aria-pressed', dark);
    dispatchEvent(new Event('resize'));
  };
  apply(isDark.matches);
  isDark.addEventListener('change', () => apply(isDark.matches));
  button.addEventListener('click', () => apply(document.documentElement.dataset.theme === 'light'));
}

function startTabs(tabs) {
  const buttons = [...document.querySelectorAll('[role="tab"]')];
  const choose = (chosen) => {
    for (const button of buttons) {
      button.setAttribute('aria-selected', button === chosen);
      button.tabIndex = button === chosen ? 0 : -1;
      byId(button.getAttribute('aria-controls')).hidden = button !== chosen;
    }
    tabs[buttons.indexOf(chosen)].start();
  };
  buttons.forEach((button, i) => {
    button.addEventListener('click', () => choose(button));
    button.addEventListener('keydown', ({ key }) => {
      if (key !== 'ArrowLeft' && key !== 'ArrowRight') return;
      const other = buttons[(i + 1) % buttons.length];
      other.focus();
      choose(other);
    });
  });
  return () => tabs[buttons.findIndex((button) => button.getAttribute('aria-selected') === 'true')];
}

function startDrop(current) {
  const area = byId('drop');
  addEventListener('dragover', (event) => {
    event.preventDefault();
    area.hidden = false;
  });
  area.addEventListener('dragleave', () => (area.hidden = true));
  addEventListener('drop', (event) => {
    event.preventDefault();
    area.hidden = true;
    const file = event.dataTransfer.files[0];
    if (file) current().open(file);
    else say('Drop a file: one HTML page');
  });
}

startTheme();
await load(await bytesOf(bundled.wasm));
const tabs = [new DeckTab(say), new PageTab(say)];
startDrop(startTabs(tabs));
await tabs[0].start();
document.documentElement.dataset.ready = '';

const check = byId('selfcheck');
const { script, wasm } = bundled.selfcheck;
selfCheck({ script, wasm: await bytesOf(wasm) }).then(
  ({ line, same }) => {
    check.textContent = line;
    check.className = `check ${same ? 'good' : 'bad'}`;
  },
  (error) => {
    check.textContent = error.message;
    check.className = 'check bad';
  },
);
