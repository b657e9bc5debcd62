// The example app without a mouse: everything can be reached, is seen when it has the focus, and works.

import assert from 'node:assert/strict';
import { before, test } from 'node:test';
import { isDeepStrictEqual } from 'node:util';

import { App, Service, eventually, wholeFile } from '../../automation/support.mjs';

const HEIGHT = 640;
const TAB_BAR = 76;
const file = wholeFile();
let service;
let app;

before(async () => {
  service = await Service.start(file);
  app = App.open(file, service.host, ['--control']);
  // Small, so that not everything has room.
  app.say(`resize 320 ${HEIGHT}`);
});

async function focus() {
  const asked = app.out.length;
  app.say('focus');
  const answer = await app.line(/^focus (on|is nowhere)/, undefined, asked);
  const [, name, x, y, width, height, look] = answer.match(/^focus on (\S+) at (\S+) (\S+) (\S+) (\S+) (\S+)$/) ?? [];
  return name && { name, x: +x, y: +y, width: +width, height: +height, isSeen: look === 'seen' };
}

/** As focus(), once what has it stands still: pages slide. */
function focusAtRest() {
  let before;
  return eventually('the focus at rest', async () => {
    const place = await focus();
    const rests = isDeepStrictEqual(place, before);
    before = place;
    return rests && place;
  });
}

const key = (name) => app.say(`key ${name}`);

/** Goes on by the tab key until the item has the focus; all stops on the way must be in sight. */
async function reach(name, direction = 'Tab') {
  const stops = [];
  for (let i = 0; i < 60; ++i) {
    const stop = await focus();
    if (stop?.name === name) return stop;
    stops.push(stop?.name ?? 'nowhere');
    key(direction);
    const next = await focusAtRest();
    assert.ok(next.isSeen, `nothing shows the focus on ${next.name} after ${stops.join(', ')}`);
    const isWhole = next.y >= -1 && next.y + next.height <= HEIGHT + 1 && next.x >= -1 && next.x + next.width <= 321;
    assert.ok(isWhole, `${next.name} is off the screen: ${JSON.stringify(next)}`);
  }
  return assert.fail(`no way to ${name}: ${stops.join(', ')}`);
}

async function appears(name) {
  await eventually(name, () => app.where(name));
}

test('the customer signs in', async () => {
  await appears('userNameInput');
  assert.equal((await focus()).name, 'userNameInput');
  app.say('type m.hollis');
  key('Tab');
  app.say('type Willow-4471');
  await reach('signInButton');
  key('Space');
  await appears('accountsPage');
});

test('an account is opened, read to its end and left', async () => {
  await reach('accountRow2');
  key('Return');
  await appears('accountPage');
  await reach('accountTransactionsKeys');
  const top = await app.picture();
  key('End');
  await eventually('the list having moved', async () => !(await app.picture()).equals(top));
  key('Escape');
  await eventually('the account being left', async () => await app.where('accountPage') === null);
  assert.ok(await focus());
});

test('money is sent', async () => {
  await reach('tabTransfer');
  key('Space');
  await appears('recipientInput');
  await reach('recipientInput');
  app.say('type Nora Whitfield');
  await reach('cardNumberInput');
  app.say('type 4111111111111111');
  await reach('amountInput');
  app.say('type 12');
  await reach('continueButton');
  key('Return');
  await appears('confirmButton');
  await reach('confirmButton');
  key('Return');
  await appears('doneButton');
  await reach('doneButton');
  key('Return');
  await eventually('the form again', async () => await app.where('doneButton') === null);
});

test('the chat and help are reached, and sharing is ended', async () => {
  await reach('tabProfile');
  key('Space');
  await appears('profilePage');
  await reach('openChat');
  key('Return');
  const asked = (path) => service.requests().some(({ target }) => target.startsWith(path));
  await eventually('the chat', () => asked('/api/in/wc/c/support'));
  await eventually('the chat\'s page', () => service.out.some((line) => line.startsWith('GET /cdn/chat/chat.html')
    || line.startsWith('GET /chat/chat.html')));
  // What is in the page is the page's; the key that leaves it is the library's.
  await eventually('the chat being closed', async () => {
    key('Escape');
    return (await focus())?.name === 'openChat';
  });
  await reach('getHelp');
  key('Return');
  await eventually('a session', async () => (await service.visitors()).some(({ shareId }) => shareId));
  await appears('closeButton');
});

test('closing the window ends the session', async () => {
  app.say('close');
  assert.equal(await app.exitCode(), 0);
  assert.equal(service.requests().filter(({ method, target }) => method === 'DELETE' && target.startsWith('/api/ix/m')).length > 0, true);
  assert.deepEqual(app.problems(), []);
});
