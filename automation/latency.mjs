// Measures how long it takes from the agent's click on the picture until the picture shows what came of it, on
// loopback, by each transport: node latency.mjs [SAMPLES]. scripts/latency builds what it needs and runs it.

import { setTimeout as pause } from 'node:timers/promises';

import { AgentConsole } from './agentConsole.mjs';
import { App, MASKS, Service } from './support.mjs';

const SAMPLES = Number(process.argv[2] ?? 100);
const LONGEST_WAIT_MS = 8000;
const VISITOR_TAPS_EVERY_MS = 150;

/** In the page: from the next click on the surface until the brightness at a place of the picture changes. */
function watch([place, longest]) {
  const probe = new OffscreenCanvas(1, 1).getContext('2d', { willReadFrequently: true });
  const canvas = document.getElementById('picture');
  const brightness = () => {
    probe.drawImage(canvas, -Math.round(place.x * canvas.width), -Math.round(place.y * canvas.height));
    return probe.getImageData(0, 0, 1, 1).data[0];
  };
  const before = brightness();
  window.reaction = new Promise((resolve) => {
    document.getElementById('surface').addEventListener('pointerup', () => {
      const clicked = Date.now();
      const look = () => {
        const now = Date.now();
        if (Math.abs(brightness() - before) > 100) resolve({ clicked, seen: now });
        else if (now - clicked > longest) resolve(null);
        else setTimeout(look, 4);
      };
      look();
    }, { once: true, capture: true });
  });
}

function summary(values) {
  const sorted = [...values].sort((a, b) => a - b);
  const at = (fraction) => sorted[Math.min(sorted.length - 1, Math.floor(fraction * sorted.length))];
  return `median ${at(0.5)} ms, p95 ${at(0.95)} ms, from ${sorted[0]} to ${sorted.at(-1)} ms`;
}

/** The app with a session by one transport, on a page where a tap turns a toggle; `measure` counts the agent's clicks on it. */
async function open(run, transport) {
  const service = await Service.start(run, ...MASKS);
  const agent = await AgentConsole.open(run, service.url);
  const app = App.start(run, service.host, ['--control', '--exit-after', '1800', '--transport', transport], 'phone');
  let handled = 0;
  app.child.stdout.on('data', (text) => { if (/Handle message: .*click/.test(text)) handled = Date.now(); });
  const tapOn = async (name) => agent.tap(await app.place(name));
  await agent.shows('the login page', await app.place('signInButton'), [0x0d, 0x66, 0x50]);
  await tapOn('demoButton');
  await tapOn('tabCards');
  await app.line(/View changed to: CardsPage$/);
  const used = (await service.visitor()).transport;
  if (used !== transport) throw new Error(`the session streams by ${used}`);

  // Where the knob is in one position and not in the other.
  const toggle = await app.place('freezeToggle');
  const place = { x: (toggle.x + 8) / 390, y: (toggle.y + toggle.height / 2) / 844 };
  const measure = async (what) => {
    const samples = [];
    let lost = 0;
    while (samples.length < SAMPLES) {
      await pause(300 + Math.random() * 1000);
      await agent.page.evaluate(watch, [place, LONGEST_WAIT_MS]);
      await agent.tap(toggle);
      const reaction = await agent.page.evaluate(() => window.reaction);
      if (reaction) samples.push({ ...reaction, handled });
      else lost += 1;
      if (lost > SAMPLES) throw new Error('the picture shows none of the taps');
    }
    console.log(`${what}, ${samples.length} clicks, ${lost} whose picture was lost:`);
    console.log(`  until the picture shows it  ${summary(samples.map(({ clicked, seen }) => seen - clicked))}`);
    console.log(`  of these until the app has it  ${summary(samples.map((sample) => sample.handled - sample.clicked))}`);
  };
  return { agent, app, measure };
}

const closing = [];
const run = { after: (step) => closing.push(step) };
try {
  // Side by side: whatever else the machine does, it does to both.
  const polling = await open(run, 'polling');
  const webSocket = await open(run, 'websocket');
  await polling.measure('polling, the visitor idle');
  await webSocket.measure('WebSocket, the visitor idle');
  await polling.agent.button('Faster polling').click();
  await polling.measure('faster polling, the visitor idle');
  for (const [name, { app, measure }] of Object.entries({ 'faster polling': polling, WebSocket: webSocket })) {
    const taps = setInterval(() => app.say('tap tabCards'), VISITOR_TAPS_EVERY_MS);
    await measure(`${name}, the visitor tapping`);
    clearInterval(taps);
  }
} finally {
  for (const step of closing) await step();
}
