import { element, setText } from './dom.js';
import { deviceSize } from './screenGeometry.js';

const MOST_KEPT = 64;
const AHEAD = 4;
const TAP_SHOWN_MS = 1200;

/** The visitor's screen at a moment of a recording, with the taps on it. */
export class ReplayScreen {
  #canvas = element('canvas', 'replay-picture');
  #taps = element('div', 'replay-taps');
  #note = element('p', 'veil', 'No picture yet');
  #frame = element('div', 'replay-screen');
  #load;
  #announced;
  #kept = new Map();
  #wanted = 0;
  #shown = 0;
  #busy = false;
  #marked = '';

  /** `load` promises the picture of a number as a Blob; `announced` is the screen's size in points. */
  constructor(load, announced) {
    this.#load = load;
    this.#announced = announced;
    this.#canvas.setAttribute('role', 'img');
    this.#frame.append(this.#canvas, this.#taps, this.#note);
  }

  get root() {
    return this.#frame;
  }

  /**
   * Shows a picture, 0 for none. While one is being loaded only the last of those asked for is kept. Those that follow,
   * up to `last`, are loaded ahead.
   */
  async show(number, last) {
    this.#wanted = number;
    if (this.#busy) return;
    this.#busy = true;
    while (this.#wanted !== this.#shown) {
      const next = this.#wanted;
      try {
        await this.#draw(next);
        setText(this.#note, next ? '' : 'No picture yet');
      } catch (error) {
        console.info('A picture is missing', error);
        setText(this.#note, 'This picture is missing');
      }
      this.#note.hidden = this.#note.textContent === '';
      this.#shown = next;
      for (let ahead = next + 1; ahead <= Math.min(next + AHEAD, last); ahead += 1) this.#fetch(ahead);
    }
    this.#busy = false;
  }

  label(text) {
    this.#canvas.setAttribute('aria-label', text);
  }

  /** Marks the taps, of the visitor and of the agent, among the first `count` events: those that a moment is not long after. */
  mark(events, count, moment) {
    const taps = [];
    for (let i = count - 1; i >= 0 && events[i].at > moment - TAP_SHOWN_MS; i -= 1) {
      const place = this.#placeOf(events[i]);
      if (place) taps.push(place);
    }
    const marked = JSON.stringify(taps);
    if (marked === this.#marked) return;
    this.#marked = marked;
    this.#taps.replaceChildren(...taps.map(({ left, top, kind }) => {
      const mark = element('span', 'replay-tap');
      mark.dataset.kind = kind;
      mark.style.left = `${left * 100}%`;
      mark.style.top = `${top * 100}%`;
      return mark;
    }));
  }

  #placeOf({ kind, text, detail }) {
    const [place, picture] = kind === 'tap' ? [detail, detail.frame] : [kind === 'agent' && agentTap(text), this.#canvas];
    if (!place || !picture) return null;
    const size = deviceSize(picture, this.#announced);
    const [left, top] = [place.x / size.width, place.y / size.height];
    return left >= 0 && left <= 1 && top >= 0 && top <= 1 ? { left, top, kind } : null;
  }

  #fetch(number) {
    if (!this.#kept.has(number)) {
      const loading = this.#load(number);
      loading.catch(() => this.#kept.delete(number));
      this.#kept.set(number, loading);
      if (this.#kept.size > MOST_KEPT) this.#kept.delete(this.#kept.keys().next().value);
    }
    return this.#kept.get(number);
  }

  async #draw(number) {
    if (number === 0) return;
    const bitmap = await createImageBitmap(await this.#fetch(number));
    if (this.#canvas.width !== bitmap.width || this.#canvas.height !== bitmap.height) {
      this.#canvas.width = bitmap.width;
      this.#canvas.height = bitmap.height;
      this.#frame.style.setProperty('--ratio', String(bitmap.width / bitmap.height));
    }
    this.#canvas.getContext('2d').drawImage(bitmap, 0, 0);
    this.#canvas.dataset.number = String(number);
    bitmap.close();
  }
}

function agentTap(text) {
  try {
    const { x, y } = JSON.parse(text);
    return Number.isFinite(x) && Number.isFinite(y) ? { x, y } : null;
  } catch {
    return null;
  }
}
