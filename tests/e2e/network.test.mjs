// What the visitor does reaches the agent over any network, each thing of it, and soon after the network is back.
// E2E_STEPS says how many things happen in each network (15), E2E_OUTAGE for how many seconds there is none (8).

import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import { readFileSync } from 'node:fs';
import { describe, test } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';

import { Network } from '../../automation/network.mjs';
import { App, MASKS, Service, eventually } from '../../automation/support.mjs';

const STEPS = Number(process.env.E2E_STEPS ?? 15);
const OUTAGE_SECONDS = Number(process.env.E2E_OUTAGE ?? 8);
const LONGEST_RUN_SECONDS = 60 + STEPS * 10 + OUTAGE_SECONDS * 4;
const WITHIN_SECONDS = 15;
const BACK_WITHIN_MS = 3000;
// Of an app that has shown the same two pages for a while.
const MOST_GROWTH_MIB = 12;

const TABS = { AccountsPage: 'tabAccounts', CardsPage: 'tabCards' };

class Visit {
  things = { pictures: 0, pages: 0, taps: 0, tags: 0 };
  looks = {};

  /** The session is the visitor's call for help: the widget is there. */
  static async begin(t, conditions, ...options) {
    const visit = new Visit();
    visit.service = await Service.start(t, ...MASKS);
    visit.services = [visit.service];
    visit.network = await Network.start(t, visit.service.host);
    visit.app = App.open(t, visit.network.host,
      ['--control', '--exit-after', String(LONGEST_RUN_SECONDS), ...options], 'phone');
    for (const button of ['demoButton', 'tabProfile', 'getHelp']) await visit.app.tap(button);
    visit.code = (await visit.service.visitor()).shareId;
    await visit.tells(`Screen shared · ${visit.code}`, visit.code);
    // The page on which a session begins is no change; it is looked at once a second.
    await pause(1500);
    await visit.tap(TABS.CardsPage);
    await visit.pageIs('CardsPage');
    // How the resting pages look, as long as the network is a good one.
    for (const look of ['on', 'off']) {
      await visit.tap('freezeToggle');
      visit.looks[look] = await visit.restingPicture();
    }
    Object.assign(visit.network, conditions);
    return visit;
  }

  /** All that arrived, whichever service took it; each event knows which. */
  events(kind) {
    return this.services.flatMap((service) => service.events(kind).map((event) => ({ ...event, service })));
  }

  async stopService() {
    await this.service.stop();
  }

  async startService(t) {
    this.service = await Service.start(t, '--port', new URL(this.service.url).port, ...MASKS);
    this.services.push(this.service);
  }

  async tap(name) {
    await this.app.tap(name);
    this.things.taps += 1;
  }

  lastLook() {
    const last = this.events('screenshot').at(-1);
    return last && createHash('sha256').update(last.service.picture(last)).digest('hex');
  }

  async restingPicture() {
    let before;
    return eventually('a picture at rest', async () => {
      await pause(700);
      const now = this.lastLook();
      const rests = now !== undefined && now === before;
      before = now;
      return rests && now;
    });
  }

  pageIs(name) {
    return eventually(`the page ${name}`, () => this.events('page').at(-1)?.page === name, WITHIN_SECONDS);
  }

  pictureIs(look) {
    return eventually(`the picture of ${look}`, () => this.lastLook() === this.looks[look], WITHIN_SECONDS);
  }

  /** The toggle, and a tag: a change of the screen after which nothing else happens. */
  async toggle() {
    this.things.pictures += 1;
    this.isOn = !this.isOn;
    await this.tap('freezeToggle');
    this.tag();
    return this.isOn ? 'on' : 'off';
  }

  tag() {
    this.app.say(`tag thing ${this.things.tags}`);
    this.things.tags += 1;
  }

  async turnPages() {
    for (const [page, tab] of Object.entries(TABS)) {
      this.things.pages += 1;
      await this.tap(tab);
      await this.pageIs(page);
    }
  }

  /** Each thing is waited for before the next. Gives back the number of those that never came. */
  async goOn(steps) {
    let lost = 0;
    const count = async (arrival) => arrival.catch((error) => {
      if (!/^within/.test(error.message)) throw error;
      this.app.assertRunning();
      lost += 1;
    });
    for (let step = 0; step < steps; step += 1) {
      await pause(Math.random() * 300);
      if (step % 5 === 4) await count(this.turnPages());
      else await count(this.pictureIs(await this.toggle()));
    }
    return lost;
  }

  /** What came of the taps and tags, which nothing replaces. */
  async missing() {
    const tags = () => this.events('tag').map(({ tag }) => tag);
    const lacking = () => [...Array(this.things.tags).keys()].filter((number) => !tags().includes(`thing ${number}`));
    const taps = () => Math.max(0, this.things.taps - this.events('tap').length);
    await eventually('all taps and tags', () => lacking().length + taps() === 0, WITHIN_SECONDS).catch(() => {});
    const numbers = tags().map((tag) => Number(tag.split(' ')[1]));
    assert.deepEqual([...new Set(numbers)], [...new Set(numbers)].sort((a, b) => a - b), 'in order');
    return { taps: taps(), tags: lacking().length, repeated: numbers.length - new Set(numbers).size };
  }

