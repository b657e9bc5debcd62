import * as messages from './agentMessages.js';
import { Echo } from './echo.js';
import { PictureSurface } from './pictureSurface.js';
import { PictureTools } from './pictureTools.js';
import { devicePixel, deviceSize } from './screenGeometry.js';
import { Sketch } from './sketch.js';
import { TextEntry } from './textEntry.js';
import { VisitorPointer } from './visitorPointer.js';

// Marks that follow each other closely go out as one drawing: the app bounds how many it shows at a time.
const SEND_AFTER_MS = 500;
// Before the app takes a drawing away; by polling a message may wait for the next ping.
const RENEW_MS = { polling: 4000, websocket: 4700 };

/** Turns what the agent does on the picture into taps and drawings in the visitor's app. */
export class PictureControl {
  #phone;
  #channel;
  #size = null;
  #sending = null;
  #renewing = null;
  #drawnFor;
  #echo = null;
  #sketch = new Sketch();
  #pointer;
  #entry = new TextEntry((place, text) => this.#write(place, text));
  #tools = new PictureTools({
    onMode: () => this.#modeChanged(),
    onKeep: (keep) => this.#keepChanged(keep),
    onUndo: () => this.#undo(),
    onClear: () => this.clear(),
    onSend: () => this.#send(),
  });
  #surface = new PictureSurface({
    onTap: (place) => this.#tap(place),
    onText: (place) => this.#entry.open(place, this.#tools.pen),
    onPoint: (place) => this.#point(place),
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
    this.#pointer = new VisitorPointer(channel);
  }

  /** Follows the visitor and the picture shown; `reason` says why this agent cannot act, if it cannot. */
  update(visitor, reason, now) {
    const picture = visitor.state === 'live' && !reason ? this.#phone.picture : null;
    this.#size = picture && deviceSize(picture, visitor.screen);
    if (this.#size) this.#sketch.resize(this.#size);
    else this.#stop();
    if (this.#echo?.isBack(visitor.deliveredMessages, this.#phone.number, now)) this.#dropEcho();
    this.#tools.explain(reason);
    this.#refresh();
  }

  /** Makes ready for another visitor; what waits to go out still goes to the one it was drawn for. */
  leave() {
    if (this.#sending) {
      this.#sketch.abandon();
      this.#send();
    }
    this.clear();
    this.#pointer.leave();
    this.#entry.close();
  }

  /** What stands in the app goes within seconds. */
  clear() {
    this.#stop();
    this.#dropEcho();
    this.#sketch.clear();
    this.#refresh();
  }

  #refresh() {
    this.#tools.update(this.#size !== null, this.#sketch.marks);
    this.#surface.update(this.#tools.mode, this.#size !== null);
  }

  #modeChanged() {
    this.#pointer.leave();
    this.#entry.close();
    this.#refresh();
  }

  #tap(place) {
    const pixel = devicePixel(place, this.#size);
    this.#phone.mark(place, 'tap-agent');
    this.#channel.send(messages.tap(pixel), { quietly: true });
  }

  #point(place) {
    if (place && this.#size) this.#pointer.move(place, this.#size, this.#tools.pen.colour);
    else this.#pointer.leave();
  }

  #write(place, text) {
    this.#sketch.write(place, text, this.#tools.pen);
    this.#sendSoon();
    this.#refresh();
  }

  #begin(place) {
    // Together with this mark.
    clearTimeout(this.#sending);
    this.#sketch.begin(place, { tool: this.#tools.mode, ...this.#tools.pen });
  }

  #strokeEnded() {
    if (!this.#sketch.finish()) return;
    this.#sendSoon();
    this.#refresh();
  }

  #abandon() {
    this.#sketch.abandon();
    if (this.#sending) this.#sendSoon();
  }

  #sendSoon() {
    clearTimeout(this.#sending);
    this.#sending = null;
    this.#drawnFor = this.#channel.visitor;
    if (this.#tools.sendsOnRelease) this.#sending = setTimeout(() => this.#send(), SEND_AFTER_MS);
  }

  /** Nothing waits to go out, or goes out again. */
  #stop() {
    clearTimeout(this.#sending);
    clearInterval(this.#renewing);
    this.#sending = null;
    this.#renewing = null;
  }

  #undo() {
    this.#sketch.undo();
    if (this.#renewing && this.#sketch.marks === 0) this.#stop();
    this.#refresh();
  }

  #keepChanged(keep) {
    if (!keep && this.#renewing) this.clear();
  }

  #dropEcho() {
    this.#echo = null;
    this.#sketch.drop();
  }

  #send() {
    if (this.#sketch.marks === 0) return;
    this.#stop();
    const url = this.#sketch.toPng();
    const visitor = this.#drawnFor;
    if (this.#tools.keeps) {
      this.#transmit(url, visitor, false);
      this.#renewing = setInterval(() => this.#transmit(this.#sketch.toPng(), visitor, true), RENEW_MS[visitor.transport] ?? RENEW_MS.polling);
    } else {
      const echo = new Echo(performance.now());
      this.#echo = echo;
      this.#sketch.keepAsEcho();
      this.#transmit(url, visitor, false).then((number) => {
        echo.number = number;
        if (!number && this.#echo === echo) this.#dropEcho();
      });
    }
    this.#refresh();
  }

  async #transmit(url, visitor, again) {
    const number = await this.#channel.send(messages.drawing(url), { quietly: true, visitor, again });
    if (!number && again) this.#stop();
    return number;
  }
}
