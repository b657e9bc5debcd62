// The demo as somebody tries it: app and console on one screen. E2E_TOGETHER says for how many seconds they are watched
// together (10).

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';

import { AgentConsole } from '../../automation/agentConsole.mjs';
import { App, Desktop, MASKS, Service, eventually } from '../../automation/support.mjs';

const TOGETHER_SECONDS = Number(process.env.E2E_TOGETHER ?? 10);
const TITLE = 'Alderbrook Bank';
// Longer than the app takes for a page of its tour, on a busy machine.
const LONGEST_SILENCE_MS = 4000;

test('a session lasts behind the browser, ends with minimising and comes back with restoring', async (t) => {
  const desktop = await Desktop.start(t);
  const service = await Service.start(t, ...MASKS);
  const app = App.start(t, service.host, ['--control', '--tour'], desktop);
  const pictures = () => service.events('screenshot');
  const window = await eventually('the window', () => desktop.window(TITLE).catch(() => null));
  const inits = () => service.events('init').map(({ body }) => JSON.parse(body));
  const ended = () => service.requests().filter(({ method }) => method === 'DELETE').map(({ session }) => session);
  await eventually('a picture', () => pictures().length > 0);

  const agent = await AgentConsole.open(t, service.url, null, desktop);
  await app.line(/^not in front$/);
  app.turnPage();
  let longest = 0;
  let last = { count: pictures().length, at: performance.now() };
  const end = performance.now() + TOGETHER_SECONDS * 1000;
  while (performance.now() < end) {
    await pause(100);
    const count = pictures().length;
    const now = performance.now();
    if (count > last.count) last = { count, at: now };
    longest = Math.max(longest, now - last.at);
  }
  t.diagnostic(`${TOGETHER_SECONDS} s behind the browser: the longest time without a picture was ${longest.toFixed(0)} ms`);
  assert.ok(longest < LONGEST_SILENCE_MS, `${longest} ms without a picture`);
  assert.deepEqual([inits().length, ended().length], [1, 0]);
  assert.equal((await service.visitor()).state, 'live');
  assert.deepEqual(agent.problems, []);

  const begun = performance.now();
  await desktop.manage('windowminimize', window);
  await app.line(/^\[DEBUG\] Panoptra: App goes in background$/);
  await app.line(/^\[DEBUG\] MessageSender: Delete sent$/);
  const seconds = (performance.now() - begun) / 1000;
  t.diagnostic(`closed ${seconds.toFixed(2)} s after minimising`);
  assert.ok(seconds >= 5 && seconds < 7, `closed after ${seconds} s`);

  const known = pictures().length;
  await desktop.manage('windowactivate', window);
  await app.line(/^\[DEBUG\] Panoptra: WebSocket reconnect success$/);
  await eventually('a picture of the restored app', () => pictures().length > known);
  const [first, second] = inits();
  assert.ok(second.sId !== first.sId && second.viId !== first.viId);
  assert.deepEqual([first.init, second.init, second.vId], [false, true, first.vId]);
  app.say('quit');
  assert.equal(await app.exitCode(), 0);
  assert.deepEqual(ended(), [first.sId, second.sId]);
});
