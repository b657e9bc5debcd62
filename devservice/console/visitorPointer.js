import * as messages from './agentMessages.js';

// The app shows at most ten drawings at a time, each for five seconds.
const PAUSE_MS = 700;
const RENEW_MS = 4200;
const MOVED = 0.012;
// Of the app's pixels: a third is enough for a dot.
const SHRINK = 3;
const RADIUS = 0.035;

/** A dot in the visitor's app where the agent points: small drawings, anew when it has moved and before they fade. */
export class VisitorPointer {
  #channel;
  #canvas = document.createElement('canvas');
  #timer = null;
  #place = null;
  #shown = null;
  #visitor = null;
  #last = -Infinity;

  constructor(channel) {
    this.#channel = channel;
  }

  /** `size` is the app's screen in its pixels. */
  move(place, size, colour) {
    this.#place = place;
    this.#canvas.width = Math.max(8, Math.round(size.width / SHRINK));
    this.#canvas.height = Math.max(8, Math.round(size.height / SHRINK));
    if (this.#timer !== null) return;
    this.#visitor = this.#channel.visitor;
    this.#tick(colour);
  }

  leave() {
    clearTimeout(this.#timer);
    this.#timer = null;
    this.#shown = null;
  }

  #tick(colour) {
    const now = performance.now();
    const moved = !this.#shown || Math.hypot(this.#place.left - this.#shown.left, this.#place.top - this.#shown.top) > MOVED;
    if (moved || now - this.#last > RENEW_MS) {
      const again = this.#shown !== null;
      this.#shown = this.#place;
      this.#last = now;
      this.#channel.send(messages.pointer(this.#paint(colour)), { quietly: true, visitor: this.#visitor, again });
    }
    this.#timer = setTimeout(() => this.#tick(colour), PAUSE_MS);
  }

  #paint(colour) {
    const { width, height } = this.#canvas;
    const context = this.#canvas.getContext('2d');
    const radius = RADIUS * Math.min(width, height);
    const at = [this.#place.left * width, this.#place.top * height];
    context.clearRect(0, 0, width, height);
    for (const [size, fill] of [[radius, '#ffffff'], [radius * 0.8, colour], [radius * 0.25, '#ffffff']]) {
      context.beginPath();
      context.arc(...at, size, 0, 2 * Math.PI);
      context.fillStyle = fill;
      context.fill();
    }
    return this.#canvas.toDataURL('image/png');
  }
}
