// Nothing in the service's pages keeps people from using them, at any size. The chat page is looked at with its own tests.

import assert from 'node:assert/strict';
import { before, test } from 'node:test';

import { violations } from './axe.mjs';
import { FakeVisitor, event } from './fakeVisitor.mjs';
import { AgentConsole } from '../../automation/agentConsole.mjs';
import { Service, wholeFile } from '../../automation/support.mjs';

const file = wholeFile();
let url;
let agent;

before(async () => {
  ({ url } = await Service.start(file));
  agent = await AgentConsole.open(file, url);
});

async function expectClean(what) {
  for (const [width, height] of [[1366, 768], [1024, 600], [390, 844]]) {
    await agent.page.setViewportSize({ width, height });
    // What slides and fades has come to rest.
    await agent.page.evaluate(() => Promise.all(document.getAnimations().map((each) => each.finished.catch(() => {}))));
    assert.deepEqual(await violations(agent.page), [], `${what} at ${width} × ${height}`);
  }
}

test('the console', async () => {
  await agent.page.getByRole('heading', { name: 'No visitors yet' }).waitFor();
  await expectClean('without visitors');
  const visitor = new FakeVisitor(url);
  await visitor.start();
  await visitor.poll();
  await visitor.send(event.page(1000, 'AccountsPage'), event.tap(2000, 100, 100), event.tag(3000, 'a tag'));
  await agent.entry('a tag').waitFor();
  await expectClean('with a session');
  await agent.page.setViewportSize({ width: 1366, height: 768 });
  await agent.page.getByRole('tab', { name: /^Chat/ }).click();
  await expectClean('with the chat');
  await visitor.stop();
  await agent.page.locator('[data-state="ended"]').first().waitFor({ state: 'attached' });
  await expectClean('when the session has ended');
});

test('the page for tests', async () => {
  await agent.page.goto(new URL('console/testing.html', url).href);
  await agent.page.getByRole('heading').first().waitFor();
  await expectClean('the page for tests');
  assert.deepEqual(agent.problems, []);
});
