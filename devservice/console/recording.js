// One recorded session: its player, and what agents write on it.

import { confirm } from './confirmDialog.js';
import { byId, setText } from './dom.js';
import * as format from './format.js';
import { ExportDialog } from './exportDialog.js';
import { RecordingNotes } from './recordingNotes.js';
import { recordingTitle, startText } from './recordingRow.js';
import { ReplayPlayer } from './replayPlayer.js';
import { ENDINGS } from './timelineWording.js';
import { toast } from './toast.js';

const address = `/console/api/recordings/${encodeURIComponent(new URLSearchParams(location.search).get('id') ?? '')}`;

/** The service's reply; rejects with what it says is wrong. */
async function ask(path, method = 'GET', body = undefined) {
  const reply = await fetch(`${address}${path}`, { method, body: body && JSON.stringify(body) });
  const answer = await reply.json();
  if (!reply.ok) throw new Error(answer.error);
  return answer;
}

async function load(number) {
  const reply = await fetch(`${address}/pictures/${number}`);
  if (!reply.ok) throw new Error(`picture ${number}: ${reply.status}`);
  return reply.blob();
}

function complain(what, error) {
  byId('problem').hidden = false;
  setText(byId('problem'), `${what}: ${error.message}`);
}

function describe(recording) {
  const title = recordingTitle(recording);
  document.title = `${title} · Recording`;
  setText(byId('title'), title);
  const about = [startText(recording), format.span(recording.lastAt - recording.startedAt), recording.tenantId,
    `${format.count(recording.pictures)} pictures, ${format.bytes(recording.bytes)}`, ENDINGS[recording.ending]].filter(Boolean).join(' · ');
  setText(byId('about'), about);
  byId('state').hidden = recording.endedAt !== null;
  byId('state').dataset.state = 'live';
  setText(byId('state'), 'Live: reload for what has come since');
  return { title, about };
}

/** Goes to the moment that the address names, if it does. */
function seekAddress(player) {
  const seconds = parseFloat(new URLSearchParams(location.hash.slice(1)).get('t'));
  if (Number.isFinite(seconds)) player.seek(seconds * 1000);
}

async function copyLink(player) {
  history.replaceState(null, '', `#t=${(player.position / 1000).toFixed(3)}`);
  try {
    await navigator.clipboard.writeText(location.href);
    toast('The link is copied.');
  } catch {
    toast("The page's address is the link.");
  }
}

async function remove() {
  const text = 'Its pictures, events, chat and notes are gone for good.';
  if (!await confirm({ title: 'Delete the recording?', text, action: 'Delete recording' })) return;
  try {
    await ask('', 'DELETE');
    location.assign('/console/recordings.html');
  } catch (error) {
    complain('It cannot be deleted', error);
  }
}

async function open() {
  const [recording, { pictures, events }] = await Promise.all([ask(''), ask('/contents')]);
  const texts = describe(recording);
  const shown = { pictures, events, duration: recording.lastAt - recording.startedAt, screen: recording.screen };
  const notes = new RecordingNotes(ask, recording, (error) => complain('That cannot be kept', error));
  const player = new ReplayPlayer(byId('replay'), shown, load, (row, event) => notes.decorate(row, event));
  notes.attach(player);
  const dialog = new ExportDialog({ ...shown, ...texts }, () => notes.list, load);
  byId('export').addEventListener('click', () => dialog.open());
  byId('link').addEventListener('click', () => copyLink(player));
  byId('delete').addEventListener('click', remove);
  window.addEventListener('hashchange', () => seekAddress(player));
  seekAddress(player);
}

// Back to the list as it was searched.
byId('back').addEventListener('click', (event) => {
  if (!document.referrer.startsWith(`${location.origin}/console/recordings.html`)) return;
  event.preventDefault();
  history.back();
});
open().catch((error) => complain('The recording cannot be shown', error));
