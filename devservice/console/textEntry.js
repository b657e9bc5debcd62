import { byId } from './dom.js';

/** Where the agent writes a text that goes onto the visitor's screen. */
export class TextEntry {
  #field = byId('text-entry');
  #place = null;
  #onWrite;

  /** onWrite(place, text) */
  constructor(onWrite) {
    this.#onWrite = onWrite;
    this.#field.addEventListener('keydown', (event) => {
      event.stopPropagation();
      if (event.key === 'Enter' && !event.isComposing) this.#commit();
      else if (event.key === 'Escape') this.close();
      else return;
      event.preventDefault();
      byId('surface').focus();
    });
    this.#field.addEventListener('blur', () => this.#commit());
  }

  open(place, { colour }) {
    this.#commit();
    this.#place = place;
    this.#field.value = '';
    this.#field.style.left = `${Math.min(place.left, 0.7) * 100}%`;
    this.#field.style.top = `${place.top * 100}%`;
    this.#field.style.color = colour;
    this.#field.hidden = false;
    this.#field.focus();
  }

  close() {
    this.#place = null;
    this.#field.hidden = true;
  }

  #commit() {
    const place = this.#place;
    const text = this.#field.value.trim();
    this.close();
    if (place && text) this.#onWrite(place, text);
  }
}
