// Runs the real example app against the real development service, with a browser for the agent. What a test starts
// ends with it, however it ends. Everything waits for conditions: on a busy machine a test takes longer, no more.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { mkdirSync, mkdtempSync, readdirSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';
import { isDeepStrictEqual } from 'node:util';

import { chromium } from 'playwright-core';

const BROWSER_FLAGS = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync',
];
const OFFSCREEN = { QT_QPA_PLATFORM: 'offscreen', QT_QUICK_BACKEND: 'software' };
// The web view's browser refuses to run as root in its sandbox.
const AS_ROOT = process.getuid() === 0 ? { QTWEBENGINE_DISABLE_SANDBOX: '1' } : {};
const DISPLAYS = {
  offscreen: OFFSCREEN, double: { ...OFFSCREEN, QT_SCALE_FACTOR: '2' }, phone: { ...OFFSCREEN, QT_SCALE_FACTOR: '3' },
};
// Ends an app that no test ended, so that nothing outlives a killed test run for long.
const LONGEST_RUN_SECONDS = 240;

// What Qt and its browser say about themselves, on the standard error.
const NOISE = /^(qt\.scenegraph|qt\.rhi|qt\.webenginecontext|  |$)|^(GL Type|Surface|QSG RHI|Using|Init Parameters|No suitable graphics|Sandboxing disabled)|neither a QObject, nor default- and copy-constructible/;

/** Masks everything that the example app calls private. */
export const MASKS = ['--reply-mask-classes', 'PrivateInput,PrivateText'];

/** The first true value of `probe`; fails when there is none in time. */
export async function eventually(what, probe, seconds = 30) {
  const deadline = performance.now() + seconds * 1000;
  for (;;) {
    const value = await probe();
    if (value) return value;
    if (performance.now() > deadline) assert.fail(`within ${seconds} s: ${what}`);
    await pause(50);
  }
}

const closing = new WeakMap();

/** Runs the steps at the end of a test, the last one first: a process ends before its directory goes. */
function atEnd(t, step) {
  if (!closing.has(t)) {
    const steps = [];
    closing.set(t, steps);
    t.after(async () => {
      for (const each of steps) await each();
    });
  }
  closing.get(t).unshift(step);
}

/** In place of a test, for what lasts as long as the whole file of them. */
export function wholeFile() {
  let end;
  after(() => end?.());
  return { after: (step) => { end = step; } };
}

/** A directory that goes with the test. */
export function temporaryDirectory(t) {
  const directory = mkdtempSync(join(tmpdir(), 'merovanta-e2e-'));
  atEnd(t, () => rmSync(directory, { recursive: true, force: true, maxRetries: 5 }));
  return directory;
}

/** Where pictures for human eyes go; undefined when nobody wants them. */
export function outputDirectory(name) {
  if (!process.env.E2E_OUTPUT) return undefined;
  const directory = join(process.env.E2E_OUTPUT, name);
  mkdirSync(directory, { recursive: true });
  return directory;
}

/** A child process with the lines it prints; leads its own process group, for what it starts itself. */
class Process {
  out = [];
  err = [];

  constructor(t, command, args, env = {}) {
    this.child = spawn(command, args, {
      detached: true, stdio: ['pipe', 'pipe', 'pipe'], env: { ...process.env, ...env },
    });
    this.child.stdin.on('error', () => {});  // Ended before it read everything: seen elsewhere.
    this.ended = new Promise((resolve) => {
      this.child.once('error', (error) => resolve(error.message));
      this.child.once('close', (code, signal) => resolve(code ?? signal));
    });
    this.ended.then((result) => { this.result = result; });
    collectLines(this.child.stdout, this.out);
    collectLines(this.child.stderr, this.err);
    atEnd(t, () => this.stop('SIGKILL'));
  }

  /** Gives back the exit code, or the signal that ended it. */
  stop(signal = 'SIGTERM') {
    const running = this.child.pid !== undefined && this.child.exitCode === null && this.child.signalCode === null;
    if (running) process.kill(-this.child.pid, signal);
    return this.ended;
  }

  line(pattern, seconds, from = 0) {
    return eventually(`a line ${pattern}`, () => {
      const found = this.out.slice(from).find((line) => pattern.test(line));
      if (!found) this.assertRunning();
      return found;
    }, seconds);
  }

