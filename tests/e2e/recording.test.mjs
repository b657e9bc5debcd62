// A session of the example app is recorded, outlives the service's sudden end, and is found, played and exported.

import assert from 'node:assert/strict';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { test } from 'node:test';

import { AgentConsole } from '../../automation/agentConsole.mjs';
import { App, MASKS, Service, eventually, outputDirectory, temporaryDirectory } from '../../automation/support.mjs';

const SIZES = [[1366, 768], [1024, 600], [390, 844]];

/** Pictures for human eyes. */
async function keep(page, name) {
  const directory = outputDirectory('recording');
  if (!directory) return;
  for (const [width, height] of SIZES) {
    await page.setViewportSize({ width, height });
    await page.waitForTimeout(300);
    await page.screenshot({ path: join(directory, `${name}-${width}.png`) });
  }
  await page.setViewportSize({ width: 1366, height: 768 });
}

const shownPicture = (page) => page.locator('.replay-picture').evaluate((canvas) => [canvas.dataset.number, canvas.toDataURL()]);

test('a session is recorded, survives the end of the service, is searched, played and exported', async (t) => {
  const data = temporaryDirectory(t);
  const first = await Service.start(t, '--data', data, ...MASKS);
  const agent = await AgentConsole.open(t, first.url, { width: 1366, height: 768 });
  const { page } = agent;
  const app = App.start(t, first.host, ['--tour'], 'phone');
  await agent.page.getByRole('button', { name: 'Recording', exact: true }).waitFor();
  await keep(page, 'live');
  await eventually('pages and pictures', async () => {
    const [{ counters }] = await first.visitors();
    return counters.frames >= 8 && counters.pages >= 4 && counters.taps >= 3;
  }, 90);
  const { shareId } = await first.visitor();
  await first.stop('SIGKILL');
  const killed = Date.now();
  await app.stop();
  const before = first.events('screenshot').filter(({ at }) => at < killed - 1000);

  const { url } = await Service.start(t, '--data', data);
  await page.goto(`${url}console/recordings.html`);
  await page.getByRole('status').filter({ hasText: '1 recording' }).waitFor();
  await keep(page, 'list');
  await page.getByLabel('Search').fill('page:transferpage nobody');
  await page.getByText('Nothing is found.').waitFor();
  await page.getByLabel('Search').fill(`code:${shareId} accounts`);
  await page.getByRole('link', { name: new RegExp(shareId) }).click();
  await page.getByRole('heading', { name: new RegExp(shareId) }).waitFor();

  const api = (path) => fetch(`${url}console/api/recordings/1${path}`);
  const { pictures } = await (await api('/contents')).json();
  assert.ok(pictures.length >= before.length, `${pictures.length} of ${before.length} pictures are there`);
  for (let number = 1; number <= before.length; number += 1) {
    const picture = Buffer.from(await (await api(`/pictures/${number}`)).arrayBuffer());
    assert.ok(picture.equals(first.picture(before[number - 1])), `picture ${number} is what came`);
  }
  t.diagnostic(`${pictures.length} pictures recorded, ${before.length} of them more than a second before the end`);

  await page.getByLabel('Speed').selectOption('8×');
  await page.keyboard.press('Home');
  await page.getByRole('button', { name: 'Play' }).click();
  await page.waitForFunction((last) => Number(document.querySelector('.replay-picture').dataset.number) === last, pictures.length);
  await page.getByRole('button', { name: 'Play' }).waitFor();
  await page.getByPlaceholder('Note at this moment').fill('Looked for the transfer');
  await page.getByRole('button', { name: 'Add note' }).click();
  await page.locator('.replay-entry').filter({ hasText: 'Looked for the transfer' }).waitFor();
  await page.keyboard.press('Escape');
  await page.locator('.scrubber-input').focus();
  await page.keyboard.press('p');
  await page.keyboard.press('p');
  await keep(page, 'player');

  await page.getByRole('button', { name: 'Export' }).click();
  const download = page.waitForEvent('download');
  await page.getByRole('button', { name: 'Save the file' }).click();
  const file = join(temporaryDirectory(t), 'export.html');
  await (await download).saveAs(file);
  await page.getByRole('dialog').waitFor({ state: 'hidden' });

  await page.keyboard.press('End');
  await page.waitForFunction((last) => Number(document.querySelector('.replay-picture').dataset.number) === last, pictures.length);
  const expected = await shownPicture(page);
  assert.deepEqual(agent.problems.filter((problem) => !/WebSocket|ERR_CONNECTION/.test(problem)), []);
  const requests = [];
  const offline = await page.context().browser().newPage({ offline: true, viewport: { width: 1366, height: 768 } });
  const problems = [];
  offline.on('pageerror', (error) => problems.push(String(error)));
  offline.on('console', (line) => line.type() === 'error' && problems.push(line.text()));
  offline.on('request', (request) => requests.push(request.url()));
  await offline.goto(pathToFileURL(file).href);
  await offline.getByRole('heading', { name: new RegExp(shareId) }).waitFor();
  await offline.getByText('Looked for the transfer').waitFor();
  await offline.keyboard.press('End');
  await offline.waitForFunction((last) => document.querySelector('.replay-picture').dataset.number === last, expected[0]);
  assert.deepEqual(await shownPicture(offline), expected);
  assert.deepEqual([problems, requests], [[], [pathToFileURL(file).href]]);
  await keep(offline, 'export');
});
