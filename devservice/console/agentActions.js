import { CLOSE, CONSENT, FASTER, FORCE } from './agentMessages.js';
import { confirm } from './confirmDialog.js';
import { byId } from './dom.js';
import * as format from './format.js';
import { UsableButton } from './usable.js';
import { visitorState } from './visitorState.js';

// After a refusal the app leaves its visitor in peace for a while.
const PEACE_MS = 30000;
// So long a question is taken to be on the screen.
const QUESTION_MS = 60000;

const REASONS = {
  waiting: () => 'the app has not begun to stream',
  background: () => 'the app is in the background',
  ended: () => 'the session is over',
};

/** The buttons that act on the visitor's session as a whole. */
export class AgentActions {
  #buttons;

  constructor(channel) {
    const sending = (known) => () => channel.send(known);
    this.#buttons = [
      [new UsableButton(byId('consent'), sending(CONSENT)), consentReason],
      [new UsableButton(byId('faster'), sending(FASTER)), fasterReason],
      [new UsableButton(byId('force'), sending(FORCE)), forceReason],
      [new UsableButton(byId('close'), () => close(channel)), () => ''],
    ];
  }

  /** `held` says why another agent keeps this one from acting, empty when none does. */
  update(visitor, now, held = '') {
    const general = REASONS[visitorState(visitor, now).key]?.() ?? held;
    for (const [button, reason] of this.#buttons) button.update(general || reason(visitor, now));
  }
}

async function close(channel) {
  const { visitor } = channel;
  const sure = await confirm({
    title: 'Close the session?',
    text: 'The visitor\u2019s app stops sharing its screen. It can be invited again afterwards.',
    action: 'Close session',
  });
  if (sure) channel.send(CLOSE, { visitor });
}

function consentReason({ consent }, now) {
  if (!consent) return '';
  const since = now - consent.at;
  if (consent.state === 'accepted') return 'the visitor has agreed';
  if (consent.state === 'waiting') return since < QUESTION_MS ? `asked ${format.age(since)} ago, not answered yet` : '';
  return since < PEACE_MS ? `declined; the app takes the question again in ${format.age(PEACE_MS - since)}` : '';
}

function fasterReason({ transport, fasterPolling }) {
  if (transport === 'websocket') return 'this visitor does not poll: its messages come over a WebSocket';
  return fasterPolling ? 'the app polls fast already' : '';
}

const forceReason = ({ counters }) => (counters.frames > 0 ? 'the screen is shared already' : '');
