import { byId } from './dom.js';

// A press that moves further than this is no tap.
const TAP_SLOP = 10;
const STEP = 0.015;
const LONG_STEP = 0.08;
const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

/** Where the agent points on the picture, by mouse, touch, pen or keyboard; places are fractions of the screen. */
export class PictureSurface {
  #surface = byId('surface');
  #crosshair = byId('crosshair');
  #place = { left: 0.5, top: 0.5 };
  #press = null;
  #mode = 'tap';
  #enabled = false;
  #handlers;

  /** handlers: onTap(place), onText(place), onPoint(place or null), onCrosshair(place or null), onStroke(place), onStrokeMove(places), onStrokeEnd(), onStrokeCancel(), onUndo() */
  constructor(handlers) {
    this.#handlers = handlers;
    const on = (type, handler) => this.#surface.addEventListener(type, handler);
    on('pointerdown', (event) => this.#down(event));
    on('pointermove', (event) => this.#move(event));
    on('pointerup', (event) => this.#up(event));
    on('pointercancel', (event) => this.#cancel(event));
    on('pointerleave', () => this.#mode === 'pointer' && this.#handlers.onPoint(null));
    on('keydown', (event) => this.#key(event));
    on('blur', () => this.#hideCrosshair());
  }

  update(mode, enabled) {
    if (this.#mode === mode && this.#enabled === enabled) return;
    if (this.#press) this.#abandon();
    this.#mode = mode;
    this.#enabled = enabled;
    this.#surface.dataset.mode = enabled ? mode : 'off';
    this.#surface.tabIndex = enabled ? 0 : -1;
    this.#surface.setAttribute('aria-disabled', String(!enabled));
    this.#hideCrosshair();
  }

  #placeOf({ clientX, clientY }) {
    const box = this.#surface.getBoundingClientRect();
    return { left: (clientX - box.left) / box.width, top: (clientY - box.top) / box.height };
  }

  #down(event) {
    if (!this.#enabled || event.button !== 0 || this.#press) return;
    this.#press = { id: event.pointerId, x: event.clientX, y: event.clientY };
    this.#hideCrosshair();
    if (!this.#draws) return;
    this.#surface.setPointerCapture(event.pointerId);
    this.#handlers.onStroke(this.#placeOf(event));
  }

  get #draws() {
    return ['draw', 'arrow', 'box'].includes(this.#mode);
  }

  #move(event) {
    if (this.#enabled && this.#mode === 'pointer') this.#handlers.onPoint(this.#placeOf(event));
    if (event.pointerId !== this.#press?.id || !this.#draws) return;
    const samples = event.getCoalescedEvents?.() ?? [];
    this.#handlers.onStrokeMove((samples.length ? samples : [event]).map((sample) => this.#placeOf(sample)));
  }

  #up(event) {
    if (event.pointerId !== this.#press?.id) return;
    const { x, y } = this.#press;
    this.#press = null;
    if (this.#draws) this.#handlers.onStrokeEnd();
    else if (Math.hypot(event.clientX - x, event.clientY - y) <= TAP_SLOP) this.#act(this.#placeOf(event));
  }

  #cancel(event) {
    if (event.pointerId === this.#press?.id) this.#abandon();
  }

  #abandon() {
    this.#press = null;
    if (this.#draws) this.#handlers.onStrokeCancel();
  }

  #key(event) {
    if (!this.#enabled || event.altKey || event.metaKey) return;
    if ((this.#draws && this.#drawKey(event)) || this.#crosshairKey(event)) event.preventDefault();
  }

  #drawKey({ key, ctrlKey }) {
    if (key === 'Escape' && this.#press) this.#abandon();
    else if (key === 'z' && ctrlKey) this.#handlers.onUndo();
    else return false;
    return true;
  }

  /** What a click does where nothing is dragged. */
  #act(place) {
    if (this.#mode === 'tap') this.#handlers.onTap(place);
    if (this.#mode === 'text') this.#handlers.onText(place);
  }

  #enter() {
    if (!this.#draws) {
      this.#act(this.#place);
    } else if (this.#press) {
      this.#press = null;
      this.#handlers.onStrokeEnd();
    } else {
      this.#press = { id: 'keyboard' };
      this.#handlers.onStroke(this.#place);
    }
  }

  #crosshairKey({ key, shiftKey, ctrlKey, repeat }) {
    if (ctrlKey) return false;
    if (ARROWS[key]) this.#moveCrosshair(ARROWS[key], shiftKey ? LONG_STEP : STEP);
    else if ((key === 'Enter' || key === ' ') && !this.#crosshair.hidden && !repeat) this.#enter();
    else if (key === 'Escape' && !this.#crosshair.hidden) this.#hideCrosshair();
    else return false;
    return true;
  }

  // The first press of an arrow key shows the crosshair where it was left.
  #moveCrosshair([right, down], step) {
    const box = this.#surface.getBoundingClientRect();
    const within = (fraction) => Math.min(1, Math.max(0, fraction));
    if (!this.#crosshair.hidden) {
      this.#place = {
        left: within(this.#place.left + right * step),
        top: within(this.#place.top + down * step * (box.width / box.height)),
      };
    }
    this.#crosshair.style.left = `${this.#place.left * 100}%`;
    this.#crosshair.style.top = `${this.#place.top * 100}%`;
    this.#crosshair.hidden = false;
    this.#handlers.onCrosshair(this.#place);
    if (this.#press?.id === 'keyboard') this.#handlers.onStrokeMove([this.#place]);
    if (this.#mode === 'pointer') this.#handlers.onPoint(this.#place);
  }

  #hideCrosshair() {
    if (this.#crosshair.hidden) return;
    this.#crosshair.hidden = true;
    if (this.#press?.id === 'keyboard') this.#abandon();
    if (this.#mode === 'pointer') this.#handlers.onPoint(null);
    this.#handlers.onCrosshair(null);
  }
}
