import { byId } from './dom.js';

const SHOWN_MS = 3500;

let timer = 0;

/** Says something in passing. */
export function toast(text) {
  const box = byId('toast');
  box.textContent = text;
  box.hidden = false;
  clearTimeout(timer);
  timer = setTimeout(() => { box.hidden = true; }, SHOWN_MS);
}
