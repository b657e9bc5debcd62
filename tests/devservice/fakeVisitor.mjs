// A visitor for tests of the service: speaks the polling transport, with its own small encoder for the wire messages.

import { randomUUID } from 'node:crypto';

function varint(value) {
  const bytes = [];
  let rest = BigInt(value);
  do {
    const low = Number(rest & 0x7fn);
    rest >>= 7n;
    bytes.push(rest ? low | 0x80 : low);
  } while (rest);
  return Buffer.from(bytes);
}

function delimited(field, content) {
  const bytes = Buffer.from(content);
  return Buffer.concat([varint((field << 3) | 2), varint(bytes.length), bytes]);
}

function float(field, value) {
  const bytes = Buffer.alloc(5);
  bytes[0] = (field << 3) | 5;
  bytes.writeFloatLE(value, 1);
  return bytes;
}

/** One event of the stream; `time` is in milliseconds since the start of the session. */
export const event = {
  ping: (time) => Buffer.concat([varint(1 << 3), varint(time)]),
  page: (time, name) => Buffer.concat([event.ping(time), delimited(2, name)]),
  screenshot: (time, jpeg) => Buffer.concat([event.ping(time), delimited(3, delimited(1, jpeg))]),
  tap: (time, x, y) => Buffer.concat([event.ping(time), delimited(4, Buffer.concat([float(1, x), float(2, y)]))]),
  tag: (time, text) => Buffer.concat([event.ping(time), delimited(5, text)]),
  userTag: (time, { firstname, lastname, email }) => Buffer.concat([
    event.ping(time),
    delimited(6, Buffer.concat([delimited(2, email), delimited(3, firstname), delimited(4, lastname)])),
  ]),
};

export class FakeVisitor {
  constructor(service, { shareId = '48213', tenant = 'northbank', page = 'LoginPage' } = {}) {
    this.service = service;
    this.shareId = shareId;
    this.tenant = tenant;
    this.page = page;
    this.sessionId = randomUUID().toUpperCase();
    this.visitId = randomUUID().toUpperCase();
    this.visitorId = randomUUID().toUpperCase();
    this.started = Math.floor(Date.now() / 1000) * 1000;
  }

  get time() {
    return Math.floor(Date.now() / 1000) * 1000 - this.started;
  }

  get streamUrl() {
    const query = new URLSearchParams({
      id: this.visitId, sId: this.sessionId, tId: this.tenant, vId: this.visitorId, url: this.page, fsTy: 'l',
    });
    return `${this.service}api/ix/m?${query}`;
  }

  async request(url, options = {}) {
    const reply = await fetch(url, { ...options, headers: { 'X-QD-SSID': this.sessionId } });
    if (!reply.ok) throw new Error(`${options.method ?? 'GET'} ${url}: ${reply.status}`);
    return reply.json();
  }

  /** Initialises the session and opens the stream; returns the service's reply. */
  async start() {
    const record = {
      shId: this.shareId, qdu: '', url: this.page, start: this.started, init: false,
      page: { width: 390, height: 844, docHeight: 0, docWidth: 0 },
      vId: this.visitorId, sId: this.sessionId, viId: this.visitId, tId: this.tenant, optin: false,
    };
    const reply = await this.request(`${this.service}api/in/im/c`, { method: 'POST', body: JSON.stringify(record) });
    await this.request(this.streamUrl);
    return reply;
  }

  /** Posts events; returns the agent's messages. */
  async send(...events) {
    const body = Buffer.concat(events.map((bytes) => delimited(1, bytes)));
    const reply = await this.request(this.streamUrl, { method: 'POST', body });
    return reply.flatMap((text) => JSON.parse(text));
  }

  /** Polls the channels; returns the messages on them. */
  poll(channels = ['S', 'SCB']) {
    const status = JSON.stringify({ u: this.page, t: 'CONFERENCE', dT: 'MOBILE', cId: this.customerId, sId: this.sessionId });
    const query = new URLSearchParams({ tId: this.tenant, vId: this.visitorId, sId: this.sessionId, cId: '' });
    const body = JSON.stringify({ c: channels, m: [{ c: 'S', p: status }], ad: `joinedTimestamp=${this.started}` });
    return this.request(`${this.service}api/in/co?${query}`, { method: 'POST', body });
  }

  /** An entry in the visitor's activity log: "ca" accepted, "cd" declined, "ce" stopped. */
  report(type) {
    const body = JSON.stringify({ c: 'c', t: type, m: { tId: this.tenant, vId: this.visitorId, sId: this.sessionId } });
    return this.request(`${this.service}api/in/io/l`, { method: 'POST', body });
  }

  /** Goes to the background. */
  leave() {
    return this.request(this.streamUrl, { method: 'DELETE' });
  }

  async stop() {
    await this.leave();
    await this.report('ce');
  }
}
