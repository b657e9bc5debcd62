// How long an agent on a slow line waits for a visitor's first picture: node firstPicture.mjs [RUNS]. DEVSERVICE and BANK
// name the programs of the service and of the example app.

import { createServer, connect } from 'node:net';

import { App, MASKS, Service, openBrowser } from '../automation/support.mjs';

const runs = Number(process.argv[2] ?? 3);
const BYTES_A_SECOND = 20_000;
const ROUND_TRIP_MS = 250;
const SEGMENT_BYTES = 1448;
const LONGEST_MS = 60_000;

const closing = [];
const run = { after: (step) => closing.push(step) };

/** A line in front of a service, which all connections share. */
async function slowLine(service) {
  const freeAt = { up: 0, down: 0 };
  const carry = (from, to, direction) => from.on('data', (data) => {
    for (let i = 0; i < data.length; i += SEGMENT_BYTES) {
      const segment = data.subarray(i, i + SEGMENT_BYTES);
      const now = performance.now();
      freeAt[direction] = Math.max(now, freeAt[direction]) + (segment.length / BYTES_A_SECOND) * 1000;
      setTimeout(() => to.writable && to.write(segment), freeAt[direction] + ROUND_TRIP_MS / 2 - now);
    }
  });
  const server = createServer((near) => {
    // A connection is there after a round trip.
    near.pause();
    setTimeout(() => {
      const far = connect(Number(new URL(service.url).port), '127.0.0.1');
      carry(near, far, 'up');
      carry(far, near, 'down');
      for (const [one, other] of [[near, far], [far, near]]) one.on('error', () => other.destroy());
      near.on('close', () => far.destroy());
      near.resume();
    }, ROUND_TRIP_MS);
  });
  await new Promise((resolve) => { server.listen(0, '127.0.0.1', resolve); });
  closing.push(() => server.close());
  return `http://127.0.0.1:${server.address().port}/`;
}

async function secondsToPicture(page, url) {
  const before = performance.now();
  await page.goto(url, { waitUntil: 'commit' });
  await page.waitForFunction(() => document.getElementById('picture')?.width > 1, null, { polling: 20, timeout: LONGEST_MS });
  return (performance.now() - before) / 1000;
}

try {
  const service = await Service.start(run, ...MASKS);
  const app = App.start(run, service.host, ['--control'], 'double');
  await app.line(/View changed to: LoginPage$|Start monitor$/);
  await app.tap('demoButton');
  await app.line(/View changed to: AccountsPage$/);
  const browser = await openBrowser(run);
  const times = { first: [], again: [] };
  for (let i = 0; i < runs; i += 1) {
    const page = await (await browser.newContext()).newPage();
    const url = await slowLine(service);
    times.first.push(await secondsToPicture(page, url));
    times.again.push(await secondsToPicture(page, url));
    await page.context().close();
  }
  for (const [visit, seconds] of Object.entries(times)) {
    console.log(`${visit} visit: ${seconds.map((each) => each.toFixed(2)).join(', ')} s, worst ${Math.max(...seconds).toFixed(2)} s`);
  }
} finally {
  for (const step of closing.reverse()) await step();
}
process.exit();
