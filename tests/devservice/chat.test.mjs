// The visitor's chat page and the agent console, each in a page of a real browser.

import assert from 'node:assert/strict';
import { before, test } from 'node:test';

import { violations } from './axe.mjs';
import { FakeVisitor } from './fakeVisitor.mjs';
import { AgentConsole } from '../../automation/agentConsole.mjs';
import { Service, wholeFile } from '../../automation/support.mjs';

const PHONE = { viewport: { width: 390, height: 844 } };
const HOSTILE = '<img src=x onerror=alert(1)>';

const file = wholeFile();
let service;
let agent;
let problems;

before(async () => {
  service = await Service.start(file);
  ({ page: agent, problems } = await AgentConsole.open(file, service.url));
});

/** The chat page as the app opens it: texts encoded as parts of a query, which may hold "&" and "=". */
async function openChat(visitorId, { title = '', message = '', hint = '', color = '' } = {}) {
  const part = (text) => encodeURIComponent(text).replace(/%26/g, '&').replace(/%3D/g, '=');
  const page = await agent.context().browser().newPage(PHONE);
  page.on('pageerror', (error) => problems.push(String(error)));
  page.on('console', (line) => ['error', 'warning'].includes(line.type()) && problems.push(line.text()));
  await page.goto(`${service.url}cdn/chat/chat.html?1700000000#d=${new URL(service.url).host}&tId=northbank&vId=${visitorId}`
    + `&title=${part(title)}&message=${part(message)}&hint=${part(hint)}&color=${part(color)}&n=true&eU=true`);
  await page.getByText('Connected').waitFor();
  return page;
}

async function write(page, text) {
  await page.getByRole('textbox', { name: /^Message/ }).fill(text);
  await page.keyboard.press('Enter');
}

const said = (page, text) => page.locator('.message', { hasText: text });
const texts = (page) => page.locator('.message-text').allTextContents();

const tag = (visitor, id, identity) => fetch(
  `${service.url}rest/v1/customerstatus/tag/byVisitor/${id}?tId=${visitor.tenant}`,
  { method: 'POST', headers: { 'X-QD-SSID': visitor.sessionId }, body: JSON.stringify(identity) },
);

test('both sides write, the history stays, and only for this visitor', async () => {
  const chat = await openChat('guest-1', { title: `${HOSTILE} & more=1`, message: HOSTILE, hint: 'Ask us' });
  assert.equal(await chat.getByRole('heading').textContent(), `${HOSTILE} & more=1`);
  await chat.getByText(HOSTILE, { exact: true }).waitFor();
  assert.equal(await chat.getByPlaceholder('Ask us').isVisible(), true);
  await write(chat, `Hello ${HOSTILE}`);
  await said(chat, 'Hello').locator('time').waitFor();

  const row = agent.locator('.present[data-unread="1"]');
  await row.getByText('1', { exact: true }).waitFor();
  assert.match(await agent.title(), /^\(1\)/);
  await row.getByRole('button', { name: /guest-1/ }).click();
  await said(agent, `Hello ${HOSTILE}`).waitFor();
  await agent.locator('.present[data-unread="0"]').waitFor();
  await agent.getByText('The visitor has the chat open.').waitFor();
  await write(agent, 'Good day');
  await said(chat, 'Good day').waitFor();
  await agent.getByLabel('Message to the visitor').fill('One\nTwo');
  await agent.getByRole('button', { name: 'Send message' }).click();
  await said(chat, 'Two').waitFor();

  const expected = [`Hello ${HOSTILE}`, 'Good day', 'One\nTwo'];
  await chat.reload();
  await said(chat, 'Two').waitFor();
  assert.deepEqual(await texts(chat), expected);
  assert.deepEqual(await texts(agent), expected);
  const other = await openChat('guest-2');
  assert.deepEqual(await texts(other), []);
  await write(other, 'Somebody else');
  await agent.locator('.present[data-unread="1"]').waitFor();
  assert.deepEqual(await texts(agent), expected);
  await other.close();
  await chat.close();
  await agent.getByRole('heading', { name: /Earlier chats/ }).waitFor();
  await agent.getByText('The chat is closed.').waitFor();
});

test('files arrive under the names and headers that the agent chooses', async () => {
  const chat = await openChat('guest-3');
  await agent.locator('.present-open', { hasText: 'guest-3' }).click();
  const share = agent.getByRole('dialog', { name: 'Share a file' });
  const headers = async (name) => {
    const link = chat.getByRole('link', { name });
    const href = await link.getAttribute('href');
    assert.ok(!href.includes('chat.html') && !await link.getAttribute('download') && !await link.getAttribute('target'));
    return chat.evaluate(async (url) => {
      const reply = await fetch(url, { credentials: 'include' });
      return [reply.headers.get('content-disposition'), reply.headers.get('content-type'), await reply.text()];
    }, href);
  };

  const dropped = await agent.evaluateHandle(() => {
    const data = new DataTransfer();
    data.items.add(new File(['{}'], 'dropped.json', { type: 'application/json' }));
    return data;
  });
  await agent.dispatchEvent('#chat-pane', 'dragover', { dataTransfer: dropped });
  await agent.dispatchEvent('#chat-pane', 'drop', { dataTransfer: dropped });
  await share.getByLabel('Name').fill('../"a"/b.tiff');
  await share.getByLabel('Sent as').selectOption('Attachment, in quotes as it is');
  await share.getByRole('button', { name: 'Share' }).click();
  assert.deepEqual(await headers('../"a"/b.tiff'), ['attachment; filename="../"a"/b.tiff"', 'application/json', '{}']);

  await agent.getByRole('button', { name: 'Share a file' })
    .setInputFiles({ name: 'bare.pdf', mimeType: 'application/pdf', buffer: Buffer.from('%PDF') });
  await share.getByLabel('Sent as').selectOption('Without content-disposition');
  await share.getByLabel('Content type').fill('no\u00ebtype');
  await share.getByRole('button', { name: 'Share' }).click();
  await share.getByRole('alert').waitFor();
  assert.match(problems.pop(), /status of 400/);
  await share.getByLabel('Content type').fill('application/pdf');
  await share.getByRole('button', { name: 'Share' }).click();
  assert.deepEqual(await headers('bare.pdf'), [null, 'application/pdf', '%PDF']);
  await chat.close();
});