  say(command) {
    this.child.stdin.write(`${command}\n`);
  }

  assertRunning() {
    const lastLines = [...this.out, ...this.err].slice(-20).join('\n');
    assert.equal(this.result, undefined, `ended with ${this.result} too early\n${lastLines}`);
  }

  async exitCode(seconds) {
    await eventually('the end of the process', () => this.result !== undefined, seconds);
    return this.result;
  }
}

function collectLines(stream, lines) {
  let rest = '';
  stream.setEncoding('utf8').on('data', (text) => {
    const parts = (rest + text).split('\n');
    rest = parts.pop();
    lines.push(...parts);
  });
  stream.on('end', () => { if (rest) lines.push(rest); });
}

/** The development service on a free port; records what arrives and logs each request. */
export class Service extends Process {
  static async start(t, ...args) {
    const directory = temporaryDirectory(t);
    const port = args.includes('--port') ? [] : ['--port', '0'];
    const service = new Service(t, process.env.DEVSERVICE,
      [...port, '--log-requests', '--record', directory, ...args]);
    service.directory = directory;
    service.url = (await service.line(/http:/)).match(/http:\S+/)[0];
    service.host = new URL(service.url).host;
    return service;
  }

  /** The recorded events, oldest first; only those of one kind if one is named. */
  events(kind, visitor) {
    const text = readFileSync(join(this.directory, 'events.jsonl'), 'utf8');
    return text.slice(0, text.lastIndexOf('\n') + 1).split('\n').slice(0, -1).map((line) => JSON.parse(line))
      .filter((event) => (!kind || event.kind === kind) && (!visitor || event.visitor === visitor));
  }

  picture(event) {
    return readFileSync(join(this.directory, event.file));
  }

  /** When each POST with events came; all events of one POST bear its time. */
  postTimes(visitor) {
    const streamed = this.events(undefined, visitor)
      .filter(({ kind }) => !['activity', 'init', 'connect', 'end'].includes(kind));
    return [...new Set(streamed.map((event) => event.at))];
  }

  requests() {
    return this.out.slice(1).map((line) => {
      const [, method, target, session] = line.match(/^(\S+) (\S+) X-QD-SSID=(\S*) bytes=\d+ status=\d+$/);
      return { method, target, session };
    }).filter(({ target }) => target.startsWith('/api/'));
  }

  async visitors() {
    return (await fetch(new URL('console/api/visitors', this.url))).json();
  }

  /** The first visitor whose session is initialised; entries in the activity log may be there before. */
  visitor(seconds) {
    return eventually('a visitor', async () => (await this.visitors()).find(({ shareId }) => shareId), seconds);
  }

  /** Sends a visitor's app a message of an agent. */
  async send(visitor, message) {
    const url = new URL(`console/api/visitors/${visitor}/messages`, this.url);
    assert.equal((await fetch(url, { method: 'POST', body: JSON.stringify(message) })).status, 202);
  }

  /** Makes endpoints misbehave; those not named behave well. */
  async setFaults(faults) {
    const url = new URL('console/api/faults', this.url);
    await fetch(url, { method: 'DELETE' });
    const reply = await fetch(url, { method: 'PUT', body: JSON.stringify(faults) });
    assert.equal(reply.status, 200, await reply.text());
  }
}

/** A screen with a window manager on it, where windows lie over each other. */
export class Desktop {
  static async start(t) {
    const desktop = new Desktop();
    desktop.server = new Process(t, 'Xvfb', ['-displayfd', '1', '-screen', '0', '1280x1024x24', '-nolisten', 'tcp']);
    desktop.env = { DISPLAY: `:${await desktop.server.line(/^\d+$/)}` };
    desktop.manager = new Process(t, 'openbox', ['--sm-disable'], desktop.env);
    desktop.t = t;
    await eventually('a window manager', () => desktop.#tool('get_num_desktops'));
    return desktop;
  }

  /** A window that is to be seen, by its title. */
  async window(title) {
    const [id] = await this.#tool('search', '--onlyvisible', '--name', title) ?? [];
    assert.ok(id, `no window ${title}`);
    return id;
  }

  /** What the user does with a window: "windowminimize", "windowactivate". */
  async manage(command, window) {
    assert.ok(await this.#tool(command, window), `${command} ${window}`);
  }

  /** The lines that it says; null if it fails. */
  async #tool(...args) {
    const tool = new Process(this.t, 'xdotool', args, this.env);
    return await tool.ended === 0 ? tool.out : null;
  }
}

/** The example app. */
export class App extends Process {
  static start(t, host, args, display) {
    return App.open(t, host, ['--start', ...args], display);
  }

