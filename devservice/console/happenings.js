// What an agent wants to be told of, wherever it looks: compares what the service says now with what it said before.

import { visitorName } from './contacts.js';

const ANSWERS = { accepted: 'agreed to share the screen', declined: 'declined' };

export class Happenings {
  #visitors = null;
  #unread = null;
  #handlers;

  /** handlers: onVisitor(visitor), onAnswer(visitor, text), onMessage(contact) */
  constructor(handlers) {
    this.#handlers = handlers;
  }

  /** What is there next was there before: nothing of it has happened just now. */
  restart() {
    this.#visitors = null;
    this.#unread = null;
  }

  /** All visitors. */
  visitors(visitors) {
    const before = this.#visitors;
    this.#visitors = new Map([...visitors].map(({ id, consent }) => [id, consent?.state]));
    if (!before) return;
    for (const visitor of visitors) {
      const answer = ANSWERS[visitor.consent?.state];
      if (!before.has(visitor.id) && visitor.state !== 'ended') this.#handlers.onVisitor(visitor);
      else if (answer && before.get(visitor.id) !== visitor.consent.state) this.#handlers.onAnswer(visitor, answer);
    }
  }

  /** All people. */
  contacts(contacts) {
    const before = this.#unread;
    this.#unread = new Map(contacts.map(({ id, unread }) => [id, unread]));
    if (!before) return;
    for (const contact of contacts) if (contact.unread > (before.get(contact.id) ?? 0)) this.#handlers.onMessage(contact);
  }
}

/** The texts of the notices. */
export const wording = {
  visitor: (visitor, contact) => ({ key: `visitor-${visitor.id}`, title: `New visitor: ${visitorName(visitor, contact)}`, text: visitor.page }),
  answer: (visitor, contact, answer) => ({ key: `answer-${visitor.id}`, title: `${visitorName(visitor, contact)} ${answer}`, text: 'The question for consent' }),
  handOver: (visitor, contact) => ({ key: `control-${visitor.id}`, title: 'Another agent asks to take over', text: visitorName(visitor, contact) }),
  message: (contact) => ({ key: `chat-${contact.id}`, title: visitorName(contact, contact), text: contact.lastMessage?.text ?? '' }),
};
