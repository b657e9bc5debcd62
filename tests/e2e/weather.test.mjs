// The app goes on without a service.

import assert from 'node:assert/strict';
import { createServer } from 'node:net';
import { test } from 'node:test';

import { App, countFiles, temporaryDirectory } from '../../automation/support.mjs';

/** An address at which nobody listens. */
async function deadHost() {
  const server = createServer().listen(0, '127.0.0.1');
  await new Promise((resolve) => server.once('listening', resolve));
  const { port } = server.address();
  await new Promise((resolve) => server.close(resolve));
  return `127.0.0.1:${port}`;
}

test('without a service the app says so once and goes on', async (t) => {
  const host = await deadHost();
  const screens = temporaryDirectory(t);
  const app = App.start(t, host, ['--tour', '--exit-after', '12', '--screenshot-dir', screens]);
  assert.equal(await app.exitCode(60), 0);
  assert.deepEqual(app.err, [`merovanta-bank: cannot reach the service at ${host}`]);
  assert.ok(countFiles(screens) >= 3, 'the tour stood still');
});
