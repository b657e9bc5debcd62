// The app goes on whatever becomes of the service.

import assert from 'node:assert/strict';
import { createServer } from 'node:net';
import { describe, test } from 'node:test';

import { App, MASKS, Service, countFiles, eventually, temporaryDirectory } from '../../automation/support.mjs';

/** An address at which nobody listens. */
async function deadHost() {
  const server = createServer().listen(0, '127.0.0.1');
  await new Promise((resolve) => server.once('listening', resolve));
  const { port } = server.address();
  await new Promise((resolve) => server.close(resolve));
  return `127.0.0.1:${port}`;
}

describe('bad weather', { concurrency: true }, () => {
  test('without a service the app says so once and goes on', async (t) => {
    const host = await deadHost();
    const screens = temporaryDirectory(t);
    const app = App.start(t, host, ['--tour', '--exit-after', '12', '--screenshot-dir', screens]);
    assert.equal(await app.exitCode(60), 0);
    assert.deepEqual(app.err, [`merovanta-bank: cannot reach the service at ${host}`]);
    assert.ok(countFiles(screens) >= 3, 'the tour stood still');
  });

  test('a service that dies in the middle does not take the app along', async (t) => {
    const service = await Service.start(t, ...MASKS);
    const screens = temporaryDirectory(t);
    const app = App.start(t, service.host, ['--tour', '--exit-after', '20', '--screenshot-dir', screens]);
    await eventually('pictures', () => service.events('screenshot').length > 5);
    await service.stop('SIGKILL');
    const before = countFiles(screens);
    await app.line(/^\[ERROR\] XhrMessageSender: Request failed$/);
    await eventually('the tour going on', () => countFiles(screens) >= before + 2);
    assert.equal(await app.exitCode(60), 0);
    assert.equal(app.out.filter((line) => /Request failed$/.test(line)).length, 1);
    assert.deepEqual(app.problems(/XhrMessageSender: Request failed$/, /MessageSender: Failed to send delete: /,
      /Panoptra: Cannot log co-browsing stop: /, /XhrRunner: Poll failed: /), []);
  });
});
