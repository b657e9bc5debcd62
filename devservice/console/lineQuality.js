// How good a visitor's line is, from what the service measures of it.

import * as format from './format.js';

// An app pings once a second.
const USUAL_GAP_MS = 1500;
const POOR_GAP_MS = 4000;
const POOR_LOSSES = 5;
const LABELS = { 0: 'No line', 1: 'Poor line', 2: 'Slow line', 3: 'Good line' };

/** {level, label}: from 0, none, to 3, good. */
export function lineQuality(visitor, now) {
  const level = levelOf(visitor, now);
  return { level, label: LABELS[level] };
}

function levelOf({ state, transport, connected, line, lastPingAt, lastSeenAt }, now) {
  if (state !== 'live' || (transport === 'websocket' && !connected)) return 0;
  const gap = Math.max(line.longestGap ?? 0, now - (lastPingAt ?? lastSeenAt));
  if (gap > POOR_GAP_MS || line.missedPings > POOR_LOSSES) return 1;
  return gap > 2 * USUAL_GAP_MS || (line.pingGap ?? 0) > USUAL_GAP_MS || line.missedPings > 0 ? 2 : 3;
}

/** By polling, an app's pings wait for the request before: a gap beyond the usual is the round trip. */
export function roundTrip({ state, line }) {
  if (state !== 'live' || line.pingGap === null) return '—';
  return line.pingGap > USUAL_GAP_MS ? `about ${format.age(line.pingGap)}` : 'under 1 s';
}

/** `skipped` pictures were overtaken by newer ones on their way to this page. */
export function losses({ line, counters }, skipped) {
  const counts = [[line.missedPings, 'ping'], [skipped, 'picture skipped', 'pictures skipped'], [counters.disconnects, 'connection']];
  const words = counts.filter(([count]) => count > 0)
    .map(([count, one, many = `${one}s`]) => `${format.count(count)} ${count === 1 ? one : many}`);
  return words.join(', ') || 'none seen';
}
