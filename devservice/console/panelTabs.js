import { byId } from './dom.js';

const NAMES = ['timeline', 'chat'];

/** Timeline or chat beside the picture. A visitor without a session has no timeline. */
export class PanelTabs {
  #chosen = 'timeline';
  #shown = '';
  #onShow;

  /** onShow(name) after another pane has come into view. */
  constructor(onShow) {
    this.#onShow = onShow;
    for (const name of NAMES) byId(`${name}-tab`).addEventListener('click', () => this.choose(name));
    byId('tabs').addEventListener('keydown', (event) => {
      if (event.key !== 'ArrowLeft' && event.key !== 'ArrowRight') return;
      this.choose(NAMES.find((name) => name !== this.#shown));
      byId(`${this.#shown}-tab`).focus();
    });
    this.update(true);
  }

  isShown(name) {
    return name === this.#shown;
  }

  choose(name) {
    this.#chosen = name;
    this.update(!byId('timeline-tab').hidden);
  }

  update(hasSession) {
    byId('timeline-tab').hidden = !hasSession;
    const next = hasSession ? this.#chosen : 'chat';
    if (next === this.#shown) return;
    this.#shown = next;
    for (const name of NAMES) {
      byId(`${name}-pane`).hidden = name !== next;
      byId(`${name}-tab`).setAttribute('aria-selected', String(name === next));
      byId(`${name}-tab`).tabIndex = name === next ? 0 : -1;
    }
    this.#onShow(next);
  }
}
