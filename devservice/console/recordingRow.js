import { visitorName } from './contacts.js';
import { element } from './dom.js';
import * as format from './format.js';

const personOf = (recording) => recording.name || visitorName(recording);

/** What a recording is called. */
export const recordingTitle = (recording) => `${recording.code || 'No code'} · ${personOf(recording)}`;

export const startText = ({ startedAt }) => new Date(startedAt).toLocaleString(undefined, { dateStyle: 'medium', timeStyle: 'short' });

const NUMBERS = [['notes', 'note', 'notes'], ['chats', 'chat message', 'chat messages'], ['acts', 'act of an agent', 'acts of agents']];

/** A recording in the list, as a link to its player. */
export function recordingRow(recording, now) {
  const row = element('li', 'recording-row');
  const link = element('a', 'recording-link');
  link.href = `/console/recording.html?id=${recording.id}`;
  const live = recording.endedAt === null;
  const length = format.span((live ? now : recording.lastAt) - recording.startedAt);
  link.append(element('span', 'recording-code', recording.code || '—'));
  link.append(element('span', 'recording-who', [personOf(recording), recording.tenantId].filter(Boolean).join(' · ')));
  const when = element('time', 'recording-when', startText(recording));
  when.dateTime = new Date(recording.startedAt).toISOString();
  link.append(when, element('span', 'recording-length', length));
  const page = element('span', 'recording-where', recording.page || 'No page');
  link.append(page);
  const marks = element('span', 'recording-marks');
  if (live) marks.append(pill('live', recording.off ? 'Live, not recorded' : 'Live'));
  for (const label of recording.labels) marks.append(element('span', 'label', label));
  for (const [key, one, many] of NUMBERS) {
    if (recording[key] > 0) marks.append(element('span', 'recording-number', `${recording[key]} ${recording[key] === 1 ? one : many}`));
  }
  link.append(marks, element('span', 'recording-size', `${format.count(recording.pictures)} pictures, ${format.bytes(recording.bytes)}`));
  row.append(link);
  return row;
}

function pill(state, text) {
  const result = element('span', 'pill', text);
  result.dataset.state = state;
  return result;
}
