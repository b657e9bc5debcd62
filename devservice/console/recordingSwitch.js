import { byId, setText } from './dom.js';

const LABELS = { on: 'Recording', off: 'Not recorded', failed: 'Not recording' };

/** Says whether the session on view is recorded, and switches that. */
export class RecordingSwitch {
  #button = byId('recording');
  #visitor = null;
  #toast;

  constructor(toast) {
    this.#toast = toast;
    this.#button.addEventListener('click', () => this.#toggle());
  }

  update({ id, recording }) {
    this.#visitor = id;
    this.#button.hidden = !recording;
    if (!recording) return;
    this.#button.dataset.state = recording.state;
    this.#button.setAttribute('aria-pressed', String(recording.state !== 'off'));
    setText(byId('recording-label'), LABELS[recording.state]);
    this.#button.title = recording.problem ? `Nothing can be recorded: ${recording.problem}`
      : recording.state === 'on' ? 'The session is recorded. Press to stop that.' : 'Press to record the session.';
  }

  async #toggle() {
    const visitor = this.#visitor;
    const on = this.#button.dataset.state === 'off';
    let problem = '';
    try {
      const reply = await fetch(`/console/api/visitors/${visitor}/recording`, { method: 'PUT', body: JSON.stringify({ on }) });
      const answer = await reply.json();
      if (!reply.ok) problem = answer.error;
      else if (visitor === this.#visitor) this.update({ id: visitor, recording: answer });
    } catch {
      problem = 'the service does not answer';
    }
    if (problem) this.#toast(`Recording: ${problem}.`);
  }
}
