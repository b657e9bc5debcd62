// The list of recordings and their player in a real browser, with sessions of a fake visitor.

import assert from 'node:assert/strict';
import { chmodSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { before, test } from 'node:test';

import { FakeVisitor, event } from './fakeVisitor.mjs';
import { ReplayClock } from '../../devservice/console/replayClock.js';
import { AgentConsole } from '../../automation/agentConsole.mjs';
import { Service, eventually, temporaryDirectory, wholeFile } from '../../automation/support.mjs';

const AXE = readFileSync(new URL('../../node_modules/axe-core/axe.min.js', import.meta.url), 'utf8');
const SIZES = [[1366, 768], [1024, 600], [390, 844]];
// What would run if any of it became markup, in the page or in the exported file.
const HOSTILE = '</script><script>document.title="hacked"</script><img src=x onerror=document.title="hacked"><!--<script>';

const file = wholeFile();
let url;
let agent;
let page;

before(async () => {
  ({ url } = await Service.start(file, '--data', temporaryDirectory(file)));
  agent = await AgentConsole.open(file, url, { width: 1366, height: 768 });
  page = agent.page;
});

async function picture(colour) {
  const painter = await page.context().browser().newPage({ viewport: { width: 390, height: 844 } });
  await painter.setContent(`<body style="margin:0;background:${colour}">`);
  const jpeg = await painter.screenshot({ type: 'jpeg', quality: 40 });
  await painter.close();
  return jpeg;
}

/** Waits until the middle of the shown picture has this colour. */
const shown = (on, ...colour) => on.waitForFunction((expected) => {
  const canvas = document.querySelector('.replay-picture');
  if (!canvas) return false;
  const probe = new OffscreenCanvas(1, 1).getContext('2d');
  probe.drawImage(canvas, -canvas.width / 2, -canvas.height / 2);
  const pixel = probe.getImageData(0, 0, 1, 1).data;
  return expected.every((value, i) => Math.abs(value - pixel[i]) < 12);
}, colour);

const found = (text) => page.locator('#found').filter({ hasText: new RegExp(`^${text}$`) }).waitFor();
const row = (text) => page.locator('.replay-entry').filter({ hasText: text });
const time = (text) => page.locator('.replay-time').filter({ hasText: text }).waitFor();
const recordings = async () => (await (await fetch(`${url}console/api/recordings`)).json()).recordings;

test('a session is recorded while the console says so, and not when it is switched off', async () => {
  const visitor = new FakeVisitor(url, { shareId: '70001' });
  await visitor.start();
  await visitor.send(event.screenshot(0, await picture('rgb(200, 40, 40)')));
  await visitor.send(event.page(1000, 'AccountsPage'), event.tag(1000, HOSTILE), event.tap(1000, 585, 633),
    event.userTag(1000, { firstname: HOSTILE, lastname: 'Keller', email: 'a@example.org' }));
  await page.getByRole('button', { name: 'Recording', exact: true }).click();
  const off = page.getByRole('button', { name: 'Not recorded' });
  await off.waitFor();
  await visitor.send(event.screenshot(2000, await picture('rgb(20, 200, 20)')));
  await off.click();
  await page.getByRole('button', { name: 'Recording', exact: true }).waitFor();
  await visitor.send(event.screenshot(3000, await picture('rgb(30, 60, 200)')));
  await visitor.stop();
  await eventually('the recording', async () => (await recordings())[0]?.pictures === 2);
});

test('recordings are searched and filtered, and a reload shows the same', async () => {
  await new FakeVisitor(url, { shareId: '70002', page: 'OtherPage' }).start();
  await page.getByRole('link', { name: 'Recordings' }).click();
  await found('2 recordings');
  await page.getByText(/Kept for 30 days and up to 5.0 GB/).waitFor();
  for (const [text, count] of [['keller 70001', '1 recording'], ['page:other', '1 recording'], ['zzz', '0 recordings'], ['7000', '2 recordings']]) {
    await page.getByLabel('Search').fill(text);
    await found(count);
  }
  await page.getByLabel('Show').selectOption('Live now');
  await found('1 recording');
  await page.reload();
  await found('1 recording');
  await page.getByLabel('Show').selectOption('All');
  await page.getByLabel('From').fill('2001-01-01');
  await page.getByLabel('To').fill('2001-01-02');
  await found('0 recordings');
  await page.getByLabel('To').fill('');
  await page.getByRole('link', { name: /70001/ }).click();
});

test('the player is worked by keyboard, and agents write on the recording', async () => {
  await shown(page, 200, 40, 40);
  await page.locator('.scrubber-input').focus();
  await page.keyboard.press('End');
  await shown(page, 30, 60, 200);
  await page.keyboard.press(',');
  await shown(page, 200, 40, 40);
  await row('Tap').getByRole('button').click();
  const mark = await page.locator('.replay-tap').evaluate((tap) => [tap.style.left, tap.style.top]);
  assert.deepEqual(mark, ['50%', '25%']);
  assert.equal(await row('<script>').first().isVisible(), true);
  await page.locator('.scrubber-input').focus();
  await page.keyboard.press('Home');
  await time(/^0:00 \//);
  for (const key of ['+', '+', '+', ' ']) await page.keyboard.press(key);
  await page.getByRole('button', { name: 'Pause' }).waitFor();
  assert.equal(await page.getByLabel('Speed').inputValue(), '8');
  await page.getByRole('button', { name: 'Play' }).waitFor();
  await shown(page, 30, 60, 200);

  await page.getByPlaceholder('Note at this moment').fill(HOSTILE);
  await page.evaluate(() => localStorage.setItem('merovanta.name', 'Grace'));
  await page.getByRole('button', { name: 'Add note' }).click();
  await row('Note by Grace').waitFor();
  await page.getByLabel('Tag', { exact: true }).fill('follow up');
  await page.keyboard.press('Enter');
  await page.getByRole('button', { name: 'Remove the tag follow up' }).waitFor();
  assert.deepEqual(await recordings().then(([, first]) => [first.labels, first.notes]), [['follow up'], 1]);
  assert.equal(await page.title(), `70001 · ${HOSTILE} Keller · Recording`);
});

test('a link opens a moment', async () => {
  await page.locator('.scrubber-input').focus();
  await page.keyboard.press('End');
  await page.getByRole('button', { name: 'Link' }).click();
  assert.match(page.url(), /recording\.html\?id=1#t=\d/);
  const other = await page.context().browser().newPage();
  await other.goto(page.url());
  await shown(other, 30, 60, 200);
  await other.close();
});

test('idle stretches are found and passed over, and eight hours are no different', () => {
  const clock = new ReplayClock([0, 500, 20_000], [20_500], 28_800_000);
  clock.playing = true;
  const positions = [900, 800, 100, 500].map((span) => {
    clock.advance(span);
    return [clock.position, clock.picture];
  });
  clock.changeSpeed(9);
  clock.skipsIdle = false;
  clock.advance(100);
  const result = [...positions, clock.position, clock.idle.length, clock.speed];
  assert.deepEqual(result, [[900, 2], [19_500, 2], [19_600, 2], [20_100, 3], 20_900, 2, 8]);
});

test('an exported stretch plays offline, and nothing that a visitor wrote runs in it', async (t) => {
  await page.getByRole('button', { name: 'Export' }).click();
  await page.getByLabel('From').fill('9:99:99');
  await page.getByRole('button', { name: 'Save the file' }).click();
  await page.getByRole('alert').getByText('Give two moments').waitFor();
  await page.getByLabel('From').fill('0:00');
  const saving = page.waitForEvent('download');
  await page.getByRole('button', { name: 'Save the file' }).click();
  const exported = join(temporaryDirectory(t), 'export.html');
  await (await saving).saveAs(exported);
  const offline = await page.context().browser().newPage({ offline: true });
  offline.on('pageerror', (error) => agent.problems.push(String(error)));
  offline.on('console', (line) => line.type() === 'error' && agent.problems.push(line.text()));
  await offline.goto(pathToFileURL(exported).href);
  await shown(offline, 200, 40, 40);
  await offline.keyboard.press('End');
  await shown(offline, 30, 60, 200);
  assert.equal(await offline.title(), `70001 · ${HOSTILE} Keller`);
  const injected = readFileSync(exported, 'utf8').replace('<main id="replay">', '<script>document.title="hacked"</script><main id="replay">');
  writeFileSync(exported, injected);
  await offline.reload();
  await shown(offline, 200, 40, 40);
  assert.notEqual(await offline.title(), 'hacked', 'the policy of the file stops what got in all the same');
  assert.deepEqual(agent.problems.splice(0).filter((problem) => !/Content Security Policy/.test(problem)), []);
  await offline.close();
});

test('list and player fit every size, and bar nobody', async () => {
  const player = page.url();
  for (const address of [`${url}console/recordings.html`, player]) {
    await page.goto(address);
    await page.locator('.recording-link, .replay-entry').first().waitFor();
    await page.evaluate(AXE);
    for (const [width, height] of SIZES) {
      await page.setViewportSize({ width, height });
      const { violations } = await page.evaluate(() => window.axe.run());
      assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html).join(' ')}`), [], `${address} at ${width}`);
      const beyond = await page.evaluate(() => [...document.querySelectorAll('body *')].filter((each) => {
        const box = each.getBoundingClientRect();
        return box.width > 0 && box.right > innerWidth + 1 && getComputedStyle(each).position !== 'absolute';
      }).map((each) => each.className));
      assert.deepEqual(beyond, [], `${address} at ${width}`);
    }
    await page.setViewportSize({ width: 1366, height: 768 });
  }
});

test('a recording is deleted for good', async () => {
  await page.getByRole('button', { name: 'Delete', exact: true }).click();
  await page.getByRole('button', { name: 'Delete recording' }).click();
  await found('1 recording');
  assert.equal((await fetch(`${url}console/api/recordings/1/pictures/1`)).status, 404);
  assert.deepEqual(agent.problems, []);
});

test('a full disk is told, and the live work goes on', async (t) => {
  const limited = join(temporaryDirectory(t), 'limited');
  writeFileSync(limited, `#!/bin/bash\ntrap '' XFSZ\nulimit -f 300\nexec ${process.env.DEVSERVICE} "$@"\n`);
  chmodSync(limited, 0o755);
  const program = process.env.DEVSERVICE;
  process.env.DEVSERVICE = limited;
  const service = await Service.start(t, '--data', temporaryDirectory(t));
  process.env.DEVSERVICE = program;
  const visitor = new FakeVisitor(service.url, { shareId: '70009' });
  await visitor.start();
  const small = await picture('rgb(9, 9, 9)');
  // A comment makes a picture as large as one pleases.
  const comment = Buffer.alloc(60_000);
  comment.writeUInt16BE(0xfffe, 0);
  comment.writeUInt16BE(59_998, 2);
  const large = Buffer.concat([small.subarray(0, 2), comment, small.subarray(2)]);
  for (let i = 0; i < 8; i += 1) await visitor.send(event.screenshot(i * 1000, large));
  await eventually('a clear line', () => service.err.some((line) => /recording stops: .*File too large/.test(line)));
  await eventually('all pictures live', async () => (await service.visitors())[0].counters.frames === 8);
  const other = await page.context().browser().newPage();
  await other.goto(service.url);
  await other.getByRole('button', { name: 'Not recording' }).waitFor();
  await other.goto(`${service.url}console/recordings.html`);
  await other.getByRole('alert').getByText(/Nothing is recorded at present: .*File too large/).waitFor();
  await other.close();
});
