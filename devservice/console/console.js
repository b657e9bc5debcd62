// The agent console: keeps the visitors as the service tells them and shows the selected one.

import { Connection } from './connection.js';
import { byId, setText } from './dom.js';
import { FaultsPanel } from './faultsPanel.js';
import { PhoneView } from './phoneView.js';
import { SessionHead } from './sessionHead.js';
import { SettingsPanel } from './settingsPanel.js';
import { TimelineView } from './timelineView.js';
import { VisitorList } from './visitorList.js';

const REFRESH_MS = 500;
const TOAST_MS = 3500;

const visitors = new Map();
let selected = null;
let clockOffset = 0;

const list = new VisitorList(select);
const head = new SessionHead();
const phone = new PhoneView();
const timeline = new TimelineView();
const settings = new SettingsPanel(() => toast('Saved. Holds from the next session start on.'));
const faults = new FaultsPanel(toast);
const connection = new Connection({ onState: showConnection, onMessage: receive, onFrame: receiveFrame });

function now() {
  return Date.now() + clockOffset;
}

function select(id) {
  selected = id;
  phone.clear();
  timeline.add([], true);
  connection.watch(id);
  show();
}

function receive(message) {
  clockOffset = message.now - Date.now();
  if (message.type === 'settings') {
    settings.update(message.settings);
    faults.update(message.faults);
  }
  if (message.type === 'visitors') receiveVisitors(message);
  if (message.type === 'timeline' && message.visitor === selected) receiveTimeline(message);
}

function receiveVisitors(message) {
  if (message.complete) visitors.clear();
  for (const visitor of message.visitors) visitors.set(visitor.id, visitor);
  if (selected !== null && !visitors.has(selected)) selected = null;
  const next = selected === null ? firstVisitor() : continuation(visitors.get(selected));
  if (next) select(next.id);
  else show();
}

/** The latest visitor, of those that have not ended if there are any. */
function firstVisitor() {
  const latestFirst = [...visitors.values()].reverse();
  return latestFirst.find((visitor) => visitor.state !== 'ended') ?? latestFirst[0];
}

/** The new session of a visitor whose own has ended: an app that was in the background comes back under new ids. */
function continuation(ended) {
  if (ended.state !== 'ended' || !ended.shareId) return undefined;
  return [...visitors.values()].find((visitor) => visitor.state === 'live'
    && visitor.shareId === ended.shareId && visitor.visitorId === ended.visitorId);
}

function receiveTimeline({ entries, reset }) {
  timeline.add(entries, reset);
  if (reset) return;
  for (const entry of entries) {
    if (entry.kind === 'tap') phone.tap(entry.detail, entry.detail.frame);
  }
}

function receiveFrame({ visitor, jpeg }) {
  if (visitor === selected) phone.frame(jpeg);
}

function show() {
  list.show(visitors.values(), selected, now());
  const visitor = visitors.get(selected);
  byId('empty').hidden = visitor !== undefined;
  byId('session').hidden = visitor === undefined;
  if (!visitor) return;
  head.update(visitor, now());
  phone.update(visitor, now());
}

function showConnection(state) {
  const labels = { connecting: 'Connecting', connected: 'Connected', disconnected: 'Service not reached' };
  const pill = byId('connection');
  pill.dataset.state = state;
  setText(pill, labels[state]);
  // A restarted service numbers its visitors anew.
  if (state === 'connected') phone.clear();
}

let toastTimer = 0;
function toast(text) {
  const box = byId('toast');
  box.textContent = text;
  box.hidden = false;
  clearTimeout(toastTimer);
  toastTimer = setTimeout(() => { box.hidden = true; }, TOAST_MS);
}

async function send(message, label) {
  try {
    const reply = await fetch(`/console/api/visitors/${selected}/messages`, { method: 'POST', body: JSON.stringify(message) });
    const sent = visitors.get(selected)?.transport === 'websocket' ? 'sent' : 'goes out with the next reply';
    toast(reply.ok ? `${label}: ${sent}.` : `${label}: ${(await reply.json()).error}.`);
  } catch {
    toast(`${label}: the service does not answer.`);
  }
}

byId('faster').addEventListener('click', () => send({ co: { b: true } }, 'Faster polling'));
byId('force').addEventListener('click', () => send({ co: { s: true } }, 'Force start'));
byId('start-command').textContent = `merovanta-bank --server ${location.host} --start`;
setInterval(show, REFRESH_MS);
connection.open();
