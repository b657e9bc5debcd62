import { personName } from './contacts.js';
import { byId, element, setText } from './dom.js';
import { shareCode, visitorState } from './visitorState.js';
import * as format from './format.js';

const FACTS = [
  ['ping', 'Ping age', (v, now) => (v.lastPingAt === null || v.state === 'ended' ? '—' : format.age(now - v.lastPingAt))],
  ['fps', 'Frames/s', (v) => (v.state === 'ended' ? '—' : v.framesPerSecond.toFixed(1))],
  ['rate', 'Bytes/s', (v) => (v.state === 'ended' ? '—' : format.bytes(v.bytesPerSecond))],
  ['duration', 'Duration', (v, now) => (v.startedAt === null ? '—' : format.span((v.endedAt ?? now) - v.startedAt))],
  ['frames', 'Frames', (v) => format.count(v.counters.frames)],
  ['pages', 'Pages', (v) => format.count(v.counters.pages)],
  ['taps', 'Taps', (v) => format.count(v.counters.taps)],
  ['bytes', 'Received', (v) => format.bytes(v.counters.bytes)],
  ['screen', 'Screen', (v) => screen(v)],
  ['session', 'Session', (v) => v.sessionId || '—'],
];

function screen(visitor) {
  const { width, height } = visitor.screen;
  if (!width || !height) return '—';
  // The picture is a third of the device pixels, so it tells the screen's scale.
  const scale = visitor.picture ? Math.round((visitor.picture.width * 3 * 10) / width) / 10 : null;
  return `${width} × ${height} pt${scale ? ` @${scale}x` : ''}`;
}

function identity(visitor, contact) {
  const name = personName(contact) || personName({ identity: visitor.userTag });
  const parts = [visitor.tenantId ? `Tenant ${visitor.tenantId}` : '', visitor.visitorId ? `Visitor ${visitor.visitorId}` : ''];
  return [name, ...parts].filter(Boolean).join(' · ');
}

/** Share code, state, page and the figures of the selected visitor. */
export class SessionHead {
  #values = new Map();

  constructor() {
    for (const [key, label] of FACTS) {
      const group = element('div', `fact fact-${key}`);
      const value = element('dd', 'fact-value');
      group.append(element('dt', 'fact-label', label), value);
      byId('facts').append(group);
      this.#values.set(key, value);
    }
  }

  update(visitor, contact, now) {
    const state = visitorState(visitor, now);
    setText(byId('share-code'), shareCode(visitor));
    setText(byId('page'), visitor.page || 'No page yet');
    setText(byId('identity'), identity(visitor, contact));
    const pill = byId('state-pill');
    pill.dataset.state = state.key;
    setText(pill, state.label);
    byId('transport').hidden = visitor.transport !== 'websocket';
    for (const [key, , value] of FACTS) setText(this.#values.get(key), value(visitor, now));
    this.#values.get('session').title = visitor.sessionId;
  }
}
