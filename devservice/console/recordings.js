// The list of recorded sessions: searched, filtered, and opened.

import { byId, setText } from './dom.js';
import * as format from './format.js';
import { recordingRow } from './recordingRow.js';

const TYPING_MS = 150;
const REFRESH_MS = 5000;
const PAGE = 50;
const DAY_MS = 86_400_000;

const form = byId('search');
const list = byId('list');
let asked = 0;
let wanted = PAGE;
let typing = 0;

/** What the form asks for; a day is the agent's own, from midnight to midnight. */
function query() {
  const { q, from, to, show } = form.elements;
  const midnight = (day) => new Date(`${day}T00:00`).getTime();
  const parameters = new URLSearchParams();
  if (q.value.trim()) parameters.set('q', q.value.trim());
  if (from.value) parameters.set('from', midnight(from.value));
  // A day of the clock's change is longer or shorter; noon of the next is on the next in any case.
  if (to.value) parameters.set('to', new Date(midnight(to.value) + 1.5 * DAY_MS).setHours(0, 0, 0, 0));
  if (show.value) parameters.set('show', show.value);
  return parameters;
}

async function load() {
  clearTimeout(typing);
  asked += 1;
  const mine = asked;
  const parameters = query();
  try {
    const found = { recordings: [] };
    while (found.recordings.length < wanted) {
      parameters.set('limit', Math.min(wanted - found.recordings.length, 200));
      parameters.set('offset', found.recordings.length);
      // To the service "+" is a plus sign.
      const reply = await fetch(`/console/api/recordings?${String(parameters).replaceAll('+', '%20')}`);
      const body = await reply.json();
      if (!reply.ok) throw new Error(body.error);
      Object.assign(found, body, { recordings: [...found.recordings, ...body.recordings] });
      if (body.recordings.length === 0 || found.recordings.length >= found.total) break;
    }
    if (mine === asked) show(found);
  } catch (error) {
    if (mine === asked) complain(`The recordings cannot be listed: ${error.message}`);
  }
}

function show({ total, recordings, storage }) {
  complain(storage.problem ? `Nothing is recorded at present: ${storage.problem}` : '');
  list.replaceChildren(...recordings.map((recording) => recordingRow(recording, Date.now())));
  setText(byId('found'), `${format.count(total)} ${total === 1 ? 'recording' : 'recordings'}`);
  setText(byId('kept'), storage.maxDays === undefined ? '' : `Kept for ${storage.maxDays} days and up to ${format.bytes(storage.maxBytes)}, `
    + `of which ${format.bytes(storage.bytes)} are taken; then the oldest are deleted.`);
  byId('more').hidden = recordings.length >= total;
  byId('none').hidden = total > 0;
  setText(byId('none'), nothingText(storage));
}

function nothingText(storage) {
  if (!storage.enabled) return 'The service records nothing: start it with --data and a directory.';
  return [...query()].length > 0 ? 'Nothing is found.' : 'No session has been recorded yet.';
}

function complain(text) {
  byId('problem').hidden = text === '';
  setText(byId('problem'), text);
}

/** The address holds what is asked for, so that a reload and a way back show the same. */
function changed() {
  const address = new URLSearchParams([...new FormData(form)].filter(([, value]) => value));
  history.replaceState(null, '', `${location.pathname}${address.size ? `?${address}` : ''}`);
  wanted = PAGE;
  load();
}

for (const [name, value] of new URLSearchParams(location.search)) {
  if (form.elements[name]) form.elements[name].value = value;
}
form.addEventListener('submit', (event) => {
  event.preventDefault();
  changed();
});
form.addEventListener('input', () => {
  clearTimeout(typing);
  typing = setTimeout(changed, TYPING_MS);
});
byId('more').addEventListener('click', () => {
  wanted += PAGE;
  load();
});
// Sessions that go on grow; whoever is about to press one is not disturbed.
setInterval(() => {
  if (!document.hidden && !list.matches(':focus-within, :hover')) load();
}, REFRESH_MS);
load();
