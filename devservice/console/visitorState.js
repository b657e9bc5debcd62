// How a visitor's state is worded and coloured.

import * as format from './format.js';

const SILENT_AFTER_MS = 5000;

const ENDINGS = {
  visitor: ' by the visitor',
  agent: ' by an agent',
  away: ': the app was in the background for long',
  continued: ': it goes on as a newer one',
  silent: ': no word from the app for a minute',
  unopened: ': the app never began to stream',
};

/**
 * {key, label, note}: key is one of "live", "silent", "reconnecting", "waiting", "background", "ended"; the note says more
 * where the picture is not live.
 */
export function visitorState(visitor, now) {
  if (visitor.state === 'ended') return over(visitor);
  if (visitor.state === 'waiting') return { key: 'waiting', label: 'Waiting', note: 'Waiting for the app to stream' };
  if (visitor.transport === 'websocket' && !visitor.connected) {
    return { key: 'reconnecting', label: 'Reconnecting', note: 'The connection is lost. The app tries to come back.' };
  }
  const silence = now - visitor.lastSeenAt;
  if (silence > SILENT_AFTER_MS) {
    return { key: 'silent', label: 'Silent', note: `No word from the app for ${format.age(silence)}. It may be reconnecting.` };
  }
  return { key: 'live', label: 'Live', note: '' };
}

function over({ endReason, endedAt }) {
  if (endReason === 'background') {
    return { key: 'background', label: 'In the background', note: `In the background since ${format.time(endedAt)}` };
  }
  return { key: 'ended', label: 'Ended', note: `Session ended at ${format.time(endedAt)}${ENDINGS[endReason] ?? ''}` };
}

/** What the agent calls the visitor by. */
export function shareCode(visitor) {
  return visitor.shareId || '—';
}
