// A session as the agent sees it in the console, and as it goes over the wire.

import assert from 'node:assert/strict';
import { join } from 'node:path';
import { before, after, test } from 'node:test';

import { App, MASKS, Service, eventually, openBrowser, outputDirectory } from '../../automation/support.mjs';

// Between two POSTs at the ordinary pace lie 0.1 s; timers may be a little early.
const ORDINARY_PAUSE_MS = 90;

let endFile;
const file = { after: (step) => { endFile = step; } };
const browserProblems = [];
let service;
let page;

before(async () => {
  service = await Service.start(file, ...MASKS);
  page = await (await openBrowser(file)).newPage({ viewport: { width: 1280, height: 860 } });
  page.on('pageerror', (error) => browserProblems.push(String(error)));
  page.on('console', (line) => ['error', 'warning'].includes(line.type()) && browserProblems.push(line.text()));
  page.setDefaultTimeout(30_000);
  await page.goto(service.url);
});

after(() => endFile?.());

const entry = (text) => page.getByRole('list', { name: 'Timeline' }).getByRole('listitem').filter({ hasText: text });
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

async function chooseVisitor(shareId) {
  await page.getByRole('button', { name: new RegExp(shareId) }).click();
  await page.locator('#share-code').filter({ hasText: shareId }).waitFor();
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
  await entry('AccountsPage').waitFor();
  await page.locator('#page').getByText('AccountsPage').waitFor();
  const screenshotTo = outputDirectory('console');
  if (screenshotTo) await page.screenshot({ path: join(screenshotTo, 'live.png') });
  await page.getByRole('button', { name: 'Taps' }).click();
  assert.ok(await entry('Tap').count() > 0);
  assert.equal(await entry('AccountsPage').count(), 0);
  await page.getByRole('button', { name: 'All' }).click();

  assert.equal(await tour.exitCode(90), 0);
  await page.getByText(/Session ended at/).waitFor();
  await page.locator('#state-pill').getByText('Ended').waitFor();
  if (screenshotTo) await page.screenshot({ path: join(screenshotTo, 'ended.png') });
  assert.deepEqual(tour.problems(), []);
  assert.equal((await service.visitor()).counters.warnings, 0);
});

test('requests leave in order, under one session, at the pace agreed', () => {
  const requests = service.requests();
  const [init] = service.events('init');
  const record = JSON.parse(init.body);
  assert.deepEqual(Object.keys(record),
    ['shId', 'qdu', 'url', 'start', 'init', 'page', 'vId', 'sId', 'viId', 'tId', 'optin']);
  assert.deepEqual(record.page, { width: 390, height: 844, docHeight: 0, docWidth: 0 });
  assert.equal(record.url, 'LoginPage');

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

test('each picture is a JPEG of quality 40, a third of the window', () => {
  const screenshots = service.events('screenshot');
  assert.ok(screenshots.length > 20, `${screenshots.length} pictures`);
  for (const screenshot of screenshots) {
    assert.deepEqual([screenshot.file.endsWith('.jpg'), screenshot.width, screenshot.height], [true, 130, 282]);
    // The first luminance entry of the standard table, 16, at quality 40.
    const jpeg = service.picture(screenshot);
    const table = jpeg.indexOf(Buffer.from([0xff, 0xdb, 0x00]));
    assert.deepEqual([jpeg[table + 4], jpeg[table + 5]], [0, 20]);
  }
});

test('the agent asks a running app for faster polling', async (t) => {
  const app = App.start(t, service.host, ['--tour']);
  const { id, shareId } = await eventually('the second visitor live', async () =>
    (await service.visitors()).find((visitor) => visitor.state === 'live'));
  await chooseVisitor(shareId);
  const quickPosts = () => {
    const times = service.postTimes(id);
    return times.filter((time, i) => time - times[i - 1] < ORDINARY_PAUSE_MS).length;
  };
  await eventually('some events', () => service.events('screenshot', id).length > 10);
  assert.equal(quickPosts(), 0);
  await page.getByRole('button', { name: 'Faster polling' }).click();
  await app.line(/^\[DEBUG\] BidirectionalMessageHandler: Handle message: .*bidirectional: true/);
  await entry('Faster polling').waitFor();
  await eventually('POSTs less than 0.1 s apart', () => quickPosts() >= 3, 90);

  await page.getByRole('button', { name: 'Force start' }).click();
  await app.line(/^\[WARNING\] .*Panoptra is already started/);
  assert.deepEqual(app.problems(/Panoptra is already started/), []);
});

test('what is set in the console holds from the next start on', async (t) => {
  const set = async (change) => {
    await page.getByRole('button', { name: 'Start reply' }).click();
    await change();
    await page.getByRole('button', { name: 'Save' }).click();
    await page.getByRole('dialog').waitFor({ state: 'hidden' });
  };

  await set(() => page.getByLabel('Ignore the visitor').check());
  const ignored = App.start(t, service.host, ['--tour', '--exit-after', '5']);
  await ignored.line(/^\[DEBUG\] Panoptra: Ignoring$/);
  assert.equal(await ignored.exitCode(), 0);
  assert.deepEqual(ignored.problems(), []);
  const { visitor } = service.events('init').at(-1);
  assert.deepEqual(service.events(undefined, visitor).map(({ kind }) => kind), ['activity', 'init', 'activity']);

  await set(async () => {
    await page.getByLabel('Ignore the visitor').uncheck();
    await page.getByLabel('Masked view tags').fill('12a\n99999999999999999999\n-\n10');
    await page.getByLabel('Masked view classes').fill('No such class\n../PrivateLabel\nPrivateInput');
  });
  const app = App.start(t, service.host, ['--tour', '--exit-after', '8']);
  assert.equal(await app.exitCode(), 0);
  const warnings = [/^\[WARNING\] PrivacyUtils: Cannot convert tag to integer$/,
    /^\[WARNING\] PrivacyUtils: Cannot convert class name to class$/];
  for (const warning of warnings) assert.ok(app.out.some((line) => warning.test(line)), String(warning));
  assert.deepEqual(app.problems(...warnings), []);
  assert.ok(service.events('screenshot', service.events('init').at(-1).visitor).length > 3);
});

test('nothing went wrong in the browser', () => {
  assert.deepEqual(browserProblems, []);
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
