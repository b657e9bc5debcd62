// Whatever the service does while a session opens its WebSocket, and once it is open: the session streams, by polling
// where nothing else is left, and the GUI thread is never blocked.

import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';

import { App, Service, eventually, wholeFile } from '../../automation/support.mjs';

const LONGEST_STALL_MS = 250;

const FALLS_BACK = /^\[WARNING\] Panoptra: WebSocket does not open$/;
const CLOSED = /^\[WARNING\] WebSocketMessageSender: Connection closed(: \d+| with unknown error)$/;
const UNREADABLE = /^\[ERROR\] WebSocketMessageSender: (Cannot (parse|convert)|Received unexpected binary)/;

// What the handshake meets, and by which transport the session then streams.
const OPENINGS = {
  'is slow': [{ kind: 'delay', value: 2000 }, 'websocket'],
  'is too slow': [{ kind: 'delay', value: 8000 }, 'polling'],
  'is dropped': [{ kind: 'drop' }, 'polling'],
  'is refused': [{ kind: 'status', value: 403 }, 'polling'],
  'fails': [{ kind: 'status', value: 503 }, 'polling'],
  'is answered with nothing': [{ kind: 'empty' }, 'polling'],
  'is answered with garbage': [{ kind: 'garbage' }, 'polling'],
  'is answered by half': [{ kind: 'truncate' }, 'polling'],
  'is answered at length': [{ kind: 'large', value: 17 << 20 }, 'polling'],
};

// What comes down the open connection, and whether it is the end of it.
const FRAMES = {
  garbage: [{ text: '\u0001{"x":' }, false],
  'a list': [{ text: '[1,2]' }, false],
  depth: [{ text: '[', repeat: 1 << 20 }, false],
  bytes: [{ binary: 'AAECAw==' }, false],
  'too much': [{ text: 'x', repeat: 17 << 20 }, true],
  'a normal close': [{ close: 1000 }, true],
  'an angry close': [{ close: 1008 }, true],
  nothing: [{ drop: true }, true],
};

const file = wholeFile();
let service;
let app;

before(async () => {
  service = await Service.start(file);
  app = App.open(file, service.host, ['--control', '--tour', '--transport', 'websocket']);
});

const events = () => service.events('screenshot');

async function streams(what) {
  const known = events().length;
  await eventually(`a picture ${what}`, () => {
    app.assertRunning();
    return events().length > known;
  });
}

/** A session while `whileRunning`, of which the rest of the test knows the number. */
async function session(whileRunning) {
  const known = service.events('init').length;
  app.turnPage();
  await app.longestStall();
  app.say('start');
  const begun = await eventually('a session', () => service.events('init')[known]);
  await whileRunning(begun.visitor);
  const stall = await app.longestStall();
  app.say('stop');
  await app.line(/(: Delete sent$|Failed to send delete: )/);
  assert.ok(stall < LONGEST_STALL_MS, `the GUI thread was busy for ${stall} ms`);
}

const transport = async (number) => (await service.visitors()).find(({ id }) => id === number).transport;

describe('a handshake that', () => {
  for (const [name, [fault, expected]] of Object.entries(OPENINGS)) {
    test(name, async () => {
      await service.setFaults({ imws: fault });
      await session(async (number) => {
        await streams('of the session');
        assert.equal(await transport(number), expected);
        assert.deepEqual(app.problems(FALLS_BACK, CLOSED), []);
      });
      await service.setFaults({});
    });
  }

  test('is vetoed is not tried', async () => {
    const settings = new URL('console/api/settings', service.url);
    await fetch(settings, { method: 'PUT', body: JSON.stringify({ pnWS: true }) });
    await session(async (number) => {
      await streams('of the session');
      assert.equal(await transport(number), 'polling');
      assert.deepEqual(app.problems(), []);
    });
    await fetch(settings, { method: 'PUT', body: JSON.stringify({ pnWS: null }) });
  });
});

describe('an open connection that brings', () => {
  for (const [name, [frame, isEnd]] of Object.entries(FRAMES)) {
    test(name, async () => {
      await session(async (number) => {
        await streams('of the session');
        const connections = () => service.events('connect', number).length;
        const before = connections();
        const reply = await fetch(new URL(`console/api/visitors/${number}/frames`, service.url),
          { method: 'POST', body: JSON.stringify(frame) });
        assert.ok(reply.ok, await reply.text());
        if (isEnd) await eventually('a new connection', () => connections() > before);
        await streams('afterwards');
        assert.equal(await transport(number), 'websocket');
        assert.deepEqual(app.problems(CLOSED, UNREADABLE), []);
      });
    });
  }

  test('nothing more for a while, after which it opens again', async () => {
    await session(async (number) => {
      await streams('of the session');
      await service.setFaults({ imws: { kind: 'status', value: 503 } });
      const before = service.requests().length;
      await fetch(new URL(`console/api/visitors/${number}/frames`, service.url),
        { method: 'POST', body: JSON.stringify({ drop: true }) });
      const tries = () => service.requests().slice(before).filter(({ target }) => target.startsWith('/api/in/imws'));
      await eventually('three attempts', () => tries().length >= 3);
      await service.setFaults({});
      await streams('afterwards');
      assert.ok(tries().length < 30, `${tries().length} attempts`);
    });
  });
});

test('the app ends of its own accord', async () => {
  app.say('quit');
  assert.equal(await app.exitCode(), 0);
});