  memory() {
    return Number(readFileSync(`/proc/${this.app.child.pid}/statm`, 'utf8').split(' ')[1]) * 4096 / 2 ** 20;
  }

  /** Until what happens now has come through, in milliseconds. */
  async untilLive() {
    const begun = performance.now();
    const last = `thing ${this.things.tags}`;
    this.tag();
    await eventually('a sign of life', () => this.events('tag').some(({ tag }) => tag === last), 90);
    const milliseconds = performance.now() - begun;
    await this.pictureIs(this.isOn ? 'on' : 'off');
    return Math.round(milliseconds);
  }

  /** What the app says of the library's state, and the widget. */
  async tells(app, widget) {
    for (const [name, text] of [['sharingPill', app], ['shareId', widget]])
      await eventually(`${name} with "${text}"`, async () => await this.app.text(name) === text, WITHIN_SECONDS);
  }
}

const NETWORKS = {
  'a round trip of 20 ms': { roundTrip: 20 },
  'a round trip of 100 ms': { roundTrip: 100 },
  'a round trip of 300 ms': { roundTrip: 300 },
  'a round trip of 100 ms and a loss of 2 %': { roundTrip: 100, loss: 0.02 },
};

/** While the outage lasts, the visitor goes on, and knows; afterwards all of it is there. */
async function endure(t, visit, { begin, end, seconds = OUTAGE_SECONDS }) {
  const before = visit.memory();
  await visit.goOn(2);
  await begin?.();
  const over = performance.now() + seconds * 1000;
  if (seconds >= OUTAGE_SECONDS) await visit.tells('Reconnecting…', 'Connecting…');
  while (performance.now() < over) {
    await visit.toggle();
    await pause(500);
  }
  await end();
  const live = await visit.untilLive();
  await visit.tells(`Screen shared · ${visit.code}`, visit.code);
  const lost = await visit.goOn(3);
  const missing = await visit.missing();
  t.diagnostic(`live again after ${live} ms; lost: ${JSON.stringify({ lost, ...missing })}; `
    + `memory ${before.toFixed(0)} to ${visit.memory().toFixed(0)} MiB`);
  assert.ok(live <= BACK_WITHIN_MS, `live again after ${live} ms`);
  assert.deepEqual([lost, missing.taps, missing.tags], [0, 0, 0]);
  assert.ok(visit.memory() - before < MOST_GROWTH_MIB, 'memory');
}

describe('nothing is lost', () => {
  for (const [name, conditions] of Object.entries(NETWORKS)) {
    test(`with ${name}`, async (t) => {
      const visit = await Visit.begin(t, conditions);
      const before = visit.memory();
      const lost = await visit.goOn(STEPS);
      const missing = await visit.missing();
      t.diagnostic(`${JSON.stringify(visit.things)}, lost: ${JSON.stringify({ screens: lost, ...missing })}; `
        + `memory ${before.toFixed(0)} to ${visit.memory().toFixed(0)} MiB`);
      assert.deepEqual([lost, missing.taps, missing.tags], [0, 0, 0]);
      assert.ok(visit.memory() - before < MOST_GROWTH_MIB, 'memory');
    });
  }

  test('while nothing comes through', async (t) => {
    const visit = await Visit.begin(t, { roundTrip: 100 });
    await endure(t, visit, { begin: () => visit.network.cut(), end: () => visit.network.mend() });
  });

  test('while there is no network', async (t) => {
    const visit = await Visit.begin(t, { roundTrip: 100 });
    await endure(t, visit, { begin: () => visit.network.unplug(), end: () => visit.network.plugIn() });
  });

  test('while the service restarts', async (t) => {
    const visit = await Visit.begin(t, { roundTrip: 100 });
    await endure(t, visit, { begin: () => visit.stopService(), end: () => visit.startService(t) });
  });

  test('under another address', async (t) => {
    const visit = await Visit.begin(t, { roundTrip: 100 });
    const begin = () => {
      visit.network.changeAddress();
      visit.network.cut();
    };
    await endure(t, visit, { begin, end: () => visit.network.mend() });
  });

  // What is open hangs, and whatever is opened anew comes through.
  test('under another address at once', async (t) => {
    const visit = await Visit.begin(t, { roundTrip: 100 });
    await endure(t, visit, { end: () => visit.network.changeAddress(), seconds: 0 });
  });
});

test('a WebSocket that is dead is noticed', async (t) => {
  const visit = await Visit.begin(t, { roundTrip: 100 }, '--transport', 'websocket');
  await visit.goOn(2);
  visit.network.changeAddress();
  const begun = performance.now();
  await visit.tells('Reconnecting…', 'Connecting…');
  await visit.untilLive();
  await visit.tells(`Screen shared · ${visit.code}`, visit.code);
  t.diagnostic(`live again after ${Math.round(performance.now() - begun)} ms`);
});
