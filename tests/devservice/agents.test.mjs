// Several agents at one service, each in a browser of its own, and one who works by keyboard alone.

import assert from 'node:assert/strict';
import { before, test } from 'node:test';

import { violations } from './axe.mjs';
import { FakeVisitor, event } from './fakeVisitor.mjs';
import { openBrowser, Service, wholeFile } from '../../automation/support.mjs';

const file = wholeFile();
const SIZES = [[390, 844], [1024, 700], [1366, 768], [1440, 900], [1920, 1080], [2560, 1080]];
let url;
let browser;
let jpeg;
const problems = [];

before(async () => {
  ({ url } = await Service.start(file));
  browser = await openBrowser(file);
  const painter = await browser.newPage({ viewport: { width: 390, height: 844 } });
  jpeg = await painter.screenshot({ type: 'jpeg' });
});

async function agent(name, address = url) {
  const page = await (await browser.newContext({ viewport: { width: 1366, height: 768 } })).newPage();
  page.setDefaultTimeout(20_000);
  page.on('pageerror', (error) => problems.push(String(error)));
  await page.goto(address);
  await page.locator('#agent').click();
  await page.locator('#agent-name').fill(name);
  await page.getByRole('button', { name: 'Save' }).click();
  await page.locator('#agent-label').getByText(name).waitFor();
  return page;
}

async function visitor(shareId) {
  const result = new FakeVisitor(url, { shareId });
  await result.start();
  await result.send(event.screenshot(0, jpeg));
  return result;
}

const ready = (page) => page.locator('.surface:not([data-mode="off"])').waitFor();
const shown = (page, code) => page.locator('#share-code').getByText(code).waitFor();

test('agents see each other, and one acts at a time', async () => {
  const first = await visitor('71001');
  const ada = await agent('Ada Keller');
  const bo = await agent('Bo');
  for (const page of [ada, bo]) await ready(page);
  await ada.locator('#watchers').getByLabel('Bo watches').waitFor();
  await ada.getByRole('button', { name: 'Ask for consent' }).click();
  await bo.locator('#watchers').getByLabel('Ada Keller acts').waitFor();
  await bo.locator('.surface[data-mode="off"]').waitFor({ state: 'attached' });
  assert.match(await bo.locator('#close').getAttribute('title'), /^Ada Keller acts/);
  await bo.locator('.entry').getByText('Ada Keller').waitFor();

  await bo.getByRole('button', { name: 'Ask to take over' }).click();
  await ada.getByRole('button', { name: 'Keep acting' }).click();
  await bo.getByRole('button', { name: 'Ask to take over' }).click();
  await ada.getByText(/^Bo asks to take over/).waitFor();
  for (const [width, height] of SIZES) {
    await ada.setViewportSize({ width, height });
    await ada.evaluate(() => Promise.all(document.getAnimations().map((each) => each.finished.catch(() => {}))));
    assert.deepEqual(await violations(ada), [], `${width} × ${height}`);
  }
  await ada.getByRole('button', { name: 'Hand over' }).click();
  await ready(bo);
  await bo.getByRole('button', { name: 'Faster polling' }).click();
  await ada.locator('#watchers').getByLabel('Bo acts').waitFor();
  await first.stop();
  for (const page of [ada, bo]) await page.context().close();
});

test('what is on view is in the address, for a reload and for others', async () => {
  await visitor('71002');
  const ada = await agent('Ada');
  await shown(ada, '71002');
  await visitor('71003');
  await ada.getByRole('button', { name: /71003/ }).first().click();
  await shown(ada, '71003');
  await ada.reload();
  await shown(ada, '71003');
  assert.equal(await ada.locator('#agent-label').textContent(), 'Ada');
  const bo = await agent('Bo', ada.url());
  await shown(bo, '71003');
  await bo.goto(`${url}#session=nobody`);
  await bo.reload();
  await bo.getByText('The session of that address is not here any more.').waitFor();
  for (const page of [ada, bo]) await page.context().close();
});

/** Presses Tab until the element has the focus. */
async function reach(page, selector) {
  for (let i = 0; i < 60; i += 1) {
    if (await page.evaluate((each) => document.activeElement?.matches(each), selector)) return;
    await page.keyboard.press('Tab');
  }
  assert.fail(`${selector} cannot be reached`);
}

test('an agent works by keyboard alone', async () => {
  const { send } = await visitor('71004').then((each) => ({ send: () => each.send(event.ping(1000)) }));
  const page = await agent('Kim');
  const press = async (...keys) => { for (const key of keys) await page.keyboard.press(key); };
  await page.locator('body').press('Tab');
  await reach(page, '#join-code');
  await page.keyboard.type('71004');
  await press('Enter');
  await ready(page);
  await reach(page, '#tools input[value="tap"]');
  await reach(page, '#surface');
  await press('ArrowRight', 'ArrowRight', 'Enter');
  const [tap] = await until(send);
  assert.equal(tap.x, Math.floor(0.515 * 1170));

  await page.locator('#tools input[value="tap"]').focus();
  for (const mode of ['draw', 'pointer', 'arrow']) {
    await press('ArrowRight');
    assert.ok(await page.locator(`#tools input[value="${mode}"]`).isChecked(), mode);
  }
  await reach(page, '#surface');
  await press('ArrowRight', 'Enter', 'Shift+ArrowDown', 'Shift+ArrowDown', 'Enter');
  assert.match((await until(send))[0].d.u, /^data:image\/png/);
  await page.locator('#tools input[value="arrow"]').focus();
  await press('ArrowRight', 'ArrowRight');
  await reach(page, '#surface');
  await press('ArrowLeft', 'Enter');
  await page.keyboard.type('Here');
  await press('Enter');
  assert.match((await until(send))[0].d.u, /^data:image\/png/);
  await reach(page, '#chat-tab, #timeline-tab');
  await press('ArrowRight');
  await reach(page, '#chat-text');
  await page.keyboard.type('Hello');
  await press('Enter');
  await page.locator('#chat-messages').getByText('Hello').waitFor();
  await page.context().close();
});

/** The agent's messages when there are some. */
async function until(send) {
  for (;;) {
    const messages = await send();
    if (messages.length > 0) return messages;
  }
}

test('nothing went wrong in the browsers', () => {
  assert.deepEqual(problems, []);
});
