// The app in the background and back, on a virtual screen where windows really gain and lose the focus.

import assert from 'node:assert/strict';
import { test } from 'node:test';

import { App, Service, eventually } from '../../automation/support.mjs';

// Two polling loops would overlap: the queue is not emptied before the reply.
const REPLY_DELAY_MS = 300;
const ORDINARY_PAUSE_MS = 90;

// Said in the background, where there is nothing to take a picture of.
const NO_WINDOW = /^\[WARNING\] ViewMonitor: Root view is null$/;

test('a session is closed in the background and opened anew on return', async (t) => {
  const service = await Service.start(t);
  const app = App.start(t, service.host, ['--control', '--tour'], 'opengl');
  const begun = () => service.events('init').map(({ body, visitor }) => ({ ...JSON.parse(body), visitor }));
  const ended = () => service.requests().filter(({ method }) => method === 'DELETE').map(({ session }) => session);
  const nextPicture = (known = service.events('screenshot').length) => eventually('a picture', () => {
    app.assertRunning();
    return service.events('screenshot').at(known);
  });
  const hide = async () => {
    app.turnPage();
    app.say('hide');
    await app.line(/^\[DEBUG\] Panoptra: App goes in background$/);
  };
  const closeInBackground = async () => {
    const before = performance.now();
    await hide();
    await app.line(/^\[DEBUG\] Panoptra: Timeout; Close sender$/);
    const seconds = (performance.now() - before) / 1000;
    t.diagnostic(`closed after ${seconds.toFixed(2)} s`);
    assert.ok(seconds >= 5, `closed after ${seconds} s`);
    await app.line(/^\[DEBUG\] MessageSender: Delete sent$/);
  };
  await nextPicture(0);

  await closeInBackground();
  await service.setFaults({ 'ix/m:post': { kind: 'delay', value: REPLY_DELAY_MS } });
  const known = service.events('screenshot').length;
  app.say('show');
  await app.line(/^\[DEBUG\] Panoptra: WebSocket reconnect success$/);
  const { visitor, width, height } = await nextPicture(known);
  const [first, second] = begun();
  assert.deepEqual([visitor, width, height], [second.visitor, 130, 282]);
  assert.ok(second.sId !== first.sId && second.viId !== first.viId);
  assert.deepEqual([first.init, second.init, second.vId], [false, true, first.vId]);
  assert.deepEqual(ended(), [first.sId]);

  const replies = await eventually('enough replies', () => {
    app.assertRunning();
    const times = service.postTimes(visitor);
    return times.length > 8 && times;
  });
  const gaps = replies.slice(1).map((time, i) => time - replies[i]);
  assert.ok(Math.min(...gaps) >= REPLY_DELAY_MS + ORDINARY_PAUSE_MS, `replies ${gaps} ms apart`);

  assert.deepEqual(app.problems(NO_WINDOW), []);
  app.say('quit');
  assert.equal(await app.exitCode(), 0);
  assert.deepEqual(ended().at(-1), begun().at(-1).sId);
});