test('a file that the visitor attaches reaches the agent', async () => {
  const chat = await openChat('guest-6');
  await chat.getByLabel('Attach a file').setInputFiles({ name: 'letter ü.txt', mimeType: 'text/plain', buffer: Buffer.from('Dear bank') });
  await chat.getByRole('link', { name: 'letter ü.txt' }).waitFor();
  await agent.locator('.present-open', { hasText: 'guest-6' }).click();
  const href = await agent.getByRole('link', { name: 'letter ü.txt' }).getAttribute('href');
  assert.equal(await agent.evaluate(async (url) => (await fetch(url)).text(), href), 'Dear bank');
  await chat.getByLabel('Attach a file').setInputFiles({ name: 'huge', mimeType: '', buffer: Buffer.alloc((16 << 20) + 1) });
  await chat.getByText('Not sent: the file is too large').waitFor();
  assert.match(problems.pop(), /status of 413/);
  await chat.close();
});

test('an identified visitor is shown as such, with what was said before', async () => {
  const visitor = new FakeVisitor(service.url, { shareId: '70001', page: 'HomePage' });
  await visitor.start();
  await visitor.poll();
  await agent.getByRole('button', { name: /70001/ }).click();
  await agent.getByText('Not identified').waitFor();
  const chat = await openChat(visitor.visitorId);
  await write(chat, 'Before signing in');
  await agent.getByRole('tab', { name: /Chat/ }).click();
  await said(agent, 'Before signing in').waitFor();

  await tag(visitor, 'ada', {
    id: 'ada', firstname: 'Ada', lastname: HOSTILE, email: 'ada@example.org', tags: ['vip', HOSTILE], assignedUser: 'Jo',
  });
  const card = agent.locator('#card');
  await card.getByText(`Ada ${HOSTILE}`).waitFor();
  for (const text of ['ada@example.org', 'vip', 'Assigned to Jo', 'Id ada']) await card.getByText(text, { exact: true }).waitFor();
  assert.deepEqual(await texts(agent), []);
  await card.getByRole('button', { name: /^Before/ }).click();
  await said(agent, 'Before signing in').waitFor();
  await chat.close();
});

test('the chat page leaves the top fifth free, fits and reads on any colour', async () => {
  const chat = await openChat('guest-4', { title: 'A long title '.repeat(12), color: '#ffe600' });
  assert.equal(await chat.locator('.top').evaluate((top) => getComputedStyle(top).backgroundColor), 'rgb(255, 230, 0)');
  assert.equal(await chat.getByRole('heading').evaluate((title) => getComputedStyle(title).color), 'rgb(0, 0, 0)');
  await write(chat, `x${'y'.repeat(300)}`);
  for (const [width, height] of [[320, 568], [390, 844], [844, 390], [1280, 800]]) {
    await chat.setViewportSize({ width, height });
    const tops = await chat.locator('a, button, textarea, input, [tabindex]').evaluateAll((all) => all.map((each) => each.getBoundingClientRect().top));
    assert.ok(tops.length >= 3 && tops.every((top) => top >= height * 0.2 - 0.1), `at ${width}: ${tops}`);
    assert.equal(await chat.evaluate(() => document.documentElement.scrollWidth - window.innerWidth), 0);
    assert.deepEqual(await violations(chat), [], `at ${width} × ${height}`);
    const inside = await chat.locator('.top').evaluate((top) => top.scrollHeight <= top.clientHeight);
    assert.ok(inside, `at ${width} × ${height} the title overflows`);
  }
  const odd = await openChat('guest-4', { color: 'red;background:url(x)' });
  assert.equal(await odd.evaluate(() => document.documentElement.style.length), 0);
  await odd.close();
  await chat.close();
});

test('the chat goes on by itself when the service was away', async () => {
  const chat = await openChat('guest-5');
  assert.deepEqual(problems.splice(0), []);
  const { port } = new URL(service.url);
  assert.equal(await service.stop(), 0);
  await chat.getByText('Connection lost').waitFor();
  await write(chat, 'Written in between');
  await said(chat, 'Sending…').waitFor();
  service = await Service.start(file, '--port', port);
  await said(chat, 'Written in between').locator('time').waitFor();
  await agent.locator('.present-open', { hasText: 'guest-5' }).click();
  await said(agent, 'Written in between').waitFor();
  assert.equal((await texts(chat)).length, 1);
  const unexpected = problems.filter((problem) => !/ERR_CONNECTION_REFUSED|WebSocket connection/.test(problem));
  assert.deepEqual(unexpected, []);
});
