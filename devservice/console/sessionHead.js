import { visitorName } from './contacts.js';
import { byId, element, setText } from './dom.js';
import { lineQuality, losses, roundTrip } from './lineQuality.js';
import { shareCode, visitorState } from './visitorState.js';
import * as format from './format.js';

const FACTS = [
  ['trip', 'Round trip', (v) => roundTrip(v)],
  ['gap', 'Ping gap, longest', (v) => (v.line.pingGap === null ? '—' : `${format.age(v.line.pingGap)}, ${format.age(v.line.longestGap)}`)],
  ['ping', 'Ping age', (v, now) => (v.lastPingAt === null || v.state === 'ended' ? '—' : format.age(now - v.lastPingAt))],
  ['fps', 'Frames/s', (v) => (v.state === 'ended' ? '—' : v.framesPerSecond.toFixed(1))],
  ['rate', 'Bytes/s', (v) => (v.state === 'ended' ? '—' : format.bytes(v.bytesPerSecond))],
  ['duration', 'Duration', (v, now) => (v.startedAt === null ? '—' : format.span((v.endedAt ?? now) - v.startedAt))],
  ['frames', 'Frames', (v) => format.count(v.counters.frames)],
  ['pages', 'Pages', (v) => format.count(v.counters.pages)],
  ['taps', 'Taps', (v) => format.count(v.counters.taps)],
  ['bytes', 'Received', (v) => format.bytes(v.counters.bytes)],
  ['losses', 'Losses', (v, now, skipped) => losses(v, skipped)],
  ['screen', 'Screen', (v) => screen(v)],
  ['visitor', 'Visitor id', (v) => v.visitorId || '—'],
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
  return [visitorName(visitor, contact), visitor.tenantId ? `Tenant ${visitor.tenantId}` : ''].filter(Boolean).join(' · ');
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

  /** `skipped`: how many of its pictures were overtaken on their way here. */
  update(visitor, contact, now, skipped) {
    const state = visitorState(visitor, now);
    setText(byId('share-code'), shareCode(visitor));
    setText(byId('page'), visitor.page || 'No page yet');
    setText(byId('identity'), identity(visitor, contact));
    const pill = byId('state-pill');
    pill.dataset.state = state.key;
    setText(pill, state.label);
    pill.title = state.note;
    const line = lineQuality(visitor, now);
    byId('line').dataset.level = line.level;
    setText(byId('line-label'), line.label);
    byId('line').title = `Round trip ${roundTrip(visitor)}, ${visitor.framesPerSecond.toFixed(1)} pictures/s, losses: ${losses(visitor, skipped)}`;
    byId('line').hidden = visitor.state !== 'live';
    byId('transport').hidden = visitor.transport !== 'websocket';
    for (const [key, , value] of FACTS) setText(this.#values.get(key), value(visitor, now, skipped));
  }
}
