// How a visitor's state is worded and coloured.

const SILENT_AFTER_MS = 5000;

/** {key, label}: key is one of "live", "silent", "waiting", "ended". */
export function visitorState(visitor, now) {
  if (visitor.state === 'live' && now - visitor.lastSeenAt > SILENT_AFTER_MS) return { key: 'silent', label: 'Silent' };
  const labels = { live: 'Live', waiting: 'Waiting', ended: 'Ended' };
  return { key: visitor.state, label: labels[visitor.state] };
}

/** What the agent calls the visitor by. */
export function shareCode(visitor) {
  return visitor.shareId || '—';
}
