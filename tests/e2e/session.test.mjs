// A session as the agent sees it in the console, and as it goes over the wire.

import assert from 'node:assert/strict';
import { join } from 'node:path';
import { before, test } from 'node:test';

import { AgentConsole } from '../../automation/agentConsole.mjs';
import { App, MASKS, Service, eventually, outputDirectory, wholeFile } from '../../automation/support.mjs';

const file = wholeFile();
let service;
let agent;
let page;

before(async () => {
  service = await Service.start(file, ...MASKS);
  agent = await AgentConsole.open(file, service.url);
  page = agent.page;
});

const fact = (name) => page.locator(`.fact-${name} .fact-value`);

/** The number of colours in the shown picture and a sum that changes with it. */
function shownPicture() {
  return page.locator('#picture').evaluate((canvas) => {
    const copy = new OffscreenCanvas(canvas.width, canvas.height).getContext('2d', { willReadFrequently: true });
    copy.drawImage(canvas, 0, 0);
    const { data } = copy.getImageData(0, 0, canvas.width, canvas.height);
    const pixels = new Uint32Array(data.buffer);
    return { colours: new Set(pixels).size, sum: pixels.reduce((sum, pixel) => (sum * 31 + pixel) >>> 0, 0) };
  });
}

test('the agent follows a visitor live until the end', async (t) => {
  const screenshots = outputDirectory('app');
  const tour = App.start(t, service.host,
    ['--tour', '--exit-after', '30', ...(screenshots ? ['--screenshot-dir', screenshots] : [])]);
  const { shareId } = await service.visitor();
  assert.match(shareId, /^\d{5}$/);
  await page.getByRole('button', { name: new RegExp(shareId) }).waitFor();
  assert.equal(await page.locator('#share-code').textContent(), shareId);
  await page.locator('#state-pill').getByText('Live').waitFor();

  const first = await eventually('a picture with something on it', async () => {
    const shown = await shownPicture();
    return shown.colours > 50 && shown;
  });
  await eventually('another picture', async () => (await shownPicture()).sum !== first.sum);

  const mark = page.locator('.tap').first();
  await mark.waitFor({ state: 'attached' });
  const place = await mark.evaluate((tap) => [tap.style.left, tap.style.top].map(parseFloat));
  assert.ok(service.events('tap').some(({ x, y }) =>
    Math.abs((x / 390) * 100 - place[0]) < 0.5 && Math.abs((y / 844) * 100 - place[1]) < 0.5),
  `a tap was drawn at ${place} % where none was made`);

  await eventually('a young ping', async () => parseFloat(await fact('ping').textContent()) < 2);
  await eventually('a frame rate', async () => parseFloat(await fact('fps').textContent()) > 0);
  await agent.entry('AccountsPage').waitFor();
  await page.locator('#page').getByText('AccountsPage').waitFor();
  const screenshotTo = outputDirectory('console');
  if (screenshotTo) await page.screenshot({ path: join(screenshotTo, 'live.png') });
  await page.getByRole('button', { name: 'Taps' }).click();
  assert.ok(await agent.entry('Tap').count() > 0);
  assert.equal(await agent.entry('AccountsPage').count(), 0);
  await page.getByRole('button', { name: 'All' }).click();

  assert.equal(await tour.exitCode(90), 0);
  await page.getByText(/Session ended at/).waitFor();
  await page.locator('#state-pill').getByText('Ended').waitFor();
  if (screenshotTo) await page.screenshot({ path: join(screenshotTo, 'ended.png') });
  assert.deepEqual([...tour.problems(), ...agent.problems], []);
  assert.equal((await service.visitor()).counters.warnings, 0);
});

test('requests leave in order, under one session, at the pace agreed', () => {
  const requests = service.requests();
  const [init] = service.events('init');
  const record = JSON.parse(init.body);

  // A round that was due when the session ended may still send what was waiting.
  const names = {
    '/api/in/im/c': 'init', '/api/ix/m': 'stream', '/api/in/io/l': 'activity', '/api/in/co': 'channels',
  };
  const steps = requests.map(({ method, target }) => `${method} ${names[target.split('?')[0]]}`);
  const sequence = steps.filter((step) => !/activity|channels/.test(step)).join('\n');
  assert.match(sequence, /^POST init\nGET stream(\nPOST stream)+\nDELETE stream(\nPOST stream)?$/);
  assert.deepEqual([steps[0], steps.filter((step) => step === 'POST activity').length], ['POST activity', 3]);
  assert.deepEqual([...new Set(requests.map(({ session }) => session))], [record.sId]);
  const stream = `/api/ix/m?id=${record.viId}&sId=${record.sId}&tId=${record.tId}&vId=${record.vId}`
    + '&url=LoginPage&fsTy=l';
  for (const { method, target } of requests.filter((request) => request.target.startsWith('/api/ix/m'))) {
    if (method !== 'DELETE') assert.equal(target, stream);
    else assert.equal(new URLSearchParams(target.split('?')[1]).get('url'), '');
  }

  const events = service.events();
  const seconds = (events.at(-1).at - init.at) / 1000;
  const pings = events.filter(({ kind }) => kind === 'ping').length;
  // An event that is queued while a POST is under way is lost, so is a ping now and then.
  assert.ok(pings > seconds * 0.75 && pings <= seconds + 1, `${pings} pings in ${seconds} s`);
  const posts = service.postTimes();
  posts.forEach((time, i) => assert.ok(!(posts[i + 10] - time < 1000), 'more than ten POSTs in a second'));
});

test('a still page is sent once', async (t) => {
  // The masks cover the blinking cursor.
  const still = await Service.start(t, ...MASKS);
  const app = App.start(t, still.host, ['--exit-after', '8']);
  assert.equal(await app.exitCode(), 0);
  assert.ok(still.events('ping').length >= 5);
  assert.equal(still.events('screenshot').length, 1);
  assert.deepEqual(app.problems(), []);
});
