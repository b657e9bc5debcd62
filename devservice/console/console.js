// The agent console: keeps the visitors as the service tells them and shows the selected one.

import { AgentActions } from './agentActions.js';
import { AgentDialog, Agents } from './agents.js';
import { AgentChannel } from './agentChannel.js';
import { ChatPanel } from './chatPanel.js';
import { Connection } from './connection.js';
import { showConnection } from './connectionPill.js';
import { ContactCard } from './contactCard.js';
import { ContactList } from './contactList.js';
import { Contacts, showUnread } from './contacts.js';
import { ControlBar } from './controlBar.js';
import { byId, setText } from './dom.js';
import { Happenings, wording } from './happenings.js';
import { JoinForm } from './joinForm.js';
import { Notices } from './notices.js';
import { PaneToggle } from './paneToggle.js';
import { PanelTabs } from './panelTabs.js';
import { PhoneView } from './phoneView.js';
import { PictureControl } from './pictureControl.js';
import { deviceSize, pointsAcross } from './screenGeometry.js';
import { RecordingSwitch } from './recordingSwitch.js';
import { contactKey, fromAddress, toAddress } from './selection.js';
import { SessionHead } from './sessionHead.js';
import { TimelineView } from './timelineView.js';
import { toast } from './toast.js';
import { VisitorList } from './visitorList.js';
import { visitorState } from './visitorState.js';
import { Zoom } from './zoom.js';

const REFRESH_MS = 500;
// Within which a session that ended and one that starts are a restart under a new identity.
const RESTART_MS = 15000;
const TITLE = document.title;
// Where the list of visitors lies over the picture.
const NARROW = matchMedia('(max-width: 1199.98px)');

const visitors = new Map();
const contacts = new Contacts();
// The session on view, and the person: that of the session, or one without.
let selected = null;
let chosen = null;
let invited = null;
// What the page's address asks for, until it is there.
let wanted = fromAddress();
let clockOffset = 0;

const list = new VisitorList(select);
const head = new SessionHead();
const phone = new PhoneView();
const timeline = new TimelineView();
const channel = new AgentChannel(() => visitors.get(selected), toast);
const actions = new AgentActions(channel);
const control = new PictureControl(phone, channel);
const presentList = new ContactList('present', { onSelect: selectContact, onInvite: invite });
const earlierList = new ContactList('earlier', { onSelect: selectContact });
const recordingSwitch = new RecordingSwitch(toast);
const card = new ContactCard(selectContact);
const chat = new ChatPanel(toast, () => tabs.choose('chat'));
const tabs = new PanelTabs(() => chat.shown());
const zoom = new Zoom();
const agents = new Agents();
const agentDialog = new AgentDialog(agents);
const controlBar = new ControlBar(agents);
const notices = new Notices();
const happenings = new Happenings({ onVisitor: tellVisitor, onAnswer: tellAnswer, onMessage: tellMessage });
const nav = new PaneToggle('nav-toggle', 'nav', true);
const connection = new Connection({ onState: connectionChanged, onMessage: receive, onFrame: receiveFrame });

function now() {
  return Date.now() + clockOffset;
}

function select(id) {
  selected = id;
  if (NARROW.matches) nav.show(false);
  notices.withdraw(`visitor-${id}`);
  phone.clear();
  control.leave();
  timeline.add([], true);
  connection.watch(id ?? '');
  choosePerson();
  show();
}

/** Opens the chat with somebody, and the session if there is one. */
function selectContact(id) {
  tabs.choose('chat');
  const contact = contacts.get(id);
  const session = !contact.continuedAs && sessionOf(contact);
  if (session) {
    select(session.id);
    return;
  }
  chosen = null;
  select(null);
  choose(id);
  show();
}

/** The person of the session on view, as whom it may go on meanwhile; without a session, whoever was chosen. */
function choosePerson() {
  if (selected !== null) choose(contacts.current(contacts.of(visitors.get(selected)))?.id ?? null);
  else if (!contacts.get(chosen)) choose(null);
}

function choose(id) {
  if (id === chosen) return;
  chosen = id;
  chat.choose(id);
  connection.watchChat(id ?? '');
}

function receive(message) {
  clockOffset = message.now - Date.now();
  if (message.type === 'visitors') receiveVisitors(message);
  if (message.type === 'contacts') receiveContacts(message);
  if (message.type === 'agents') receiveAgents(message);
  if (message.type === 'chat' && message.contact === chosen) receiveChat(message);
  if (message.type === 'timeline' && message.visitor === selected) receiveTimeline(message);
}

function receiveVisitors(message) {
  if (message.complete) {
    visitors.clear();
    contacts.updatePresent(message.present);
  }
  for (const visitor of message.visitors) visitors.set(visitor.id, visitor);
  if (selected !== null && !visitors.has(selected)) selected = null;
  const next = takeInvited() ?? takeWanted() ?? nextSession();
  choosePerson();
  if (next) select(next.id);
  else show();
  happenings.visitors([...visitors.values()]);
}

/** The session that the page's address names, once; says so when it is not there. */
function takeWanted() {
  if (!wanted?.session) return undefined;
  const { session } = wanted;
  wanted = null;
  const visitor = [...visitors.values()].find(({ sessionId }) => sessionId === session);
  if (!visitor) toast('The session of that address is not here any more.');
  return visitor;
}

function receiveAgents(message) {
  for (const id of agents.update(message)) {
    const visitor = visitors.get(id);
    if (visitor) notices.tell({ ...wording.handOver(visitor, contacts.of(visitor)), onView: id === selected, open: () => select(id) });
  }
  show();
}

