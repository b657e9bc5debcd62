// The agent console in a real browser, with a fake visitor on the wire.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { after, before, test } from 'node:test';

import { chromium } from 'playwright-core';

import { FakeVisitor, event } from './fakeVisitor.mjs';

const BROWSER_FLAGS = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync',
];

let service;
let url;
let browser;
let page;
const problems = [];

before(async () => {
  service = spawn(process.env.DEVSERVICE, ['--port', '0'], { stdio: ['ignore', 'pipe', 'inherit'] });
  url = await new Promise((resolve, reject) => {
    service.once('exit', (code) => reject(new Error(`the service ended with ${code}`)));
    service.stdout.once('data', (line) => resolve(String(line).match(/http:\S+/)[0]));
  });
  browser = await chromium.launch({ executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium', args: BROWSER_FLAGS });
  page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
  page.on('pageerror', (error) => problems.push(String(error)));
  page.on('console', (line) => ['error', 'warning'].includes(line.type()) && problems.push(line.text()));
  page.setDefaultTimeout(10_000);
  await page.goto(url);
});

after(async () => {
  await browser?.close();
  service?.removeAllListeners('exit');
  const ended = new Promise((resolve) => service.once('exit', (code) => resolve(code)));
  service.kill('SIGTERM');
  assert.equal(await ended, 0);
});

/** A JPEG of a phone's screen, a third of 1170 by 2532 pixels, in one colour. */
async function picture(colour) {
  const painter = await browser.newPage({ viewport: { width: 390, height: 844 } });
  await painter.setContent(`<body style="margin:0;background:${colour}">`);
  const jpeg = await painter.screenshot({ type: 'jpeg', quality: 40 });
  await painter.close();
  return jpeg;
}

/** Waits until the middle of the shown picture has this colour, within what JPEG does to it. */
function shown(red, green, blue) {
  return page.waitForFunction((expected) => {
    const canvas = document.getElementById('picture');
    const probe = new OffscreenCanvas(1, 1).getContext('2d', { willReadFrequently: true });
    probe.drawImage(canvas, -canvas.width / 2, -canvas.height / 2);
    const pixel = probe.getImageData(0, 0, 1, 1).data;
    return expected.every((value, i) => Math.abs(value - pixel[i]) < 12);
  }, [red, green, blue]);
}

const entry = (text) => page.getByRole('list', { name: 'Timeline' }).getByRole('listitem').filter({ hasText: text });

test('an empty console says how to start', async () => {
  await page.getByRole('heading', { name: 'No visitors yet' }).waitFor();
  await page.getByText(`merovanta-bank --server ${new URL(url).host} --start`).waitFor();
  await page.getByText('Development service').waitFor();
});

test('a visitor is followed live', async () => {
  const visitor = new FakeVisitor(url);
  await visitor.start();
  await page.getByRole('button', { name: /48213/ }).waitFor();
  await page.getByText('Waiting for the first picture').waitFor();

  await visitor.send(event.screenshot(0, await picture('rgb(200, 40, 40)')), event.page(1000, 'AccountsPage'));
  await shown(200, 40, 40);
  await page.getByText('Waiting for the first picture').waitFor({ state: 'hidden' });
  await page.getByRole('img', { name: /visitor 48213, page AccountsPage, Live/ }).waitFor();
  await visitor.send(event.screenshot(1000, await picture('rgb(30, 60, 200)')));
  await shown(30, 60, 200);

  // A quarter across and three quarters down the screen, in its device pixels.
  await visitor.send(event.tap(2000, 292.5, 1899));
  await entry('293, 1899 px').waitFor();
  const mark = await page.locator('.tap').evaluate((tap) => [tap.style.left, tap.style.top]);
  assert.deepEqual(mark, ['25%', '75%']);

  await visitor.send(event.tag(3000, '<img src=x onerror=alert(1)>'),
    event.userTag(3000, { firstname: 'Ada', lastname: 'Keller', email: 'ada@example.org' }), event.ping(3000));
  await entry('<img src=x onerror=alert(1)>').waitFor();
  await page.getByText('Ada Keller · Tenant northbank').waitFor();
  await page.locator('.fact-screen').getByText('390 × 844 pt @3x').waitFor();

  await page.getByRole('button', { name: 'Taps' }).click();
  assert.equal(await page.getByRole('list', { name: 'Timeline' }).getByRole('listitem').count(), 1);
  await page.getByRole('button', { name: 'All' }).click();

  await page.getByRole('button', { name: 'Faster polling' }).click();
  await entry('Faster polling').waitFor();
  assert.deepEqual(await visitor.send(event.ping(4000)), [{ co: { b: true } }]);

  await visitor.stop();
  await page.getByText(/Session ended at/).waitFor();
  assert.equal(await page.getByRole('button', { name: 'Force start' }).isDisabled(), true);
});

test('choosing another visitor shows that one only', async () => {
  const green = new FakeVisitor(url, { shareId: '11111', page: 'GreenPage' });
  await green.start();
  await green.send(event.screenshot(0, await picture('rgb(20, 160, 60)')));
  const grey = new FakeVisitor(url, { shareId: '22222', page: 'GreyPage' });
  await grey.start();
  await grey.send(event.screenshot(0, await picture('rgb(120, 120, 120)')));
  await page.getByRole('button', { name: /11111/ }).focus();
  await page.keyboard.press('Enter');
  await shown(20, 160, 60);
  await page.getByRole('button', { name: /22222/ }).click();
  await shown(120, 120, 120);
  assert.equal(await entry('GreenPage').count(), 0);
  assert.equal(await page.locator('[aria-current]').textContent().then((text) => text.includes('22222')), true);
});

test('a visitor who comes back under new ids is followed', async () => {
  const away = new FakeVisitor(url, { shareId: '55555' });
  await away.start();
  await away.send(event.screenshot(0, await picture('rgb(200, 40, 40)')));
  await page.getByRole('button', { name: /55555/ }).click();
  await away.stop();
  await page.getByText(/Session ended at/).waitFor();
  const back = Object.assign(new FakeVisitor(url, { shareId: '55555' }), { visitorId: away.visitorId });
  await back.start();
  await back.send(event.screenshot(0, await picture('rgb(240, 180, 20)')));
  await shown(240, 180, 20);
});

test('what the service replies can be set', async () => {
  await page.getByRole('button', { name: 'Start reply' }).click();
  await page.getByLabel('Ignore the visitor').check();
  await page.getByLabel('Masked view tags').fill('12\n13');
  await page.getByLabel('Chat available').selectOption('Yes');
  await page.getByRole('button', { name: 'Save' }).click();
  await page.getByRole('dialog').waitFor({ state: 'hidden' });
  const reply = await new FakeVisitor(url, { shareId: '33333' }).start();
  assert.deepEqual(reply.ios.blacklist, ['12', '13']);
  assert.equal(reply.x, true);
  assert.equal(reply.cA, true);
  assert.equal(reply.st, 'u');
});

test('faults are set, counted down and cleared', async () => {
  const health = async () => (await fetch(`${url}api/ic/h`)).status;
  const faults = page.getByRole('button', { name: /^Faults/ });
  await faults.focus();
  await page.keyboard.press('Enter');
  const dialog = page.getByRole('dialog', { name: 'Faults' });
  await dialog.getByLabel('Health check: fault').selectOption('Status code');
  await dialog.getByLabel('Health check: value').fill('599');
  await dialog.getByLabel('Health check: only the next').fill('1');
  await dialog.getByLabel('All others: fault').selectOption('Very large reply');
  await dialog.getByRole('button', { name: 'Apply' }).click();
  await dialog.waitFor({ state: 'hidden' });
  await page.getByRole('button', { name: 'Faults, 2 active' }).waitFor();
  assert.equal(await health(), 599);
  await page.getByRole('button', { name: 'Faults, 1 active' }).waitFor();
  const large = await (await fetch(`${url}api/in/i18n`)).arrayBuffer();
  assert.equal(large.byteLength, 17 * 1024 * 1024);

  await faults.click();
  assert.equal(await dialog.getByLabel('All others: value').inputValue(), '17');
  await dialog.getByRole('button', { name: 'Clear all' }).click();
  await page.getByRole('button', { name: 'Faults', exact: true }).waitFor();
  assert.equal(await health(), 200);
});

test('it fits a phone', async () => {
  await page.setViewportSize({ width: 390, height: 844 });
  const overflow = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
  assert.ok(overflow <= 0, `the page is ${overflow} pixels too wide`);
  await page.getByRole('button', { name: 'Start reply' }).waitFor();
});

test('nothing went wrong in the browser', () => {
  assert.deepEqual(problems, []);
});
