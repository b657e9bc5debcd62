import { byId, setText } from './dom.js';

const LABELS = { connecting: 'Connecting', connected: 'Connected', disconnected: 'Service not reached' };

/** Tells how the page stands with the service. */
export function showConnection(state) {
  const pill = byId('connection');
  pill.dataset.state = state;
  setText(pill, LABELS[state]);
}