/** The session to be shown in place of the one on view, or of none. */
function nextSession() {
  if (selected !== null) return continuation(visitors.get(selected));
  const contact = contacts.get(chosen);
  if (!contact) return firstVisitor();
  return contact.continuedAs ? undefined : sessionOf(contact);
}

function receiveContacts(message) {
  const before = contacts.get(chosen);
  if (contacts.update(message.contacts)) {
    choose(null);
    chat.forgetDrafts();
  }
  choosePerson();
  happenings.contacts(message.contacts);
  if (wanted?.contact) {
    const person = message.contacts.find((contact) => contactKey(contact) === wanted.contact);
    wanted = null;
    if (person) selectContact(person.id);
  }
  const { continuedAs } = contacts.get(chosen) ?? {};
  if (selected === null && before && !before.continuedAs && continuedAs) choose(continuedAs);
  show();
}

function receiveChat(message) {
  chat.receive(message);
  show();
}

/** The latest visitor, of those that have not ended if there are any. */
function firstVisitor() {
  const latestFirst = [...visitors.values()].reverse();
  return latestFirst.find((visitor) => visitor.state !== 'ended') ?? latestFirst[0];
}

/**
 * The new session of a visitor whose own has ended: an app that was in the background comes back under new ids, one whose
 * visitor was identified restarts.
 */
function continuation(ended) {
  if (ended.state !== 'ended') return undefined;
  return [...visitors.values()].find((visitor) => visitor.state === 'live' && (isSame(visitor, ended) || restarted(visitor, ended)));
}

const isSame = (visitor, ended) => ended.shareId && visitor.shareId === ended.shareId && visitor.visitorId === ended.visitorId;

function restarted(visitor, ended) {
  const person = contacts.current(contacts.of(ended));
  return person && contacts.current(contacts.of(visitor)) === person && visitor.startedAt >= ended.endedAt
    && Math.abs(ended.endedAt - person.identifiedAt) < RESTART_MS;
}

/** The session that an invited visitor has started since, once. */
function takeInvited() {
  const session = invited && sessionOf(invited);
  if (session) invited = null;
  return session ?? undefined;
}

/** The last session of a present visitor that goes on. One that ended without a word is silent. */
function sessionOf({ tenantId, visitorId }) {
  return [...visitors.values()].findLast((visitor) => visitor.tenantId === tenantId && visitor.visitorId === visitorId
    && ['live', 'waiting'].includes(visitorState(visitor, now()).key));
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

function receiveFrame(picture) {
  if (picture.visitor === selected) phone.frame(picture);
}

function tellVisitor(visitor) {
  notices.tell({ ...wording.visitor(visitor, contacts.of(visitor)), onView: visitor.id === selected, open: () => select(visitor.id) });
}

function tellAnswer(visitor, answer) {
  notices.tell({ ...wording.answer(visitor, contacts.of(visitor), answer), open: () => select(visitor.id) });
}

function tellMessage(contact) {
  notices.tell({ ...wording.message(contact), onView: contact.id === chosen && tabs.isShown('chat'), open: () => selectContact(contact.id) });
}

function show() {
  list.show(visitors.values(), selected, now(), contacts, agents);
  agentDialog.show();
  if (!wanted) toAddress(visitors.get(selected), contacts.get(chosen));
  const present = contacts.present(sessionOf);
  presentList.show(present, chosen);
  earlierList.show(contacts.earlier(sessionOf), chosen);
  setText(byId('empty-title'), present.length > 0 ? 'No session yet' : 'No visitors yet');
  const unread = contacts.unread();
  document.title = unread > 0 ? `(${unread}) ${TITLE}` : TITLE;
  const visitor = visitors.get(selected);
  const contact = contacts.get(chosen);
  byId('empty').hidden = Boolean(visitor || contact);
  byId('session').hidden = !byId('empty').hidden;
  showSession(visitor, contact);
  showPerson(contact);
}

function showSession(visitor, contact) {
  byId('session').toggleAttribute('data-chat-only', !visitor);
  tabs.update(visitor !== undefined);
  if (!visitor) return;
  head.update(visitor, contact, now(), phone.skipped);
  recordingSwitch.update(visitor);
  phone.update(visitor, now());
  const held = agents.heldBy(visitor.id);
  controlBar.update(visitor, now());
  actions.update(visitor, now(), held);
  control.update(visitor, held, performance.now());
  if (phone.picture) zoom.update(pointsAcross(phone.picture, visitor.screen));
}

function showPerson(contact) {
  for (const id of ['card', 'chat-form', 'chat-state']) byId(id).hidden = !contact;
  showUnread(byId('chat-tab'), byId('chat-unread'), contact);
  if (!contact) return;
  card.update(contact, contacts.presenceOf(contact), contacts.before(contact));
  chat.update(contact, now());
}

function connectionChanged(state) {
  showConnection(state);
  // A restarted service numbers its visitors anew.
  if (state !== 'connected') return;
  phone.clear();
  happenings.restart();
  agents.restart();
}

byId('start-command').textContent = `merovanta-bank --server ${location.host} --start`;
new JoinForm(join);
byId('copy-link').addEventListener('click', async () => {
  const copied = await navigator.clipboard?.writeText(location.href).then(() => true, () => false);
  toast(copied ? 'The link is copied.' : 'The browser does not let this page copy: take the address above.');
});
window.addEventListener('hashchange', () => {
  wanted = fromAddress();
  const next = takeWanted();
  if (next) select(next.id);
});
new PaneToggle('pane-toggle', 'pane', true);
NARROW.addEventListener('change', () => nav.show(!NARROW.matches || selected === null));
setInterval(show, REFRESH_MS);
connection.open();
