// Takes the pictures for the documentation: node screenshots.mjs DIRECTORY. scripts/screenshots builds what it needs
// and runs it.

import { join } from 'node:path';

import { AgentConsole } from './agentConsole.mjs';
import { App, MASKS, Service } from './support.mjs';

const VIEWPORTS = { desktop: { width: 1280, height: 860 }, phone: { width: 390, height: 844 } };
const ACCEPT_BLUE = [0x1f, 0x5b, 0xd1];
const PALE_RED = [0xf2, 0x8f, 0x96];

const target = process.argv[2];
const closing = [];
const run = { after: (step) => closing.push(step) };

/** The console at both widths, and the app's own window. */
async function take(agent, app, name) {
  app.say(`picture ${join(target, `app-${name}.png`)}`);
  await app.line(new RegExp(`^saved .*app-${name}.png$`));
  await agent.page.locator('#toast').waitFor({ state: 'hidden' });
  for (const [device, viewport] of Object.entries(VIEWPORTS)) {
    await agent.page.setViewportSize(viewport);
    const top = device === 'phone' ? '#tools' : 'body';
    await agent.page.locator(top).evaluate((element) => element.scrollIntoView());
    await agent.page.screenshot({ path: join(target, `console-${name}-${device}.png`) });
  }
  await agent.page.setViewportSize(VIEWPORTS.desktop);
}

try {
  const service = await Service.start(run, ...MASKS);
  const agent = await AgentConsole.open(run, service.url, VIEWPORTS.desktop);
  const app = App.open(run, service.host, ['--control'], 'offscreen');
  const tapOn = async (name) => agent.tap(await app.place(name));

  await agent.page.getByRole('button', { name: /^Invite: visitor/ }).click();
  await tapOn('demoButton');
  await app.line(/View changed to: AccountsPage$/);
  await agent.rests();
  await take(agent, app, 'widget');

  await tapOn('hideButton');
  await tapOn('tabTransfer');
  await app.line(/View changed to: TransferPage$/);
  const button = await app.place('continueButton');
  const ring = { x: 14, y: button.y - 34, width: 362, height: button.height + 68 };
  const below = { x: 180, y: ring.y + ring.height - 4, width: 30, height: 8 };
  await agent.encircle(ring, 'Red');
  await agent.shows('the drawing', below, PALE_RED);
  await agent.page.getByRole('radio', { name: 'Draw' }).check();
  await take(agent, app, 'drawing');
  await agent.page.getByRole('radio', { name: 'Tap' }).check();
  await agent.shows('the page without the drawing', below, PALE_RED, { not: true });

  await agent.button('Ask for consent').click();
  await agent.shows('the dialog', await app.place('accept'), ACCEPT_BLUE);
  await agent.rests();
  await take(agent, app, 'consent');
  await app.tap('accept');
} finally {
  for (const step of closing) await step();
}
