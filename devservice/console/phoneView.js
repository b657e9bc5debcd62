import { byId, element } from './dom.js';
import { shareCode, visitorState } from './visitorState.js';
import * as format from './format.js';

const TAP_SHOWN_MS = 2600;
const MOST_TAPS = 24;

/** The live picture in its phone, with the taps drawn on it. */
export class PhoneView {
  #phone = byId('phone');
  #canvas = byId('picture');
  #taps = byId('taps');
  #veil = byId('veil');
  #next = null;
  #decoding = false;
  #generation = 0;
  #hasPicture = false;

  /** Forgets the picture, for another visitor. */
  clear() {
    this.#generation += 1;
    this.#next = null;
    this.#hasPicture = false;
    this.#canvas.width = 1;
    this.#canvas.height = 1;
    this.#taps.replaceChildren();
  }

  /** Shows a picture; while one is being decoded only the last of those that arrive is kept. */
  async frame(jpeg) {
    this.#next = jpeg;
    if (this.#decoding) return;
    this.#decoding = true;
    while (this.#next) {
      const current = this.#next;
      const generation = this.#generation;
      this.#next = null;
      try {
        const bitmap = await createImageBitmap(current);
        if (generation === this.#generation) this.#draw(bitmap);
        bitmap.close();
      } catch (error) {
        console.warn('A picture could not be decoded', error);
      }
    }
    this.#decoding = false;
  }

  #draw(bitmap) {
    if (this.#canvas.width !== bitmap.width || this.#canvas.height !== bitmap.height) {
      this.#canvas.width = bitmap.width;
      this.#canvas.height = bitmap.height;
      this.#phone.style.setProperty('--ratio', String(bitmap.width / bitmap.height));
    }
    this.#canvas.getContext('2d').drawImage(bitmap, 0, 0);
    this.#hasPicture = true;
    this.#veil.hidden = this.#phone.dataset.state !== 'ended';
  }

  /** The shown picture's size, null while there is none. */
  get picture() {
    return this.#hasPicture ? { width: this.#canvas.width, height: this.#canvas.height } : null;
  }

  /** Marks a tap at a place given as fractions of the screen. */
  mark({ left, top }, className = '') {
    if (left < 0 || left > 1 || top < 0 || top > 1) return;
    const mark = element('span', `tap ${className}`);
    mark.style.left = `${left * 100}%`;
    mark.style.top = `${top * 100}%`;
    this.#taps.append(mark);
    while (this.#taps.childElementCount > MOST_TAPS) this.#taps.firstElementChild.remove();
    setTimeout(() => mark.remove(), TAP_SHOWN_MS);
  }

  /** Follows the visitor's state. */
  update(visitor, now) {
    const state = visitorState(visitor, now);
    this.#phone.dataset.state = state.key;
    const page = visitor.page ? `, page ${visitor.page}` : '';
    this.#canvas.setAttribute('aria-label', `Screen of visitor ${shareCode(visitor)}${page}, ${state.label}`);
    const ended = state.key === 'ended';
    this.#veil.hidden = this.#hasPicture && !ended;
    this.#veil.textContent = ended
      ? `Session ended at ${format.time(visitor.endedAt)}`
      : 'Waiting for the first picture';
  }
}
