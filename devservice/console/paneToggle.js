import { byId } from './dom.js';

/** A button that shows a pane and puts it away. */
export class PaneToggle {
  #button;
  #pane;

  constructor(button, pane, shown) {
    this.#button = byId(button);
    this.#pane = byId(pane);
    this.#button.addEventListener('click', () => this.show(this.#pane.hidden));
    this.show(shown);
  }

  show(shown) {
    this.#pane.hidden = !shown;
    this.#button.setAttribute('aria-expanded', String(shown));
  }
}
