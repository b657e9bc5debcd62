// The agent console in a real browser, with a fake visitor on the wire.

import assert from 'node:assert/strict';
import { before, test } from 'node:test';

import { FakeVisitor, event } from './fakeVisitor.mjs';
import { AgentConsole } from '../../automation/agentConsole.mjs';
import { deviceSize } from '../../devservice/console/screenGeometry.js';
import { Service, eventually, wholeFile } from '../../automation/support.mjs';

const file = wholeFile();
let url;
let browser;
let agent;
let page;

before(async () => {
  ({ url } = await Service.start(file));
  agent = await AgentConsole.open(file, url);
  page = agent.page;
  browser = page.context().browser();
});

/** A JPEG of a screen in one colour, by default a phone's: a third of 1170 by 2532 pixels. */
async function picture(colour, viewport = { width: 390, height: 844 }) {
  const painter = await browser.newPage({ viewport });
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

const entry = (text) => agent.entry(text);

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
  await page.getByRole('button', { name: 'Details' }).click();
  await page.locator('.fact-screen').getByText('390 × 844 pt @3x').waitFor();
  await page.keyboard.press('Escape');

  await page.getByRole('button', { name: 'Taps' }).click();
  assert.equal(await page.getByRole('list', { name: 'Timeline' }).getByRole('listitem').count(), 1);
  await page.getByRole('button', { name: 'All' }).click();

  await page.getByRole('button', { name: 'Close', exact: true }).click();
  await page.getByRole('dialog', { name: 'Close the session?' }).getByRole('button', { name: 'Cancel' }).click();
  await page.getByRole('button', { name: 'Faster polling' }).click();
  await entry('Faster polling').waitFor();
  assert.deepEqual(await visitor.send(event.ping(4000)), [{ co: { b: true } }]);

  await visitor.stop();
  await page.getByText(/Session ended at .* by the visitor/).waitFor();
  await page.getByRole('button', { name: 'Faster polling' }).click({ force: true });
  await page.getByText('Faster polling: the session is over').waitFor();
});

test('the console tells the truth about the line', async () => {
  const { visitor } = await watched('47001');
  await page.locator('#picture-age').getByText(/^[12] s old, unchanged$/).waitFor();
  await page.getByRole('button', { name: 'Ask for consent' }).click();
  await page.getByRole('button', { name: 'Ask for consent', disabled: true }).waitFor();
  await visitor.report('cd');
  await page.locator('.notice').getByText(/^Visitor [0-9A-F]{4} declined$/).waitFor();
  assert.match(await page.locator('#consent').getAttribute('title'), /^declined; .* in \d+/);
  for (let second = 0; second < 3; second += 1) {
    await visitor.send(event.ping(second * 1000));
    await new Promise((resolve) => { setTimeout(resolve, 300); });
  }
  await page.locator('.line[data-level="3"]').waitFor();
  await page.locator('#picture-age').getByText(/No word from the app for \d/).waitFor();
  await page.locator('#state-pill').getByText('Silent').waitFor();

  await visitor.send(event.screenshot(4000, await picture('rgb(10, 10, 10)')));
  await page.locator('#state-pill').getByText('Live').waitFor();
  await visitor.leave();
  await page.locator('#veil').getByText(/^In the background since/).waitFor();
  await page.getByRole('button', { name: /11111|48213/ }).first().waitFor({ state: 'hidden' });
});

test('what happens elsewhere is told', async () => {
  await watched('47002');
  const other = new FakeVisitor(url, { shareId: '47003', page: 'HelpPage' });
  await other.start();
  const notice = page.locator('.notice').filter({ hasText: 'New visitor' });
  await notice.getByText('HelpPage').click();
  await page.locator('#share-code').getByText('47003').waitFor();
  await notice.waitFor({ state: 'detached' });
  await other.stop();
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
  await away.leave();
  await page.getByText(/In the background since/).waitFor();
  const back = Object.assign(new FakeVisitor(url, { shareId: '55555' }), { visitorId: away.visitorId });
  await back.start();
  await back.send(event.screenshot(0, await picture('rgb(240, 180, 20)')));
  await shown(240, 180, 20);
});

