// How what happened in a session is worded.

import { describe } from './agentMessages.js';

function userTag(detail) {
  const name = [detail.firstname, detail.lastname].filter(Boolean).join(' ');
  const rest = [detail.email, detail.id && `id ${detail.id}`, detail.assignedUser && `agent ${detail.assignedUser}`];
  return [name, ...rest, ...(detail.label ?? []).map((label) => `#${label}`)].filter(Boolean).join(' · ');
}

/** Why a session is over. */
export const ENDINGS = {
  visitor: 'by the visitor', agent: 'by an agent', background: 'the app closed the stream', silent: 'no word from the app for a minute', unopened: 'never began to stream',
  away: 'in the background for long', continued: 'goes on as a newer one', service: 'the service was ended',
};

// Kind to [title, text].
const WORDING = {
  init: (e) => ['Session initialised', [e.text, e.detail.forced && 'forced'].filter(Boolean).join(' · ')],
  connect: (e) => ['Stream opened', [e.text, e.detail.transport === 'websocket' && 'WebSocket'].filter(Boolean).join(' · ')],
  disconnect: (e) => ['Connection closed', e.text],
  end: (e) => ['Session ended', ENDINGS[e.detail?.reason] ?? ''],
  page: (e) => ['Page', e.text],
  tap: (e) => ['Tap', `${Math.round(e.detail.x)}, ${Math.round(e.detail.y)} px`],
  tag: (e) => ['Tag', e.text],
  userTag: (e) => ['Visitor identified', userTag(e.detail)],
  picture: (e) => ['Picture', `${e.text} px`],
  consent: (e) => ['Consent', e.text],
  activity: (e) => ['Activity', e.text],
  agent: (e) => [e.detail?.agent?.name ?? 'Agent', describe(e.text)],
  warning: (e) => ['Warning', e.text],
};

/** [title, text] of a timeline's entry. */
export const wording = (entry) => (WORDING[entry.kind] ?? ((e) => [e.kind, e.text]))(entry);
