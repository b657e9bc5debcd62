// The development service and a browser for tests of its pages.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';

import { chromium } from 'playwright-core';

const BROWSER_FLAGS = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync',
];

/** On a free port unless told which; ends the test when it ends by itself. */
export async function startService(port = 0) {
  const child = spawn(process.env.DEVSERVICE, ['--port', String(port)], { stdio: ['ignore', 'pipe', 'inherit'] });
  const url = await new Promise((resolve, reject) => {
    child.once('exit', (code) => reject(new Error(`the service ended with ${code}`)));
    child.stdout.once('data', (line) => resolve(String(line).match(/http:\S+/)[0]));
  });
  const stop = async () => {
    child.removeAllListeners('exit');
    const ended = new Promise((resolve) => child.once('exit', (code) => resolve(code)));
    child.kill('SIGTERM');
    assert.equal(await ended, 0);
  };
  return { url, stop };
}

export function openBrowser() {
  return chromium.launch({ executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium', args: BROWSER_FLAGS });
}

/** A page that notes in `problems` what goes wrong in it. */
export async function openPage(browser, problems, options = { viewport: { width: 1280, height: 800 } }) {
  const page = await browser.newPage(options);
  page.on('pageerror', (error) => problems.push(String(error)));
  page.on('console', (line) => ['error', 'warning'].includes(line.type()) && problems.push(line.text()));
  page.setDefaultTimeout(10_000);
  return page;
}