/** A visitor on view whose screen is 1170 by 2532 pixels, and what it gets when it fetches next. */
async function watched(shareId, on = page) {
  const visitor = new FakeVisitor(url, { shareId });
  await visitor.start();
  await visitor.send(event.screenshot(0, await picture('rgb(240, 240, 240)')));
  const row = on.locator('.visitor').filter({ hasText: shareId });
  await row.waitFor({ state: 'attached' });
  await on.locator('#session').waitFor();
  if (!(await row.isVisible())) await on.getByRole('button', { name: 'Visitors' }).click();
  await row.click();
  await on.locator('.surface:not([data-mode="off"])').waitFor();
  const next = async () => {
    for (;;) {
      const messages = await visitor.send(event.ping(1000));
      if (messages.length > 0) return messages;
    }
  };
  return { visitor, next };
}

/** A drawing's size and its pixels at places given as fractions. */
function drawn([{ d }], ...places) {
  return page.evaluate(async ([source, spots]) => {
    const image = await createImageBitmap(new Blob([Uint8Array.from(atob(source.split(',')[1]), (c) => c.charCodeAt(0))]));
    const context = new OffscreenCanvas(image.width, image.height).getContext('2d', { willReadFrequently: true });
    context.drawImage(image, 0, 0);
    const pixels = spots.map(([x, y]) => [...context.getImageData(x * image.width, y * image.height, 1, 1).data]);
    return { size: [image.width, image.height], pixels };
  }, [d.u, places]);
}

async function drag(on, from, to) {
  const box = await on.locator('#surface').boundingBox();
  const at = ([x, y]) => [box.x + x * box.width, box.y + y * box.height];
  await on.mouse.move(...at(from));
  await on.mouse.down();
  await on.mouse.move(...at(to), { steps: 6 });
  await on.mouse.up();
}

test('device pixels follow from the picture and the announced points', () => {
  const size = (pw, ph, w, h) => Object.values(deviceSize({ width: pw, height: ph }, { width: w, height: h }));
  // Exact, rounded down, turned, of another screen than announced, and not announced.
  const sizes = [size(390, 844, 390, 844), size(333, 600, 500, 900), size(844, 390, 390, 844), size(300, 200, 800, 800), size(10, 20, 0, 0)];
  assert.deepEqual(sizes, [[1170, 2532], [1000, 1800], [2532, 1170], [900, 600], [30, 60]]);
});

test('the agent taps in the app by mouse and by keyboard', async () => {
  const { next } = await watched('61001');
  const box = await page.locator('#surface').boundingBox();
  const [x, y] = [Math.round(box.x + box.width * 0.25), Math.round(box.y + box.height * 0.75)];
  await page.mouse.click(x, y);
  await page.locator('.tap-agent').waitFor({ state: 'attached' });
  const tap = { x: Math.floor(((x - box.x) / box.width) * 1170), y: Math.floor(((y - box.y) / box.height) * 2532) };
  assert.deepEqual(await next(), [tap]);
  await entry(`Tap at ${tap.x}, ${tap.y} px`).waitFor();

  await page.getByRole('application', { name: 'Touch surface' }).focus();
  await page.keyboard.press('Enter');
  for (const key of ['ArrowRight', 'ArrowRight', 'Shift+ArrowDown']) await page.keyboard.press(key);
  await page.getByText(/Crosshair at 602, \d+ px/).waitFor();
  await page.keyboard.press('Enter');
  const [{ x: across, y: down }] = await next();
  assert.equal(across, 602);
  assert.ok(Math.abs(down - (1266 + 0.08 * 1170)) <= 3, `${down}`);
  await drag(page, [0.2, 0.2], [0.6, 0.6]);
  await page.getByRole('button', { name: 'Ask for consent' }).click();
  assert.deepEqual(await next(), [{ co: { opt: true } }], 'a drag is no tap');
});

