// What an agent waits for among 10,000 recordings, one of which is eight hours long: node recordings.mjs. In milliseconds,
// the worst of all tries. scripts/replay-times builds what it needs and runs it.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';

import { AgentConsole } from '../automation/agentConsole.mjs';
import { Service, temporaryDirectory } from '../automation/support.mjs';

const TRIES = 3;
const SEARCHES = ['', 'q=ada', 'q=jurgen', 'q=page:cards', 'q=visitor-5', 'q=code:14321', 'q=tag:case-77', 'show=agent', 'q=zzz', 'offset=9900'];
const HOURS_MS = 8 * 3_600_000;

const closing = [];
const run = { after: (step) => closing.push(step) };
const worst = new Map();

async function measure(what, step) {
  const since = performance.now();
  await step();
  worst.set(what, Math.max(worst.get(what) ?? 0, performance.now() - since));
}

/** Screens that differ, as an app's do. */
async function pictures(page, directory) {
  const files = [];
  for (let i = 0; i < 8; i += 1) {
    await page.setContent(`<body style="font:15px sans-serif">${Array.from({ length: 14 }, (_, row) => `<p>Payment ${row * i} · ${(row * 37 + i) * 11} EUR</p>`).join('')}`);
    const file = join(directory, `${i}.jpg`);
    writeFileSync(file, await page.screenshot({ type: 'jpeg', quality: 60 }));
    files.push(file);
  }
  return files;
}

/** Waits for the picture of a moment; two come a second. */
const shows = (page, moment) => page.waitForFunction((number) => (
  Number(document.querySelector('.replay-picture')?.dataset.number) === number), Math.floor(moment / 500) + 1, { polling: 'raf' });

try {
  const data = temporaryDirectory(run);
  const painter = await AgentConsole.open(run, 'about:blank', { width: 390, height: 844 });
  execFileSync(process.env.RECORDINGS, [data, ...await pictures(painter.page, temporaryDirectory(run))], { stdio: 'inherit' });
  let service;
  await measure('the service starts', async () => { service = await Service.start(run, '--data', data); });
  for (let i = 0; i < TRIES; i += 1) {
    for (const query of SEARCHES) {
      await measure(query ? `searched: ${query}` : 'listed', async () => {
        const { total } = await (await fetch(`${service.url}console/api/recordings?${query}`)).json();
        assert.equal(total > 0, query !== 'q=zzz');
      });
    }
    const { page } = await AgentConsole.open(run, `${service.url}console/recordings.html`, { width: 1366, height: 768 });
    await page.locator('#found').filter({ hasText: '10,001' }).waitFor();
    await page.evaluate(async () => { await document.fonts.ready; });
    await page.goto('about:blank');
    await measure('eight hours open, to the first picture', async () => {
      await page.goto(`${service.url}console/recording.html?id=10001`, { waitUntil: 'commit' });
      await page.waitForFunction(() => document.querySelector('.replay-picture')?.dataset.number === '1', null, { polling: 'raf' });
    });
    await shows(page, 0);
    for (let at = 1; at <= 12; at += 1) {
      const moment = Math.round((HOURS_MS * ((at * 7) % 13)) / 13);
      await measure('eight hours, a seek to its picture', async () => {
        await page.evaluate((seconds) => { location.hash = `t=${seconds}`; }, moment / 1000);
        await shows(page, moment);
      });
    }
    await page.close();
  }
  for (const [what, milliseconds] of worst) console.log(`${milliseconds.toFixed(0).padStart(6)} ms  ${what}`);
} finally {
  for (const step of closing) await step();
}
