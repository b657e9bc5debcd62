/** Sends the agent's messages to one visitor, the selected one unless another is named, one after the other. */
export class AgentChannel {
  #selected;
  #say;
  #last = Promise.resolve();

  /** selected() returns the visitor, say(text) tells the agent what came of a message. */
  constructor(selected, say) {
    this.#selected = selected;
    this.#say = say;
  }

  get visitor() {
    return this.#selected();
  }

  /** Resolves to whether the service took the message; `quietly` leaves success to what it shows elsewhere. */
  send({ message, label }, { quietly = false, visitor = this.visitor } = {}) {
    if (!visitor) return Promise.resolve(false);
    const sent = this.#last.then(async () => {
      const problem = await post(visitor.id, message);
      const when = visitor.transport === 'websocket' ? 'sent' : 'goes out with the next reply';
      if (problem || !quietly) this.#say(`${label}: ${problem || when}.`);
      return !problem;
    });
    this.#last = sent;
    return sent;
  }
}

async function post(id, message) {
  try {
    const reply = await fetch(`/console/api/visitors/${id}/messages`, { method: 'POST', body: JSON.stringify(message) });
    return reply.ok ? '' : (await reply.json()).error;
  } catch {
    return 'the service does not answer';
  }
}