test('the agent draws over the app', async () => {
  const { next } = await watched('61002');
  await page.getByRole('radio', { name: 'Draw' }).check();
  await page.getByRole('radio', { name: 'Blue' }).check();
  await drag(page, [0.2, 0.5], [0.8, 0.5]);
  const blue = await drawn(await next(), [0.5, 0.5], [0.1, 0.5], [0.5, 0.6]);
  assert.deepEqual(blue, { size: [1170, 2532], pixels: [[29, 111, 242, 255], [0, 0, 0, 0], [0, 0, 0, 0]] });
  await entry(/Drawing, \d+ bytes/).waitFor();

  await page.getByLabel('Send on release').uncheck();
  await page.getByRole('radio', { name: 'Red' }).check();
  await drag(page, [0.2, 0.2], [0.8, 0.2]);
  await drag(page, [0.2, 0.7], [0.8, 0.7]);
  await page.getByRole('button', { name: 'Undo' }).click();
  await drag(page, [0.2, 0.9], [0.8, 0.9]);
  await page.getByRole('button', { name: 'Send drawing' }).click();
  const red = await drawn(await next(), [0.5, 0.2], [0.5, 0.7], [0.5, 0.9], [0.5, 0.5]);
  assert.deepEqual(red.pixels.map((pixel) => pixel[3]), [255, 0, 255, 0]);
  assert.equal(await page.getByRole('button', { name: 'Send drawing' }).isDisabled(), true);
  await page.getByLabel('Send on release').check();
  await page.getByRole('radio', { name: 'Tap' }).check();
});

/** Whether anything of the drawing over the picture is painted. */
const sketched = () => page.locator('#sketch').evaluate((canvas) => {
  const copy = new OffscreenCanvas(canvas.width, canvas.height).getContext('2d', { willReadFrequently: true });
  copy.drawImage(canvas, 0, 0);
  return copy.getImageData(0, 0, canvas.width, canvas.height).data.some((value) => value > 0);
});

test('the agent points, writes and puts arrows and boxes', async () => {
  const { next } = await watched('61003');
  const choose = (name) => page.getByRole('radio', { name }).check();
  await choose('Box');
  await drag(page, [0.2, 0.2], [0.8, 0.4]);
  const box = await drawn(await next(), [0.5, 0.2], [0.2, 0.3], [0.5, 0.3]);
  assert.deepEqual(box.pixels.map((pixel) => pixel[3]), [255, 255, 0]);
  await choose('Arrow');
  await drag(page, [0.2, 0.5], [0.8, 0.5]);
  const arrow = await drawn(await next(), [0.5, 0.5], [0.76, 0.49], [0.3, 0.49]);
  assert.deepEqual(arrow.pixels.map((pixel) => pixel[3]), [255, 255, 0]);
  await choose('Text');
  const area = await page.locator('#surface').boundingBox();
  await page.mouse.click(area.x + area.width * 0.2, area.y + area.height * 0.5);
  await page.getByLabel('Text for the visitor\'s screen').fill('MMMM');
  await page.keyboard.press('Enter');
  const text = await drawn(await next(), ...Array.from({ length: 40 }, (_, i) => [0.2 + i * 0.005, 0.5]));
  assert.ok(text.pixels.filter((pixel) => pixel[3] > 0).length > 15);

  await choose('Pointer');
  await page.mouse.move(area.x + area.width * 0.5, area.y + area.height * 0.5);
  const dot = await drawn(await next(), [0.5, 0.5], [0.5, 0.6]);
  assert.deepEqual([dot.size, dot.pixels.map((pixel) => pixel[3])], [[390, 844], [255, 0]]);
  await page.mouse.move(area.x + area.width * 0.5, area.y + area.height * 0.6);
  assert.equal((await drawn(await next(), [0.5, 0.6])).pixels[0][3], 255);
  assert.equal(await entry(/^Agent [0-9A-F]{4} Drawing/).count(), 4, 'the pointer is noted once');
  await choose('Tap');
});

test('a drawing is seen until its picture is back, and stays in the app while it is kept', async () => {
  const { visitor, next } = await watched('61004');
  await page.getByRole('radio', { name: 'Draw' }).check();
  await drag(page, [0.2, 0.5], [0.8, 0.5]);
  await next();
  assert.ok(await sketched(), 'it does not vanish on release');
  await visitor.send(event.screenshot(2000, await picture('rgb(1, 2, 3)')));
  await shown(1, 2, 3);
  await eventually('the picture in place of the drawing', async () => !await sketched());

  await page.getByLabel('Keep').check();
  await drag(page, [0.2, 0.5], [0.8, 0.5]);
  const [first, renewed] = [await next(), await next()];
  assert.deepEqual(first, renewed);
  await page.getByRole('button', { name: 'Clear' }).click();
  assert.ok(!await sketched());
  await page.getByLabel('Keep').uncheck();
  await page.getByRole('radio', { name: 'Tap' }).check();
});

