import * as messages from './agentMessages.js';
import { PictureSurface } from './pictureSurface.js';
import { PictureTools } from './pictureTools.js';
import { devicePixel, deviceSize } from './screenGeometry.js';
import { Sketch } from './sketch.js';

// Strokes that follow each other closely go out as one drawing: the app bounds how many it shows at a time.
const SEND_AFTER_MS = 500;

/** Turns what the agent does on the picture into taps and drawings in the visitor's app. */
export class PictureControl {
  #phone;
  #channel;
  #size = null;
  #sending = null;
  #drawnFor;
  #sketch = new Sketch();
  #tools = new PictureTools({
    onMode: () => this.#refresh(),
    onUndo: () => this.#undo(),
    onClear: () => this.clear(),
    onSend: () => this.#send(),
  });
  #surface = new PictureSurface({
    onTap: (place) => this.#tap(place),
    onCrosshair: (place) => this.#tools.crosshair(place && devicePixel(place, this.#size)),
    onStroke: (place) => this.#begin(place),
    onStrokeMove: (places) => this.#sketch.extend(places),
    onStrokeEnd: () => this.#strokeEnded(),
    onStrokeCancel: () => this.#abandon(),
    onUndo: () => this.#undo(),
  });

  constructor(phone, channel) {
    this.#phone = phone;
    this.#channel = channel;
  }

  /** Follows the visitor and the picture shown. */
  update(visitor) {
    const picture = visitor.state === 'live' ? this.#phone.picture : null;
    this.#size = picture && deviceSize(picture, visitor.screen);
    if (this.#size) this.#sketch.resize(this.#size);
    this.#refresh();
  }

  /** Makes ready for another visitor; what waits to go out still goes to the one it was drawn for. */
  leave() {
    if (this.#sending) {
      this.#sketch.abandon();
      this.#send();
    }
    this.clear();
  }

  clear() {
    this.#wait();
    this.#sketch.clear();
    this.#refresh();
  }

  #refresh() {
    this.#tools.update(this.#size !== null, this.#sketch.strokes);
    this.#surface.update(this.#tools.mode, this.#size !== null);
  }

  #tap(place) {
    const pixel = devicePixel(place, this.#size);
    this.#phone.mark(place, 'tap-agent');
    this.#channel.send(messages.tap(pixel), { quietly: true });
  }

  #begin(place) {
    // Together with this stroke.
    clearTimeout(this.#sending);
    this.#sketch.begin(place, this.#tools.pen);
  }

  #strokeEnded() {
    if (!this.#sketch.finish()) return;
    this.#sendSoon();
    this.#refresh();
  }

  #abandon() {
    this.#sketch.abandon();
    this.#sendSoon();
  }

  #sendSoon() {
    this.#wait();
    this.#drawnFor = this.#channel.visitor;
    if (this.#tools.sendsOnRelease) this.#sending = setTimeout(() => this.#send(), SEND_AFTER_MS);
  }

  #wait() {
    clearTimeout(this.#sending);
    this.#sending = null;
  }

  #undo() {
    this.#sketch.undo();
    this.#refresh();
  }

  async #send() {
    if (this.#sketch.strokes === 0) return;
    const url = this.#sketch.toPng();
    this.clear();
    await this.#channel.send(messages.drawing(url), { quietly: true, visitor: this.#drawnFor });
  }
}
