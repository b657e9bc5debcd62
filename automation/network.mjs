// A network between an app and a service, on this machine: it delays, loses and cuts as a phone's does, in the manner of
// TCP. What is lost is sent again after a while that doubles each time, and whatever follows on that connection waits.

import { connect, createServer } from 'node:net';

const SEGMENT_BYTES = 1448;
const LEAST_RETRY_MS = 200;
const FIRST_CONNECT_RETRY_MS = 1000;
const LONGEST_RETRY_MS = 30_000;

/** One direction of one connection: hands over what was put in, in order, once it came through. */
class Line {
  #waiting = [];
  #underWay = [];
  #isTrying = false;
  #isDead = false;
  #lastArrival = 0;

  constructor(network) {
    this.network = network;
  }

  /** @param trips one way, or there and back @param firstRetry until the first attempt is repeated */
  put(hand, { segments = 1, trips = 1, firstRetry } = {}) {
    this.#waiting.push({ hand, segments, trips, firstRetry });
    if (!this.#isTrying) this.#next();
  }

  die() {
    this.#isDead = true;
    this.#waiting.length = 0;
    this.#underWay.length = 0;
  }

  #next() {
    const item = this.#waiting.shift();
    this.#isTrying = item !== undefined;
    if (item) this.#attempt(item, item.firstRetry ?? Math.max(LEAST_RETRY_MS, 2 * this.network.roundTrip));
  }

  #attempt(item, retry) {
    if (this.#isDead) return;
    const { loss, isCut, roundTrip } = this.network;
    if (isCut || Math.random() > (1 - loss) ** item.segments) {
      // What was lost is one segment: alone, and alone again, until it comes through.
      this.network.later(retry, () => this.#attempt({ ...item, segments: 1 }, Math.min(2 * retry, LONGEST_RETRY_MS)));
      return;
    }
    const now = performance.now();
    this.#lastArrival = Math.max(this.#lastArrival, now + (item.trips * roundTrip) / 2);
    this.#underWay.push(item.hand);
    // The first, whichever timer is early.
    this.network.later(this.#lastArrival - now, () => this.#underWay.shift()?.());
    this.#next();
  }
}

export class Network {
  /** Milliseconds. */
  roundTrip = 0;
  /** The share of segments that are lost. */
  loss = 0;
  isCut = false;
  #connections = new Set();
  #timers = new Set();

  /** Stands in front of a service; `t` is the test it ends with. */
  static async start(t, serviceHost, conditions = {}) {
    const network = Object.assign(new Network(), conditions);
    const { hostname, port } = new URL(`http://${serviceHost}`);
    network.server = createServer({ allowHalfOpen: true }, (near) => network.#join(near, hostname, Number(port)));
    await network.#listen(0);
    network.port = network.server.address().port;
    network.host = `127.0.0.1:${network.port}`;
    t.after(() => network.close());
    return network;
  }

  #listen(port) {
    return new Promise((resolve) => { this.server.listen(port, '127.0.0.1', resolve); });
  }

  later(milliseconds, task) {
    const timer = setTimeout(() => {
      this.#timers.delete(timer);
      task();
    }, milliseconds);
    this.#timers.add(timer);
  }

  #join(near, hostname, port) {
    const lines = { up: new Line(this), down: new Line(this) };
    const connection = { near, far: null, lines };
    this.#connections.add(connection);
    const destroy = () => {
      this.#connections.delete(connection);
      near.destroy();
      connection.far?.destroy();
    };
    const relay = (from, to, line) => {
      from.setNoDelay(true);
      from.on('error', () => {});
      from.on('data', (bytes) => line.put(() => to().write(bytes), { segments: Math.ceil(bytes.length / SEGMENT_BYTES) }));
      from.on('end', () => line.put(() => to().end()));
      from.on('close', (hadError) => line.put(() => (hadError ? destroy() : to()?.end())));
    };
    relay(near, () => connection.far, lines.up);
    // The handshake: until it is done, nothing gets through.
    lines.up.put(() => {
      connection.far = connect({ host: hostname, port, allowHalfOpen: true });
      relay(connection.far, () => near, lines.down);
    }, { trips: 2, firstRetry: FIRST_CONNECT_RETRY_MS });
  }

  /** Nothing comes through any more, and nobody is told. */
  cut() {
    this.isCut = true;
  }

  mend() {
    this.isCut = false;
  }

  /** As a device does that knows it has no network: every connection breaks, and none can be made. */
  async unplug() {
    const closed = new Promise((resolve) => { this.server.close(resolve); });
    for (const { near, far, lines } of this.#connections) {
      lines.up.die();
      lines.down.die();
      near.resetAndDestroy();
      far?.destroy();
    }
    this.#connections.clear();
    await closed;
  }

  plugIn() {
    return this.#listen(this.port);
  }

  /**
   * The device goes on under another address, or a router forgets it: what was open is never heard of again, on either
   * side.
   */
  changeAddress() {
    for (const { lines } of this.#connections) {
      lines.up.die();
      lines.down.die();
    }
  }

  close() {
    for (const timer of this.#timers) clearTimeout(timer);
    for (const { near, far } of this.#connections) {
      near.destroy();
      far?.destroy();
    }
    this.server.close();
  }
}
