// Takes the pictures for the documentation: node screenshots.mjs DIRECTORY. scripts/screenshots builds what it needs
// and runs it.

import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';

import { AgentConsole, SCREEN } from './agentConsole.mjs';
import { App, MASKS, Service, eventually, temporaryDirectory } from './support.mjs';

const DESKTOP = { width: 1280, height: 860 };
const PHONE = { width: 390, height: 844 };
const ACCEPT_BLUE = [0x1f, 0x5b, 0xd1];
const PALE_RED = [0xf2, 0x8f, 0x96];

const target = process.argv[2];
const closing = [];
const run = { after: (step) => closing.push(step) };
const directory = temporaryDirectory(run);

/** The console at both widths. */
async function takeConsole(agent, name) {
  for (const [device, viewport] of Object.entries({ desktop: DESKTOP, phone: PHONE })) {
    await agent.page.setViewportSize(viewport);
    const top = device === 'phone' ? '#share-code' : 'body';
    await agent.page.locator(top).evaluate((element) => element.scrollIntoView({ block: 'start' }));
    await agent.page.screenshot({ path: join(target, `console-${name}-${device}.png`) });
  }
  await agent.page.setViewportSize(DESKTOP);
}

/** The app's own window, with one and a half pixels a point. */
async function takeApp(agent, app, name) {
  const file = join(directory, `${name}.png`);
  app.say(`picture ${file}`);
  await app.line(new RegExp(`^saved .*${name}.png$`));
  const small = await agent.page.evaluate(async ([png, width, height]) => {
    const image = await createImageBitmap(await (await fetch(`data:image/png;base64,${png}`)).blob(),
      { resizeWidth: width, resizeHeight: height, resizeQuality: 'high' });
    const canvas = document.createElement('canvas');
    Object.assign(canvas, { width, height });
    canvas.getContext('2d').drawImage(image, 0, 0);
    return canvas.toDataURL('image/png').split(',')[1];
  }, [readFileSync(file, 'base64'), SCREEN.width * 1.5, SCREEN.height * 1.5]);
  writeFileSync(join(target, `app-${name}.png`), Buffer.from(small, 'base64'));
}

try {
  const service = await Service.start(run, ...MASKS);
  const agent = await AgentConsole.open(run, service.url, DESKTOP);
  const app = App.open(run, service.host, ['--control'], 'phone');
  const tapOn = async (name) => agent.tap(await app.place(name));

  await agent.page.getByRole('button', { name: /^Invite: visitor/ }).click();
  await tapOn('demoButton');
  await app.line(/View changed to: AccountsPage$/);
  await agent.showsCode(app);
  await takeConsole(agent, 'widget');
  await takeApp(agent, app, 'widget');

  await tapOn('hideButton');
  await tapOn('tabTransfer');
  await app.line(/View changed to: TransferPage$/);
  const button = await app.place('continueButton');
  const ring = { x: 14, y: button.y - 34, width: 362, height: button.height + 68 };
  await agent.encircle(ring, 'Red');
  await agent.shows('the drawing', { x: 180, y: ring.y + ring.height - 4, width: 30, height: 8 }, PALE_RED);
  await takeApp(agent, app, 'drawing');
  await takeConsole(agent, 'drawing');

  await agent.button('Ask for consent').click();
  await agent.shows('the dialog', await app.place('accept'), ACCEPT_BLUE);
  await takeApp(agent, app, 'consent');
  await takeConsole(agent, 'consent');
  await app.tap('accept');
} finally {
  for (const step of closing) await step();
}
