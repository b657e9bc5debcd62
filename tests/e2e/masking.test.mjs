// What is private never leaves the process: the app paints it on pure magenta, and no picture on the wire shows any.

import assert from 'node:assert/strict';
import { copyFileSync } from 'node:fs';
import { join } from 'node:path';
import { before, describe, test } from 'node:test';

import { App, MASKS, Service, eventually, openBrowser, outputDirectory, wholeFile } from '../../automation/support.mjs';

// How far red and blue must exceed green. The app itself has no purple, but JPEG gives up to 22 beside its green. The
// sentinel loses strength behind a dialog's shade, by the shrinking, and where JPEG averages the colour of four pixels.
const MAGENTA = 30;

const file = wholeFile();
let painter;

before(async () => {
  painter = await (await openBrowser(file)).newPage();
});

/** For each JPEG the most by which red and blue exceed green; with `leak` a strip of 36 by 6 points is painted
 * magenta before. */
function purple(jpegs, leak = false) {
  return painter.evaluate(async ([images, withLeak]) => {
    const decode = async (blob) => {
      const bitmap = await createImageBitmap(blob);
      const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
      canvas.getContext('2d', { willReadFrequently: true }).drawImage(bitmap, 0, 0);
      return canvas;
    };
    const excess = [];
    for (const image of images) {
      let canvas = await decode(await (await fetch(`data:image/jpeg;base64,${image}`)).blob());
      if (withLeak) {
        const context = canvas.getContext('2d');
        context.fillStyle = '#ff00ff';
        context.fillRect(20, 200, 12, 2);
        canvas = await decode(await canvas.convertToBlob({ type: 'image/jpeg', quality: 0.4 }));
      }
      const { data } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
      let most = -255;
      for (let i = 0; i < data.length; i += 4) most = Math.max(most, Math.min(data[i], data[i + 2]) - data[i + 1]);
      excess.push(most);
    }
    return excess;
  }, [jpegs.map((jpeg) => jpeg.toString('base64')), leak]);
}

/** Runs the tour until `enough`; gives back the app, the recorded events and the pictures with magenta in them. */
async function record(t, name, masks, display, enough) {
  const service = await Service.start(t, ...masks);
  const app = App.start(t, service.host, ['--tour', '--sentinel'], display);
  await eventually(`enough of the tour (${name})`, () => {
    app.assertRunning();
    return enough(app, service);
  }, 150);
  const problems = app.problems();
  await app.stop();
  const screenshots = service.events('screenshot');
  const jpegs = screenshots.map((screenshot) => service.picture(screenshot));
  const excess = await purple(jpegs);
  t.diagnostic(`${name}: ${jpegs.length} pictures, purple ${Math.min(...excess)} to ${Math.max(...excess)}`);
  const leaks = screenshots.map(({ file }) => file).filter((_, i) => excess[i] > MAGENTA);
  const output = outputDirectory(`masking-${name}`);
  if (output) {
    screenshots.forEach(({ file }, i) =>
      copyFileSync(join(service.directory, file), join(output, `${excess[i]}-${file}`)));
  }
  return { app, problems, pages: new Set(service.events('page').map((event) => event.page)), jpegs, leaks };
}

const wholeRound = (app, service) =>
  app.out.some((line) => /tour round 1 finished/.test(line)) && service.events('screenshot').length > 50;

describe('a tour of all screens, painted with a sentinel colour', { concurrency: true }, () => {
  for (const display of ['offscreen', 'double', 'phone', 'opengl']) {
    test(`with masks none of it leaves, ${display}`, async (t) => {
      const { app, problems, pages, jpegs, leaks } = await record(t, display, MASKS, display, wholeRound);
      for (const name of ['AccountsPage', 'TransferPage', 'ConfirmTransferDialog', 'CardsPage', 'ProfilePage']) {
        assert.ok(pages.has(name), `${name} was not visited`);
      }
      assert.deepEqual(leaks, []);
      if (display === 'opengl') assert.ok(app.err.some((line) => /threaded render loop/.test(line)));
      assert.deepEqual(problems, []);
      const seen = await purple(jpegs, true);
      assert.ok(Math.min(...seen) > MAGENTA, `a strip of magenta gives only ${Math.min(...seen)}`);
    });
  }

  test('without masks it is seen', async (t) => {
    const { jpegs, leaks } = await record(t, 'unmasked', [], 'offscreen',
      (_, service) => service.events('screenshot').length > 15);
    assert.ok(leaks.length > jpegs.length * 0.9, `${leaks.length} of ${jpegs.length}`);
  });
});
