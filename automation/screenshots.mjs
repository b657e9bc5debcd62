// Takes the pictures for the documentation: node screenshots.mjs DIRECTORY. scripts/screenshots builds what it needs
// and runs it.

import { join } from 'node:path';

import { AgentConsole } from './agentConsole.mjs';
import { onePage } from './pdf.mjs';
import { lowestStretch } from './pixels.mjs';
import { App, MASKS, Service, eventually, temporaryDirectory } from './support.mjs';

const VIEWPORTS = { desktop: { width: 1280, height: 860 }, small: { width: 1024, height: 600 }, phone: { width: 390, height: 844 } };
// The app's, as on most screens today.
const SCALE = 2;
const ACCEPT_BLUE = [0x1f, 0x5b, 0xd1];
const PALE_RED = [0xf2, 0x8f, 0x96];

const LETTER = onePage(`0.05 0.42 0.36 rg 0 244 200 36 re f 1 1 1 rg BT /F1 14 Tf 16 257 Td (Alderbrook Bank) Tj ET
  0.1 0.1 0.1 rg BT /F1 11 Tf 16 216 Td (Your new card) Tj /F1 7 Tf 0 -20 Td (Your old card is blocked since today.) Tj
  0 -12 Td (The new one comes by post within three days.) Tj 0 -12 Td (Until then, pay with this app.) Tj ET`);

const target = process.argv[2];
const closing = [];
const run = { after: (step) => closing.push(step) };

/** The console at three sizes, and the app's own window. */
async function take(agent, app, name, phoneTop = 'body') {
  app.say(`picture ${join(target, `app-${name}.png`)}`);
  await app.line(new RegExp(`^saved .*app-${name}.png$`));
  await takeConsole(agent, name, phoneTop);
}

async function takeConsole(agent, name, phoneTop = 'body') {
  await agent.page.locator('#toast').waitFor({ state: 'hidden' });
  for (const close of await agent.page.locator('.notice-close').all()) await close.click();
  for (const [device, viewport] of Object.entries(VIEWPORTS)) {
    await agent.page.setViewportSize(viewport);
    const top = device === 'phone' ? phoneTop : 'body';
    await agent.page.locator(top).evaluate((element) => element.scrollIntoView());
    await agent.page.screenshot({ path: join(target, `console-${name}-${device}.png`) });
  }
  await agent.page.setViewportSize(VIEWPORTS.desktop);
}

/** What the console shows of an app that is not to be seen live, and of other agents. */
async function takeStates(agent, app, service) {
  const { page } = agent;
  const says = (text) => page.getByText(text).first().waitFor();
  const colleague = await (await page.context().browser().newContext({ viewport: VIEWPORTS.desktop })).newPage();
  await colleague.goto(page.url());
  for (const [on, name] of [[page, 'Ada Keller'], [colleague, 'Bo Lind']]) {
    await on.locator('#agent').click();
    await on.locator('#agent-name').fill(name);
    await on.getByRole('button', { name: 'Save' }).click();
  }
  await page.getByRole('button', { name: 'Faster polling' }).click();
  await colleague.getByRole('button', { name: 'Ask to take over' }).click();
  await says(/^Bo Lind asks to take over/);
  await takeConsole(agent, 'agents');
  await page.getByRole('button', { name: 'Keep acting' }).click();
  await colleague.close();

  await service.setFaults({ '*': { kind: 'drop' } });
  await says(/No word from the app for/);
  await takeConsole(agent, 'silent');
  await service.setFaults({});
  await page.locator('#state-pill').getByText('Live').waitFor();
  app.say('hide');
  await says(/^In the background since/);
  await takeConsole(agent, 'background');
  app.say('show');
  await page.locator('#state-pill').getByText('Live').waitFor();
  app.say('stop');
  await says(/^Session ended at .* by the visitor/);
  await takeConsole(agent, 'ended');

}

async function takeSignIn({ page }) {
  const closed = await Service.start(run, '--auth');
  await page.goto(new URL('/', closed.url).href);
  await page.getByLabel('Token').waitFor();
  for (const [device, viewport] of Object.entries(VIEWPORTS)) {
    await page.setViewportSize(viewport);
    await page.screenshot({ path: join(target, `console-sign-in-${device}.png`) });
  }
}

try {
  const service = await Service.start(run, '--data', temporaryDirectory(run), ...MASKS);
  const agent = await AgentConsole.open(run, service.url, VIEWPORTS.desktop);
  const app = App.open(run, service.host, ['--control'], 'double');
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

  await app.tap('tabProfile');
  await app.tap('openChat');
  // The visitor gets an identity and with it another session, which the console follows.
  await agent.page.getByRole('tab', { name: /^Chat/ }).click();
  await eventually('the open chat', () => agent.chatIsOpen());
  await agent.write('Good morning! How can we help?');
  app.say('tapAt 150 812');
  app.say('type I have lost my card.');
  app.say('tapAt 355 812');
  await agent.message('I have lost my card.').waitFor();
  await agent.write('We have blocked it. Here is what happens next:');
  await agent.shareFile('Your new card.pdf', 'application/pdf', LETTER);
  // Away from the field, whose cursor blinks.
  app.say('tapAt 195 740');
  await agent.rests();
  await take(agent, app, 'chat', '#card');
  const white = await lowestStretch(agent.page, await app.picture(), 24 * SCALE, 770 * SCALE, [0xff, 0xff, 0xff]) / SCALE;
  app.say(`tapAt 80 ${white}`);
  await app.place('page');
  await agent.rests();
  await take(agent, app, 'document');

  await app.tap('closePreview');
  await agent.page.getByRole('tab', { name: 'Timeline' }).click();
  await takeStates(agent, app, service);

  await agent.page.goto(`${service.url}console/recordings.html`);
  await agent.page.getByLabel('Search').fill('transfer');
  await agent.page.locator('#found').filter({ hasText: '1 recording' }).waitFor();
  await takeConsole(agent, 'recordings');
  await agent.page.locator('.recording-link').click();
  await agent.page.getByPlaceholder('Note at this moment').fill('Asked about transfers');
  await agent.page.getByRole('button', { name: 'Add note' }).click();
  await agent.page.locator('.replay-entry').filter({ hasText: 'Tap at' }).last().getByRole('button').click();
  await agent.page.locator('.replay-tap').first().waitFor();
  await takeConsole(agent, 'replay');
  await takeSignIn(agent);
} finally {
  for (const step of closing) await step();
}
