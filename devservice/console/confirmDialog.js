import { byId } from './dom.js';

/** Asks the agent; resolves to whether to go ahead. */
export function confirm({ title, text, action }) {
  const dialog = byId('confirm');
  byId('confirm-title').textContent = title;
  byId('confirm-text').textContent = text;
  byId('confirm-action').textContent = action;
  dialog.returnValue = '';
  dialog.showModal();
  return new Promise((resolve) => {
    dialog.addEventListener('close', () => resolve(dialog.returnValue === 'yes'), { once: true });
  });
}
