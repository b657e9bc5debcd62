import { byId, setText } from './dom.js';
import * as format from './format.js';

const YOUNG_MS = 1000;

/** Says on the picture how old it is, and whether that is because nothing changes or because nothing comes. */
export class PictureAge {
  #label = byId('picture-age');

  /** `at`: when the picture on view reached the service; null while there is none. */
  update(at, state, now) {
    const age = at === null ? 0 : now - at;
    this.#label.hidden = age <= YOUNG_MS || ['ended', 'background'].includes(state.key);
    if (this.#label.hidden) return;
    this.#label.dataset.state = state.key;
    setText(this.#label, state.key === 'live' ? `${words(age)} old, unchanged` : `${words(age)} old · ${state.note}`);
  }
}

// Whole seconds: it is read while it counts.
const words = (age) => (age < 10000 ? `${Math.floor(age / 1000)} s` : format.age(age));
