// Many visitors and many consoles at one service: node consoleLoad.mjs [SECONDS [VISITORS [CONSOLES]]]. DEVSERVICE names
// the service's program. Each visitor sends pictures and pages by polling as an app does; each console is a WebSocket that
// watches one of them, and counts what it gets.

import { spawn } from 'node:child_process';
import { randomBytes } from 'node:crypto';
import { readFileSync } from 'node:fs';
import { connect } from 'node:net';
import { setTimeout as pause } from 'node:timers/promises';

import { FakeVisitor, event } from '../tests/devservice/fakeVisitor.mjs';

const [seconds = 600, visitorCount = 64, consoleCount = 16] = process.argv.slice(2).map(Number);
const PICTURE_BYTES = 15_000;
const PICTURE_PAUSE_MS = 300;
const PICTURES_A_PAGE = 10;
const PING = 9;
const PONG = 10;

/** A JPEG as far as its markers tell, of a phone's screen; what is in it differs. */
function jpeg() {
  const head = Buffer.from('ffd8ffc0000b08034c018601011100ffda0008010100003f00', 'hex');
  return Buffer.concat([head, randomBytes(PICTURE_BYTES).map((byte) => byte & 0x7f), Buffer.from('ffd9', 'hex')]);
}

async function visit(service, index, end) {
  const visitor = new FakeVisitor(service, { shareId: String(10_000 + index) });
  await visitor.start();
  let pictures = 0;
  let lastPing = 0;
  while (performance.now() < end) {
    const events = [event.screenshot(visitor.time, jpeg())];
    pictures += 1;
    if (pictures % PICTURES_A_PAGE === 0) events.push(event.page(visitor.time, `Page ${pictures / PICTURES_A_PAGE}`));
    if (performance.now() - lastPing > 1000) {
      events.push(event.ping(visitor.time));
      lastPing = performance.now();
    }
    await visitor.send(...events);
    await pause(PICTURE_PAUSE_MS);
  }
  return pictures;
}

/** A console's WebSocket without compression, reduced to what counts. */
class Watcher {
  pictures = 0;
  skipped = 0;
  lostEntries = 0;
  entries = 0;
  worstAge = 0;
  isOpen = true;
  #last = 0;
  #seq = 0;
  #buffer = Buffer.alloc(0);
  #kind = 0;
  #parts = [];

  constructor(url, visitor) {
    this.socket = connect(Number(url.port), url.hostname);
    this.socket.write(`GET /console/ws HTTP/1.1\r\nHost: ${url.host}\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n`
      + `Sec-WebSocket-Key: ${randomBytes(16).toString('base64')}\r\nSec-WebSocket-Version: 13\r\n\r\n`);
    this.socket.once('data', (data) => {
      this.#send(1, Buffer.from(JSON.stringify({ type: 'watch', visitor })));
      this.socket.on('data', (more) => this.#receive(more));
      this.#receive(data.subarray(data.indexOf('\r\n\r\n') + 4));
    });
    this.socket.on('error', () => {});
    this.socket.on('close', () => { this.isOpen = false; });
  }

  #send(kind, body) {
    this.socket.write(Buffer.concat([Buffer.from([0x80 | kind, 0x80 | body.length, 0, 0, 0, 0]), body]));
  }

  #receive(data) {
    this.#buffer = Buffer.concat([this.#buffer, data]);
    for (;;) {
      const buffer = this.#buffer;
      if (buffer.length < 2) return;
      const short = buffer[1] & 0x7f;
      const head = short === 126 ? 4 : short === 127 ? 10 : 2;
      if (buffer.length < head) return;
      const length = short === 126 ? buffer.readUInt16BE(2) : short === 127 ? Number(buffer.readBigUInt64BE(2)) : short;
      if (buffer.length < head + length) return;
      this.#frame(buffer[0], buffer.subarray(head, head + length));
      this.#buffer = buffer.subarray(head + length);
    }
  }

  // A message may come in several frames.
  #frame(first, body) {
    if ((first & 0xf) === PING) return this.#send(PONG, body);
    if ((first & 0xf) !== 0) this.#kind = first & 0xf;
    this.#parts.push(body);
    if ((first & 0x80) === 0) return undefined;
    this.#message(this.#kind, Buffer.concat(this.#parts));
    this.#parts = [];
    return undefined;
  }

  #message(kind, body) {
    if (kind === 2) {
      const number = body.readUInt32BE(4);
      if (this.#last > 0) this.skipped += number - this.#last - 1;
      this.#last = number;
      this.pictures += 1;
      this.worstAge = Math.max(this.worstAge, Date.now() - Number(body.readBigUInt64BE(8)));
    } else if (kind === 1) {
      const message = JSON.parse(body);
      if (message.type !== 'timeline') return;
      for (const { seq } of message.entries) {
        if (this.#seq > 0) this.lostEntries += seq - this.#seq - 1;
        this.#seq = seq;
        this.entries += 1;
      }
    }
  }
}

const service = spawn(process.env.DEVSERVICE, ['--port', '0'], { stdio: ['ignore', 'pipe', 'inherit'] });
const address = await new Promise((resolve) => {
  service.stdout.once('data', (data) => resolve(/http\S+/.exec(data)[0]));
});
const memory = () => Number(/VmRSS:\s+(\d+)/.exec(readFileSync(`/proc/${service.pid}/status`, 'utf8'))[1]) / 1024;
const processor = () => readFileSync(`/proc/${service.pid}/stat`, 'utf8').split(' ').slice(13, 15).reduce((a, b) => a + Number(b), 0) / 100;

const end = performance.now() + seconds * 1000;
const visits = Array.from({ length: visitorCount }, (_, i) => visit(address, i, end));
await pause(2000);
const watchers = Array.from({ length: consoleCount }, (_, i) => new Watcher(new URL(address), String(1 + (i % visitorCount))));
const samples = [];
const before = processor();
const started = performance.now();
while (performance.now() < end) {
  samples.push(memory());
  await pause(Math.min(10_000, Math.max(100, end - performance.now())));
}
const share = ((processor() - before) / ((performance.now() - started) / 1000)) * 100;
const sent = (await Promise.all(visits)).reduce((a, b) => a + b, 0);
await pause(500);
const sum = (key) => watchers.reduce((total, watcher) => total + watcher[key], 0);
const warm = samples.slice(Math.ceil(samples.length / 5));
console.log(`${visitorCount} visitors, ${consoleCount} consoles, ${seconds} s`);
console.log(`sent: ${sent} pictures, ${(sent / seconds / visitorCount).toFixed(2)} a second and visitor`);
console.log(`received: ${sum('pictures')} pictures, ${sum('skipped')} overtaken; ${sum('entries')} entries, ${sum('lostEntries')} lost`);
console.log(`consoles still there: ${watchers.filter(({ isOpen }) => isOpen).length}`);
console.log(`oldest picture on arrival: ${Math.max(...watchers.map(({ worstAge }) => worstAge))} ms`);
console.log(`service: ${share.toFixed(0)} % of a core; memory ${samples[0].toFixed(0)} MiB at first, then ${Math.min(...warm).toFixed(0)} to ${Math.max(...warm).toFixed(0)}, ${samples.at(-1).toFixed(0)} at last`);
service.kill();
for (const { socket } of watchers) socket.destroy();
