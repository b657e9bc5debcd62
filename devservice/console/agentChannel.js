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

  /**
   * Resolves to the message's number, 0 if the service did not take it. `quietly` leaves success to what it shows
   * elsewhere; a message that goes on with what an earlier one began is sent `again`, and not in the timeline anew.
   */
  send({ message, label }, { quietly = false, visitor = this.visitor, again = false } = {}) {
    if (!visitor) return Promise.resolve(0);
    const sent = this.#last.then(async () => {
      const { number, problem } = await post(visitor.id, message, again);
      const when = visitor.transport === 'websocket' ? 'sent' : 'goes out with the next reply';
      if (problem || !quietly) this.#say(`${label}: ${problem || when}.`);
      return number ?? 0;
    });
    this.#last = sent;
    return sent;
  }
}

async function post(id, message, again) {
  try {
    const reply = await fetch(`/console/api/visitors/${id}/messages${again ? '?again=true' : ''}`, { method: 'POST', body: JSON.stringify(message) });
    const { number, error } = await reply.json();
    return { number, problem: error ?? '' };
  } catch {
    return { problem: 'the service does not answer' };
  }
}
