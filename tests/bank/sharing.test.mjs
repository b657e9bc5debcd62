// The example app says truthfully that it is shared, in every way a session begins and ends, and looks the same however
// its window came to its size.

import assert from 'node:assert/strict';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { before, test } from 'node:test';

import { App, Service, eventually, outputDirectory, wholeFile } from '../../automation/support.mjs';

const file = wholeFile();
let service;

before(async () => {
  service = await Service.start(file);
});

async function openAt(tab, ...args) {
  const app = App.open(file, service.host, ['--control', ...args]);
  await app.tap('demoButton');
  await app.tap(tab);
  return app;
}

/** What the item says; null if it is not there. */
async function read(app, name) {
  const asked = app.out.length;
  app.say(`read ${name}`);
  const answer = await app.line(new RegExp(`^${name} (reads|is not there)`), undefined, asked);
  return answer.match(/ reads (.*)$/)?.[1] ?? null;
}

for (const look of ['light', 'dark']) {
  test(`the app tells of every state that a session has, ${look}`, async () => {
    const app = await openAt('tabProfile', ...look === 'dark' ? ['--dark'] : []);
    const shows = async (state, pill, button) => {
      await eventually(`${state}: ${pill}, ${button}`, async () => {
        const seen = [await read(app, 'sharingPill'), await read(app, 'startSharingButton') ?? await read(app, 'stopSharingButton')];
        return [pill, button].every((expected, i) => expected === seen[i] || (expected instanceof RegExp && expected.test(seen[i])));
      });
      const directory = outputDirectory('sharing');
      if (directory) writeFileSync(join(directory, `${look}-${state}.png`), await app.picture());
    };
    const live = async () => (await service.visitors()).find(({ state }) => state === 'live');
    const isShared = [/^Screen shared · \d{5}$/, 'Stop sharing'];
    await shows('idle', null, 'Start sharing');

    await service.setFaults({ 'im/c': { kind: 'delay', value: 2000 } });
    await app.tap('startSharingButton');
    await shows('starting', 'Connecting…', 'Stop sharing');
    assert.equal(await app.where('shareCode'), null);
    await service.setFaults({});
    await shows('sharing', ...isShared);
    assert.ok((await read(app, 'sharingPill')).endsWith((await live()).shareId));

    await service.setFaults({ 'ix/m:post': { kind: 'drop' }, 'ic/h': { kind: 'drop' } });
    await shows('reconnecting', 'Reconnecting…', 'Stop sharing');
    await service.setFaults({});
    await shows('back', ...isShared);

    app.say('hide');
    await app.line(/ Timeout; Close sender$/);
    await shows('suspended', 'Sharing is paused', 'Stop sharing');
    await service.setFaults({ 'im/c': { kind: 'drop' } });
    app.say('show');
    await shows('failed', null, 'Try again');
    await service.setFaults({});
    await app.tap('startSharingButton');
    await shows('tried-again', ...isShared);

    await fetch(new URL(`console/api/visitors/${(await live()).id}/messages`, service.url), { method: 'POST', body: '{"a":"c"}' });
    await shows('ended-by-agent', null, 'Start sharing');
    await app.tap('getHelp');
    await shows('help', ...isShared);
    await app.tap('closeButton');
    await shows('ended-by-visitor', null, 'Start sharing');
    await app.tap('startSharingButton');
    await shows('again', ...isShared);
    await app.tap('stopSharingButton');
    await shows('ended-by-host', null, 'Start sharing');
    assert.deepEqual(app.problems(/Cannot restart session after close: /, /: Request failed$/, /: Root view is null$/), []);
    await app.stop();
  });
}

test('placeholders are there after the window got another size', async () => {
  const form = async (...sizes) => {
    const app = App.open(file, service.host, ['--control']);
    if (sizes.length === 1) app.say(`resize ${sizes[0]}`);
    await app.tap('demoButton');
    await app.tap('tabTransfer');
    await app.place('recipientInput');
    if (sizes.length > 1) sizes.forEach((size) => app.say(`resize ${size}`));
    let picture;
    await eventually('the form at rest', async () => {
      const before = picture;
      picture = await app.picture();
      return before?.equals(picture);
    });
    await app.stop();
    return picture;
  };
  for (const size of ['320 640', '1000 800']) {
    assert.ok((await form(size)).equals(await form('390 844', '600 700', size)), `at ${size}`);
  }
});
