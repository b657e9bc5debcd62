import { element, setText } from './dom.js';
import { span } from './format.js';

const STEP_MS = 5000;
const NEAR_PIXELS = 6;

/** The bar of a recording's time: what happened when, what is idle, and where it stands. */
export class ReplayScrubber {
  #root = element('div', 'scrubber');
  #marks = element('canvas', 'scrubber-marks');
  #input = element('input', 'scrubber-input');
  #hint = element('p', 'scrubber-hint');
  #duration;
  #idle;
  #events = [];
  #titleOf;

  /** `titleOf` words an event for the hint; `onSeek` is told the moment that was chosen. */
  constructor({ duration, idle, titleOf, onSeek }) {
    this.#duration = duration;
    this.#idle = idle;
    this.#titleOf = titleOf;
    Object.assign(this.#input, { type: 'range', min: 0, max: Math.max(duration, 1), step: Math.min(STEP_MS, duration / 20 || 1) });
    this.#input.setAttribute('aria-label', 'Moment');
    this.#input.addEventListener('input', () => onSeek(Number(this.#input.value)));
    this.#marks.setAttribute('aria-hidden', 'true');
    this.#hint.hidden = true;
    this.#root.addEventListener('pointermove', (event) => this.#point(event));
    this.#root.addEventListener('pointerleave', () => { this.#hint.hidden = true; });
    this.#root.append(this.#marks, this.#input, this.#hint);
    // A pointer is not bound to the steps of the keys.
    this.#root.addEventListener('pointerdown', (event) => {
      if (event.button !== 0) return;
      event.preventDefault();
      this.#input.focus();
      this.#root.setPointerCapture(event.pointerId);
      onSeek(this.#momentAt(event));
    });
    this.#root.addEventListener('pointermove', (event) => {
      if (this.#root.hasPointerCapture(event.pointerId)) onSeek(this.#momentAt(event));
    });
    new ResizeObserver(() => this.#draw()).observe(this.#root);
    matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => this.#draw());
  }

  get root() {
    return this.#root;
  }

  /** The events to be marked. */
  mark(events) {
    this.#events = events;
    this.#draw();
  }

  update(position) {
    this.#root.style.setProperty('--at', String(this.#fraction(position)));
    this.#input.value = String(position);
    const text = `${span(position)} of ${span(this.#duration)}`;
    if (this.#input.getAttribute('aria-valuetext') !== text) this.#input.setAttribute('aria-valuetext', text);
  }

  #fraction(moment) {
    return this.#duration > 0 ? moment / this.#duration : 0;
  }

  #momentAt({ clientX }) {
    const { left, width } = this.#root.getBoundingClientRect();
    return Math.min(Math.max((clientX - left) / width, 0), 1) * this.#duration;
  }

  #draw() {
    const { width, height } = this.#root.getBoundingClientRect();
    const scale = devicePixelRatio;
    this.#marks.width = Math.round(width * scale);
    this.#marks.height = Math.round(height * scale);
    const context = this.#marks.getContext('2d');
    const colour = (name) => getComputedStyle(this.#root).getPropertyValue(`--mark-${name}`) || '#888';
    context.fillStyle = colour('idle');
    for (const [from, to] of this.#idle) {
      const left = this.#fraction(from) * this.#marks.width;
      context.fillRect(left, 0, Math.max(this.#fraction(to) * this.#marks.width - left, 1), this.#marks.height);
    }
    for (const { at, kind } of this.#events) {
      context.fillStyle = colour(kind);
      const long = kind === 'page' || kind === 'note';
      const top = long ? 0 : this.#marks.height / 2;
      context.fillRect(Math.round(this.#fraction(at) * (this.#marks.width - 2 * scale)), top, 2 * scale, this.#marks.height - top);
    }
  }

  // The moment below the pointer, and what happened there.
  #point(event) {
    const moment = this.#momentAt(event);
    const { left, width } = this.#root.getBoundingClientRect();
    const reach = (NEAR_PIXELS / width) * this.#duration;
    let nearest = null;
    for (const candidate of this.#events) {
      const distance = Math.abs(candidate.at - moment);
      if (distance <= reach && (!nearest || distance < Math.abs(nearest.at - moment))) nearest = candidate;
    }
    setText(this.#hint, [span(moment), nearest && this.#titleOf(nearest)].filter(Boolean).join(' · '));
    this.#hint.hidden = false;
    const room = width - this.#hint.offsetWidth;
    this.#hint.style.left = `${Math.min(Math.max(event.clientX - left - this.#hint.offsetWidth / 2, 0), Math.max(room, 0))}px`;
  }
}
