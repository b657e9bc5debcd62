import { byId, element, setText } from './dom.js';
import { PictureAge } from './pictureAge.js';
import { shareCode, visitorState } from './visitorState.js';

const TAP_SHOWN_MS = 2600;
const MOST_TAPS = 24;
const OVER = ['ended', 'background'];

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
  #at = null;
  #number = 0;
  #skipped = 0;
  #age = new PictureAge();

  /** Forgets the picture, for another visitor. */
  clear() {
    this.#generation += 1;
    this.#next = null;
    this.#hasPicture = false;
    this.#at = null;
    this.#number = 0;
    this.#skipped = 0;
    this.#canvas.width = 1;
    this.#canvas.height = 1;
    this.#taps.replaceChildren();
  }

  /** Shows a picture; while one is being decoded only the last of those that arrive is kept. */
  async frame(picture) {
    if (this.#number > 0) this.#skipped += Math.max(0, picture.number - this.#number - 1);
    this.#number = picture.number;
    this.#next = picture;
    if (this.#decoding) return;
    this.#decoding = true;
    while (this.#next) {
      const current = this.#next;
      const generation = this.#generation;
      this.#next = null;
      try {
        const bitmap = await createImageBitmap(current.jpeg);
        if (generation === this.#generation) this.#draw(bitmap, current.at);
        bitmap.close();
      } catch (error) {
        console.warn('A picture could not be decoded', error);
      }
    }
    this.#decoding = false;
  }

  #draw(bitmap, at) {
    if (this.#canvas.width !== bitmap.width || this.#canvas.height !== bitmap.height) {
      this.#canvas.width = bitmap.width;
      this.#canvas.height = bitmap.height;
      this.#phone.style.setProperty('--ratio', String(bitmap.width / bitmap.height));
    }
    this.#canvas.getContext('2d').drawImage(bitmap, 0, 0);
    this.#hasPicture = true;
    this.#at = at;
    this.#veil.hidden = !OVER.includes(this.#phone.dataset.state);
  }

  /** The shown picture's size, null while there is none. */
  get picture() {
    return this.#hasPicture ? { width: this.#canvas.width, height: this.#canvas.height } : null;
  }

  /** The last picture's number, 0 while there is none. */
  get number() {
    return this.#number;
  }

  /** How many pictures newer ones have overtaken on their way here. */
  get skipped() {
    return this.#skipped;
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
    const over = OVER.includes(state.key);
    this.#veil.hidden = this.#hasPicture && !over;
    setText(this.#veil, over ? state.note : 'Waiting for the first picture');
    this.#age.update(this.#at, state, now);
  }
}