test('a visitor is joined by its share code', async () => {
  const code = page.getByLabel('Join by share code');
  const join = page.getByRole('button', { name: 'Join' });
  await code.fill('9999x9');
  assert.equal(await code.inputValue(), '99999');
  await join.click();
  await page.getByRole('alert').getByText('No visitor has the share code 99999.').waitFor();
  await code.fill('11 111');
  await code.press('Enter');
  await page.locator('.session-head').getByText('11111').waitFor();
  assert.equal(await page.locator('#join-error').isHidden(), true);
});

test('a present visitor is invited and its session opens', async () => {
  const visitor = Object.assign(new FakeVisitor(url, { shareId: '62001', page: 'HomePage' }), { customerId: 'ada' });
  assert.deepEqual(await visitor.poll(), []);
  await page.getByText(/HomePage · \d+:/).waitFor();
  await page.getByRole('button', { name: 'Invite: visitor ada' }).click();
  await page.getByText('Waits for the next poll').waitFor();
  assert.deepEqual(await visitor.poll(), [{ c: 'SCB', p: '{}' }]);
  await page.getByText('Invitation delivered').waitFor();
  assert.deepEqual(await visitor.poll(), []);
  await visitor.start();
  await page.locator('.session-head').getByText('62001').waitFor();
  await entry('Invited to co-browse').waitFor();
  await page.getByRole('heading', { name: /Present, no session/ }).waitFor({ state: 'hidden' });
});

/** The page for tests. */
async function testingPage() {
  const tester = await browser.newPage();
  tester.setDefaultTimeout(30_000);
  await tester.goto(`${url}console/testing.html`);
  return tester;
}

test('what the service replies can be set', async () => {
  assert.equal(await page.getByRole('button', { name: 'Start reply' }).count(), 0, 'agents do not see it');
  const tester = await testingPage();
  await tester.getByRole('button', { name: 'Start reply' }).click();
  await tester.getByLabel('Ignore the visitor').check();
  await tester.getByLabel('Masked view tags').fill('12\n13');
  await tester.getByLabel('Chat available').selectOption('Yes');
  await tester.getByRole('button', { name: 'Save' }).click();
  await tester.getByRole('dialog').waitFor({ state: 'hidden' });
  const reply = await new FakeVisitor(url, { shareId: '33333' }).start();
  assert.deepEqual(reply.ios.blacklist, ['12', '13']);
  assert.equal(reply.x, true);
  assert.equal(reply.cA, true);
  assert.equal(reply.st, 'u');
  await tester.close();
});

test('faults are set, counted down and cleared', async () => {
  const health = async () => (await fetch(`${url}api/ic/h`)).status;
  const tester = await testingPage();
  const faults = tester.getByRole('button', { name: /^Faults/ });
  await faults.focus();
  await tester.keyboard.press('Enter');
  const dialog = tester.getByRole('dialog', { name: 'Faults' });
  await dialog.getByLabel('Health check: fault').selectOption('Status code');
  await dialog.getByLabel('Health check: value').fill('599');
  await dialog.getByLabel('Health check: only the next').fill('1');
  await dialog.getByLabel('All others: fault').selectOption('Very large reply');
  await dialog.getByRole('button', { name: 'Apply' }).click();
  await dialog.waitFor({ state: 'hidden' });
  await tester.getByRole('button', { name: 'Faults, 2 active' }).waitFor();
  assert.equal(await health(), 599);
  await tester.getByRole('button', { name: 'Faults, 1 active' }).waitFor();
  await faults.click();
  assert.equal(await dialog.getByLabel('All others: value').inputValue(), '17');
  await dialog.getByRole('button', { name: 'Clear all' }).click();
  await tester.getByRole('button', { name: 'Faults', exact: true }).waitFor();
  assert.equal(await health(), 200);
  await tester.close();
});

/** The boxes of what the agent works with. */
const boxes = (on) => on.evaluate(() => Object.fromEntries(['surface', 'stage', 'tools', 'zoom', 'session-head', 'pane'].map((id) => {
  const { x, y, width, height } = document.getElementById(id).getBoundingClientRect();
  return [id, { x, y, width, height }];
})));

