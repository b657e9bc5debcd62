// What the agent does in the console happens in the app, and the agent sees that it did.

import assert from 'node:assert/strict';
import { join } from 'node:path';
import { before, test } from 'node:test';

import { FakeVisitor } from '../devservice/fakeVisitor.mjs';
import { AgentConsole, WIDGET_GREY } from '../../automation/agentConsole.mjs';
import { App, Service, eventually, outputDirectory, wholeFile } from '../../automation/support.mjs';

const ACCEPT_BLUE = [0x1f, 0x5b, 0xd1];
// The blue pen, half transparent on white.
const PALE_BLUE = [0x8e, 0xb7, 0xf9];

const file = wholeFile();
let service;
let agent;

before(async () => {
  service = await Service.start(file);
  agent = await AgentConsole.open(file, service.url);
});

const keep = async (name) => {
  const directory = outputDirectory('agent');
  if (directory) await agent.page.screenshot({ path: join(directory, `${name}.png`) });
};
const accepted = () => agent.entry('Co-browsing accepted').count();
const tapOn = async (app, name) => agent.tap(await app.place(name));
const ended = () => agent.page.getByText(/Session ended at/).waitFor();
const liveVisitor = (known) => eventually('a live visitor', async () =>
  (await service.visitors()).find(({ state, shareId }) => state === 'live' && !known.includes(shareId)));

test('the agent joins by the share code, taps, draws, asks for consent and closes', async (t) => {
  const other = new FakeVisitor(service.url);
  await other.start();
  await agent.page.locator('#share-code').filter({ hasText: other.shareId }).waitFor();
  const app = App.start(t, service.host, ['--control'], 'phone');
  const { shareId, id } = await liveVisitor([other.shareId]);
  await agent.join(shareId);
  await agent.shows('the login page', await app.place('signInButton'), [0x0d, 0x66, 0x50]);

  await tapOn(app, 'demoButton');
  await app.line(/View changed to: AccountsPage$/);
  await tapOn(app, 'tabTransfer');
  await app.line(/View changed to: TransferPage$/);
  const button = await app.place('continueButton');
  const tap = await agent.entry(/Tap at/).first().textContent();
  t.diagnostic(`the agent's last tap: ${tap}`);

  const ring = { x: 14, y: button.y - 34, width: 362, height: button.height + 68 };
  const below = { x: 180, y: ring.y + ring.height - 4, width: 30, height: 8 };
  await agent.shows('nothing below the button', below, PALE_BLUE, { not: true });
  await agent.encircle(ring, 'Blue');
  await agent.shows('the drawing', below, PALE_BLUE);
  const since = performance.now();
  await keep('drawing');
  assert.equal(await agent.share({ ...button, x: 60, width: 60 }, PALE_BLUE), 0);
  await agent.shows('nothing below the button again', below, PALE_BLUE, { not: true });
  const seconds = (performance.now() - since) / 1000;
  t.diagnostic(`the drawing was seen for ${seconds.toFixed(1)} s`);
  assert.ok(seconds > 3, `the drawing was seen for ${seconds} s`);

  const acceptances = await accepted();
  await agent.button('Ask for consent').click();
  const accept = await app.place('accept');
  await agent.shows('the dialog', accept, ACCEPT_BLUE);
  await keep('consent');
  // Only the visitor can consent.
  await agent.tap(accept);
  await app.line(/^\[WARNING\] ClickUtil: View not found$/);
  assert.equal(await accepted(), acceptances);
  await app.tap('accept');
  await eventually('the acceptance', async () => await accepted() === acceptances + 1);
  await agent.shows('the page without the dialog', accept, ACCEPT_BLUE, { not: true });

  await agent.button('Faster polling').click();
  await agent.entry('Faster polling').waitFor();
  // The console does not ask an app that shares its screen to start.
  await service.send(id, { co: { s: true } });
  await app.line(/Panoptra is already started$/);
  await agent.closeSession();
  await ended();
  await app.line(/^\[DEBUG\] MessageSender: Delete sent$/);
  assert.equal(await app.where('sharingPill'), null);
  assert.deepEqual(service.events('end', id).length, 1);
  assert.deepEqual(app.problems(/ClickUtil: View not found$/, /Panoptra is already started$/), []);
});

test('a visitor without a session is invited, and ends it with the widget', async (t) => {
  const known = (await service.visitors()).map(({ shareId }) => shareId);
  const app = App.open(t, service.host, ['--control'], 'phone');
  await agent.page.getByRole('button', { name: /^Invite: visitor/ }).click();
  await liveVisitor(known);
  assert.match(await agent.showsCode(app), /^\d{5}$/);
  const label = await app.place('shareId');
  await keep('widget');

  await tapOn(app, 'hideButton');
  await agent.shows('the page where the widget was', label, WIDGET_GREY, { not: true });
  assert.equal(await app.where('shareId'), null);
  await tapOn(app, 'showButton');
  await agent.shows('the widget again', label, WIDGET_GREY);

  await tapOn(app, 'demoButton');
  await app.line(/View changed to: AccountsPage$/);
  await tapOn(app, 'tabProfile');
  await app.line(/View changed to: ProfilePage$/);
  await tapOn(app, 'closeButton');
  await ended();
  assert.equal(await app.where('closeButton'), null);
  assert.deepEqual(app.problems(), []);
});

test('nothing went wrong in the browser', () => {
  assert.deepEqual(agent.problems, []);
});
