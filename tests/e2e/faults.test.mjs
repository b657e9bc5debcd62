// However an endpoint misbehaves from a session's start to its stop, or from its middle on, the app goes on, says
// what is wrong, never blocks its GUI thread, and the next session streams.

import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';

import { App, Service, countFiles, eventually, temporaryDirectory, wholeFile } from '../../automation/support.mjs';

// What belongs to a fault is far more than the jitter of a busy machine: a time-out, a large reply read on the GUI
// thread. Runs on a quiet machine show a tenth of this.
const LONGEST_STALL_MS = 250;

const KINDS = { delay: 300, drop: null, truncate: null, status: 503, empty: null, garbage: null, large: 17 << 20 };

const startError = (text) => new RegExp(`^\\[ERROR\\] MerovantaPanoptra: Error when starting Panoptra: ${text}$`);
const REQUEST_FAILED = /^\[ERROR\] XhrMessageSender: Request failed$/;
const CANNOT_PARSE = /^\[WARNING\] XhrMessageSender: Cannot parse message$/;
const DELETE_FAILED = /^\[WARNING\] MessageSender: Failed to send delete: ./;
const LOG_FAILED = /^\[WARNING\] Panoptra: Cannot log co-browsing (acceptance|start|stop): ./;
const POLL_FAILED = /^\[ERROR\] XhrRunner: Poll failed: ./;
const CANNOT_PARSE_POLL = /^\[WARNING\] XhrRunner: Cannot parse poll reply$/;
const ALREADY_STOPPED = /^\[WARNING\] Panoptra: Already stopped$/;
const STOPPED = /(: Delete sent$|Failed to send delete: |Panoptra: Already stopped$)/;
const ANY_TIME = [LOG_FAILED, POLL_FAILED, CANNOT_PARSE_POLL];

const broken = (line) => ({ drop: line, truncate: line, large: line });
const NO_START = {
  drop: startError('.+'),
  truncate: startError('.+'),
  status: startError('HTTP status 503'),
  empty: /^\[WARNING\] Panoptra: Config is nil$/,
  garbage: startError('Cannot decode reply: it is not JSON'),
  large: startError('Reply is too large'),
};
const NO_STREAM = { ...broken(REQUEST_FAILED), status: CANNOT_PARSE, garbage: CANNOT_PARSE };

// What the app says with each kind of fault, before the stop and after it; where nothing is named before, it streams.
// `others` may be said besides.
const CASES = {
  'im/c': { running: NO_START, others: [ALREADY_STOPPED] },
  'ix/m:get': { running: broken(REQUEST_FAILED) },
  'ix/m:post': { running: NO_STREAM },
  'ix/m:delete': { stopped: broken(DELETE_FAILED) },
  'io/l': { running: { ...broken(LOG_FAILED), status: LOG_FAILED } },
  co: { running: { ...broken(POLL_FAILED), status: CANNOT_PARSE_POLL, garbage: CANNOT_PARSE_POLL } },
  '*': { running: NO_START, others: [ALREADY_STOPPED, DELETE_FAILED, ...ANY_TIME] },
  '* from the middle on': {
    running: NO_STREAM, stopped: broken(DELETE_FAILED), others: ANY_TIME, fromTheMiddle: true,
  },
};

const file = wholeFile();
let service;
let app;

before(async () => {
  service = await Service.start(file);
  app = App.open(file, service.host, ['--control', '--tour']);
});

/** Hands over a function that waits for a picture of what it has started: any one, or one after the first `from` events. */
async function session(whileRunning) {
  const begin = service.events().length;
  const picture = (from = begin) => eventually('a picture', () => {
    app.assertRunning();
    const events = service.events();
    const begun = events.slice(begin).filter(({ kind }) => kind === 'init').map(({ visitor }) => visitor);
    return events.slice(from).some(({ kind, visitor }) => kind === 'screenshot' && begun.includes(visitor));
  });
  app.say('start');
  await whileRunning(picture);
  app.say('stop');
  await app.line(STOPPED);
}

/** Gives back the longest stall. */
async function run(endpoint, kind, { running = {}, stopped = {}, others = [], fromTheMiddle = false }) {
  const misbehave = () => service.setFaults({ [endpoint]: { kind, value: KINDS[kind] ?? undefined } });
  await app.longestStall();
  app.turnPage();
  if (!fromTheMiddle) await misbehave();
  await session(async (picture) => {
    if (fromTheMiddle) {
      await picture();
      await misbehave();
    }
    await (running[kind] ? app.line(running[kind]) : picture(service.events().length));
    // A stream that is lost pings no more.
    const isLost = running[kind] === REQUEST_FAILED;
    if (fromTheMiddle && !isLost) await app.line(/: Execute ping interval task$/, undefined, app.out.length);
    if (fromTheMiddle && isLost) await app.line(/ Panoptra: Stream is lost$/);
  });
  if (stopped[kind]) await app.line(stopped[kind]);
  const expected = [running[kind], stopped[kind], ...others].filter(Boolean);
  const unexpected = app.problems(...expected);

  await service.setFaults({});
  app.turnPage();
  await session((picture) => picture());
  await app.line(/ Delete sent$/);
  // What was under way when the first session ended is done by now.
  assert.deepEqual([...unexpected, ...app.problems(...expected)], []);
  return app.longestStall();
}

test('without a service the app says so once and goes on', async (t) => {
  const nobody = '127.0.0.1:1';
  const screens = temporaryDirectory(t);
  const lone = App.start(t, nobody, ['--tour', '--exit-after', '12', '--screenshot-dir', screens]);
  assert.equal(await lone.exitCode(60), 0);
  assert.deepEqual(lone.err, []);
  assert.equal(lone.out.filter((line) => startError('.+').test(line)).length, 1);
  assert.ok(countFiles(screens) >= 3, 'the tour stood still');
});

describe('faults', () => {
  for (const [name, expectation] of Object.entries(CASES)) {
    test(name, async (t) => {
      const stalls = {};
      for (const kind of Object.keys(KINDS)) {
        await t.test(kind, async () => { stalls[kind] = await run(name.split(' ')[0], kind, expectation); });
      }
      t.diagnostic(`longest stall in ms: ${JSON.stringify(stalls)}`);
      assert.ok(Math.max(...Object.values(stalls)) < LONGEST_STALL_MS, JSON.stringify(stalls));
    });
  }

  test('a session that was stopped before the service replied leaves the next one alone', async () => {
    await service.setFaults({ 'im/c': { kind: 'delay', value: 1500, count: 1 } });
    app.turnPage();
    app.say('start');
    await app.line(/ Get init$/);
    app.say('stop');
    await app.line(startError('Panoptra was stopped while it started'));
    app.turnPage();
    const replies = () => service.out.filter((line) => line.startsWith('POST /api/in/im/c')).length;
    const before = replies();
    await session(async (picture) => {
      await picture();
      await eventually('the late reply', () => replies() >= before + 2);
      await picture(service.events().length);
    });
    assert.deepEqual(app.problems(), []);
  });

  test('the app ends of its own accord', async () => {
    app.say('quit');
    assert.equal(await app.exitCode(), 0);
    assert.deepEqual(app.err, []);
  });
});