  /**
   * Without a session.
   * @param display "offscreen", "double" and "phone": with two and three device pixels a point, "opengl": a virtual screen
   * with the threaded render loop; or a Desktop
   */
  static open(t, host, args, display = 'offscreen') {
    const home = temporaryDirectory(t);
    const options = ['--server', host, '--exit-after', String(LONGEST_RUN_SECONDS), ...args];
    const env = { ...AS_ROOT, HOME: home, XDG_CONFIG_HOME: home, XDG_RUNTIME_DIR: home, TMPDIR: home };
    const settings = display instanceof Desktop
      ? { ...display.env, QT_QPA_PLATFORM: 'xcb', QT_QUICK_BACKEND: 'software' } : DISPLAYS[display];
    const app = settings ? new App(t, process.env.BANK, options, { ...env, ...settings }) : new App(t, 'xvfb-run', ['-a', '-s', '-screen 0 1280x1024x24', process.env.BANK, ...options], {
      ...env, QT_QPA_PLATFORM: 'xcb', QSG_RENDER_LOOP: 'threaded', QSG_INFO: '1',
    });
    app.home = home;
    return app;
  }

  /** Forgets the lines so far: what is asked for next is about those that follow. */
  turnPage() {
    this.out.length = 0;
    this.err.length = 0;
  }

  /** Where a visible item is, in points; null without one. */
  async where(name) {
    const asked = this.out.length;
    this.say(`where ${name}`);
    const answer = await this.line(new RegExp(`^${name} (at |is not there$)`), undefined, asked);
    if (!answer.startsWith(`${name} at `)) return null;
    const [x, y, width, height] = answer.split(' ').slice(2).map(Number);
    return { x, y, width, height };
  }

  /** As where(), once the item stands still. */
  place(name) {
    let before;
    return eventually(`${name} at rest`, async () => {
      const place = await this.where(name);
      const rests = place && isDeepStrictEqual(place, before);
      before = place;
      return rests && place;
    });
  }

  /** What a visible item says; null without one. */
  async text(name) {
    const asked = this.out.length;
    this.say(`read ${name}`);
    const answer = await this.line(new RegExp(`^${name} (reads |is not there$)`), undefined, asked);
    return answer.startsWith(`${name} reads `) ? answer.slice(name.length + 7) : null;
  }

  /** The visitor's own touch. */
  async tap(name) {
    await this.place(name);
    this.say(`tap ${name}`);
  }

  /** What the window shows, as a PNG file's content. */
  async picture() {
    const file = join(this.home, 'window.png');
    const asked = this.out.length;
    this.say(`picture ${file}`);
    await this.line(/^saved /, undefined, asked);
    return readFileSync(file);
  }

  /** For how many milliseconds the GUI thread was busy at most since the last question. */
  async longestStall() {
    const pattern = /^longest stall (\d+) ms$/;
    const asked = this.out.length;
    this.say('stalls');
    const answer = await this.line(pattern, undefined, asked);
    return Number(answer.match(pattern)[1]);
  }

  /** Lines that tell of something that went wrong, except those expected. */
  problems(...expected) {
    const lines = [...this.out.filter((line) => /^\[(ERROR|WARNING)\]/.test(line)),
      ...this.err.filter((line) => !NOISE.test(line))];
    return lines.filter((line) => !expected.some((pattern) => pattern.test(line)));
  }
}

export const countFiles = (directory) => readdirSync(directory).length;

/** @param desktop where its window is to be seen, if anywhere */
export async function openBrowser(t, desktop) {
  const executablePath = process.env.CHROMIUM ?? '/usr/bin/chromium';
  const browser = await chromium.launch(desktop
    ? { executablePath, args: [...BROWSER_FLAGS, '--start-maximized'], headless: false, env: { ...process.env, ...desktop.env } }
    : { executablePath, args: BROWSER_FLAGS });
  atEnd(t, () => browser.close());
  return browser;
}