const overlap = (a, b) => a.width > 0 && b.width > 0 && a.x < b.x + b.width - 1 && b.x < a.x + a.width - 1
  && a.y < b.y + b.height - 1 && b.y < a.y + a.height - 1;

test('the screen has the room at every size', async () => {
  const { visitor } = await watched('64001');
  await page.getByRole('radio', { name: 'Draw' }).check();
  for (const [width, height] of [[1024, 600], [1024, 700], [1366, 768], [1440, 900], [1920, 1080], [2560, 1080]]) {
    await page.setViewportSize({ width, height });
    const at = await boxes(page);
    assert.ok(at.surface.height >= 0.7 * height, `${width}x${height}: the screen is ${at.surface.height} pixels high`);
    for (const other of ['tools', 'zoom', 'session-head', 'pane']) {
      assert.ok(!overlap(at.stage, at[other]), `${width}x${height}: ${other} covers the screen`);
    }
    const clipped = await page.evaluate(() => [...document.querySelectorAll('#session button')].filter((button) => {
      const box = button.getBoundingClientRect();
      return box.width > 0 && (box.right > innerWidth || button.scrollWidth > button.clientWidth + 1);
    }).map((button) => button.textContent));
    assert.deepEqual(clipped, [], `${width}x${height}`);
    assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${width}x${height}`);
  }
  await page.getByRole('radio', { name: 'Tap' }).check();

  await page.setViewportSize({ width: 1024, height: 600 });
  const width = async () => (await boxes(page)).surface.width;
  await page.getByRole('button', { name: '100 %' }).click();
  assert.equal(Math.round(await width()), 390);
  await page.getByRole('button', { name: '200 %' }).click();
  assert.equal(Math.round(await width()), 780);
  await page.locator('#stage').focus();
  await page.keyboard.press('End');
  await page.waitForFunction(() => document.getElementById('stage').scrollTop > 900);
  await page.getByRole('button', { name: 'Fit' }).click();

  await visitor.send(event.screenshot(2000, await picture('rgb(9, 9, 99)', { width: 640, height: 270 })));
  await shown(9, 9, 99);
  const beside = await width();
  await page.getByRole('button', { name: 'Side pane' }).click();
  assert.ok(await width() > beside + 250, 'the pane leaves its room to a wide screen');
  await page.getByRole('button', { name: 'Side pane' }).click();
  await page.getByRole('button', { name: 'Full screen' }).click();
  await page.waitForFunction(() => document.fullscreenElement?.id === 'view');
  await page.getByRole('button', { name: 'Full screen' }).click();
  await page.waitForFunction(() => document.fullscreenElement === null);
  await page.setViewportSize({ width: 1280, height: 900 });
});

test('it fits a phone and takes touches', async () => {
  const phone = await browser.newPage({ viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true });
  await phone.goto(url);
  const { next } = await watched('63001', phone);
  const surface = phone.locator('#surface');
  await surface.scrollIntoViewIfNeeded();
  await surface.tap();
  const [{ x }] = await next();
  assert.ok(Math.abs(x - 585) <= 4, `${x}`);

  await phone.getByRole('radio', { name: 'Draw' }).tap();
  for (const width of [768, 390]) {
    await phone.setViewportSize({ width, height: 844 });
    const overflow = await phone.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
    assert.ok(overflow <= 0 && await phone.evaluate(() => innerWidth) <= width, `at ${width} the page is ${overflow} pixels too wide`);
  }
  const box = await surface.boundingBox();
  const devtools = await phone.context().newCDPSession(phone);
  const touch = (type, ...places) => devtools.send('Input.dispatchTouchEvent', {
    type, touchPoints: places.map((top) => ({ x: box.x + box.width / 2, y: box.y + box.height * top })),
  });
  await touch('touchStart', 0.3);
  for (const top of [0.4, 0.5, 0.6]) await touch('touchMove', top);
  await touch('touchEnd');
  const { pixels } = await drawn(await next(), [0.5, 0.45], [0.5, 0.7]);
  assert.deepEqual(pixels.map((pixel) => pixel[3]), [255, 0]);
  await phone.close();
});

test('nothing went wrong in the browser', () => {
  assert.deepEqual(agent.problems, []);
});
