// The visitor and the agent chat; the page is the service's, in the app's web view.

import assert from 'node:assert/strict';
import { readdirSync, readFileSync, statSync } from 'node:fs';
import { basename, join } from 'node:path';
import { before, test } from 'node:test';

import { AgentConsole } from '../../automation/agentConsole.mjs';
import { onePage } from '../../automation/pdf.mjs';
import { lowestStretch, shareOf } from '../../automation/pixels.mjs';
import { App, Service, eventually, outputDirectory, wholeFile } from '../../automation/support.mjs';

const WHITE = [0xff, 0xff, 0xff];
const MAGENTA = [0xff, 0x00, 0xff];
const DOCUMENT = onePage('1 0 1 rg 0 0 200 280 re f');
const HEAD = [0x0d, 0x6c, 0x5d];
const TOP = { x: 0, y: 60, width: 390, height: 30 };
const FIELD = '150 812';
const SEND = '355 812';
const COMPOSER_TOP = 770;

const file = wholeFile();
let service;
let agent;
let app;

before(async () => {
  service = await Service.start(file, '--reply-ca', 'true');
  agent = await AgentConsole.open(file, service.url);
  app = App.open(file, service.host, ['--control']);
  await app.tap('demoButton');
  await app.tap('tabProfile');
});

const keep = async (name) => {
  const directory = outputDirectory('chat');
  if (directory) await agent.page.screenshot({ path: join(directory, `${name}.png`) });
};
const pagesOpened = () => service.out.filter((line) => /^GET \/api\/in\/wc\/ws/.test(line)).length;
// Left of what a message holds.
const bubble = async () => lowestStretch(agent.page, await app.picture(), 24, COMPOSER_TOP, WHITE);

async function opens(step) {
  const earlier = pagesOpened();
  await step();
  await eventually('the chat page', () => pagesOpened() > earlier);
}

test('both sides write', async () => {
  await opens(() => app.tap('openChat'));
  await agent.openChat(/^Visitor [0-9A-F]{4}/);
  await eventually('the chat being open', () => agent.chatIsOpen());
  await eventually('the page being drawn', async () =>
    await shareOf(agent.page, await app.picture(), TOP, HEAD) > 0.9);
  app.say(`tapAt ${FIELD}`);
  app.say('type My card is lost');
  app.say(`tapAt ${SEND}`);
  await agent.message('My card is lost').waitFor();

  const before = await bubble();
  await agent.write('We block it at once.');
  await eventually('the answer in the app', async () => await bubble() > before + 20);
  await keep('console');
});

test('a shared document is shown, and kept for the visitor alone', async () => {
  const before = await bubble();
  await agent.shareFile('Blocked cards – 2026.pdf', 'application/pdf', DOCUMENT);
  await eventually('the document in the chat', async () => await bubble() > before + 20);
  await app.longestStall();
  app.say(`tapAt 80 ${await bubble()}`);
  await app.place('page');
  await eventually('the page of the document', async () =>
    await shareOf(agent.page, await app.picture(), { x: 100, y: 300, width: 190, height: 100 }, MAGENTA) > 0.95);
  assert.ok(await app.longestStall() < 1000, 'the app stood still');
  const written = readdirSync(app.home, { recursive: true }).filter((name) => name.endsWith('.pdf'));
  assert.equal(written.length, 1);
  const path = join(app.home, written[0]);
  assert.equal(basename(path), 'Blocked cards – 2026.pdf');
  assert.deepEqual(readFileSync(path), DOCUMENT);
  assert.equal(statSync(path).mode & 0o777, 0o600);
  await app.tap('closePreview');
  await eventually('the preview closed', async () => await app.where('closePreview') === null);
  assert.ok(await agent.chatIsOpen());
});

test('a tap in the top fifth closes the chat, an open one goes on as who is identified, the widget opens it', async () => {
  app.say(`tapAt 195 ${0.21 * 844}`);
  await app.longestStall();
  assert.ok(await shareOf(agent.page, await app.picture(), TOP, HEAD) > 0.9);
  app.say(`tapAt 195 ${0.19 * 844}`);
  await eventually('the chat being closed', async () => !await agent.chatIsOpen());
  await app.place('openChat');

  await opens(() => app.tap('openChat'));
  await opens(async () => app.say('identify'));
  assert.match(service.out.findLast((line) => line.startsWith('GET /api/in/wc/ws')), /vId=margaret\.hollis /);
  await agent.openChat('Margaret Hollis');
  await agent.page.locator('#card [data-field="email"]').filter({ hasText: '@' }).waitFor();
  await eventually('the chat being open', () => agent.chatIsOpen());
  assert.equal(await agent.message('My card is lost').count(), 0);
  app.say('tapAt 195 20');
  await eventually('the chat being closed', async () => !await agent.chatIsOpen());

  await app.tap('getHelp');
  await opens(() => app.tap('chatButton'));
  await eventually('the chat being open', () => agent.chatIsOpen());
  app.say('tapAt 195 20');
  await eventually('the chat being closed', async () => !await agent.chatIsOpen());
});

test('after signing out the chat is somebody else\'s', async () => {
  app.say('signOut');
  await eventually('the account being gone', async () => await app.where('tabProfile') === null);
  await app.tap('demoButton');
  await app.tap('tabProfile');
  await opens(() => app.tap('openChat'));
  const visitors = service.out.map((line) => line.match(/^GET \/api\/in\/wc\/ws.*vId=(\S+) /)?.[1]).filter(Boolean);
  assert.match(visitors.at(-1), /^[0-9a-f]{32}$/);
  assert.ok(!visitors.slice(0, -1).includes(visitors.at(-1)));
  assert.deepEqual(app.problems(), []);
  assert.deepEqual(agent.problems, []);
});
