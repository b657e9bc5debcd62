// The agent console: keeps the visitors as the service tells them and shows the selected one.

import { AgentActions } from './agentActions.js';
import { AgentChannel } from './agentChannel.js';
import { Connection } from './connection.js';
import { byId, setText } from './dom.js';
import { FaultsPanel } from './faultsPanel.js';
import { JoinForm } from './joinForm.js';
import { PhoneView } from './phoneView.js';
import { PictureControl } from './pictureControl.js';
import { PresentList } from './presentList.js';
import { deviceSize } from './screenGeometry.js';
import { SessionHead } from './sessionHead.js';
import { SettingsPanel } from './settingsPanel.js';
import { TimelineView } from './timelineView.js';
import { VisitorList } from './visitorList.js';

const REFRESH_MS = 500;
const TOAST_MS = 3500;

const visitors = new Map();
let present = [];
let selected = null;
let invited = null;
let clockOffset = 0;

const list = new VisitorList(select);
const head = new SessionHead();
const phone = new PhoneView();
const timeline = new TimelineView();
const channel = new AgentChannel(() => visitors.get(selected), toast);
const actions = new AgentActions(channel);
const control = new PictureControl(phone, channel);
const presentList = new PresentList(invite);
const settings = new SettingsPanel(() => toast('Saved. Holds from the next session start on.'));
const faults = new FaultsPanel(toast);
const connection = new Connection({ onState: showConnection, onMessage: receive, onFrame: receiveFrame });

function now() {
  return Date.now() + clockOffset;
}

function select(id) {
  selected = id;
  phone.clear();
  control.clear();
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
  if (message.complete) {
    visitors.clear();
    present = message.present;
  }
  for (const visitor of message.visitors) visitors.set(visitor.id, visitor);
  if (selected !== null && !visitors.has(selected)) selected = null;
  const next = takeInvited() ?? (selected === null ? firstVisitor() : continuation(visitors.get(selected)));
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

/** The session that an invited visitor has started since, once. */
function takeInvited() {
  const session = invited && sessionOf(invited);
  if (session) invited = null;
  return session ?? undefined;
}

/** The session of a present visitor, if it has one that goes on. */
function sessionOf({ tenantId, visitorId }) {
  return [...visitors.values()].find((visitor) => visitor.state !== 'ended'
    && visitor.tenantId === tenantId && visitor.visitorId === visitorId);
}

/** Opens the visitor with this share code; returns what is wrong, if anything. */
function join(code) {
  const known = [...visitors.values()].filter((visitor) => visitor.shareId === code).reverse();
  const visitor = known.find(({ state }) => state !== 'ended') ?? known[0];
  if (!visitor) return `No visitor has the share code ${code}.`;
  select(visitor.id);
  byId('stage').focus({ preventScroll: true });
  return '';
}

async function invite(presence) {
  let problem = '';
  try {
    const reply = await fetch(`/console/api/present/${presence.id}/invitation`, { method: 'POST' });
    if (!reply.ok) problem = (await reply.json()).error;
  } catch {
    problem = 'the service does not answer';
  }
  if (!problem) invited = presence;
  toast(`Invitation: ${problem || 'goes out with the next poll'}.`);
}

function receiveTimeline({ entries, reset }) {
  timeline.add(entries, reset);
  if (reset) return;
  for (const entry of entries) {
    if (entry.kind === 'tap') markTap(entry.detail);
  }
}

function markTap({ x, y, frame }) {
  if (!frame) return;
  const size = deviceSize(frame, visitors.get(selected).screen);
  phone.mark({ left: x / size.width, top: y / size.height });
}

function receiveFrame({ visitor, jpeg }) {
  if (visitor === selected) phone.frame(jpeg);
}

function show() {
  list.show(visitors.values(), selected, now());
  const withoutSession = present.filter((presence) => !sessionOf(presence));
  presentList.show(withoutSession);
  setText(byId('empty-title'), withoutSession.length > 0 ? 'No session yet' : 'No visitors yet');
  const visitor = visitors.get(selected);
  byId('empty').hidden = visitor !== undefined;
  byId('session').hidden = visitor === undefined;
  if (!visitor) return;
  head.update(visitor, now());
  phone.update(visitor, now());
  actions.update(visitor);
  control.update(visitor);
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

byId('start-command').textContent = `merovanta-bank --server ${location.host} --start`;
new JoinForm(join);
setInterval(show, REFRESH_MS);
connection.open();
