import { setText } from './dom.js';

const isSame = (a, b) => a.tenantId === b.tenantId && a.visitorId === b.visitorId;

// Ids that a machine made are not for reading.
const isMachineMade = (id) => /^[0-9a-f-]{16,}$/i.test(id);

/** What an identified person is called; empty when nobody knows. */
export function personName(contact) {
  const who = contact?.identity;
  if (!who) return '';
  return [who.firstname, who.lastname].filter(Boolean).join(' ') || who.email || (who.id && !isMachineMade(who.id) ? who.id : '');
}

/** What somebody is called, known or not; `visitor` is a session, a presence or a contact. */
export function visitorName(visitor, contact) {
  return personName(contact) || personName({ identity: visitor.userTag }) || anonymousName(visitor.visitorId);
}

const anonymousName = (id) => (isMachineMade(id) ? `Visitor ${id.replaceAll('-', '').slice(0, 4).toUpperCase()}` : id || 'Visitor');

/** Shows how many messages the agent has not read. */
export function showUnread(row, badge, contact) {
  const unread = contact?.unread ?? 0;
  badge.hidden = unread === 0;
  row.dataset.unread = unread;
  setText(badge, String(unread));
  badge.setAttribute('aria-label', `${unread} unread`);
}

/** The people the service knows, as it tells them, with a session or without one. */
export class Contacts {
  #known = new Map();
  #present = [];

  /** Returns whether an id means somebody else than before: a restarted service numbers people anew. */
  update(contacts) {
    const before = this.#known;
    this.#known = new Map(contacts.map((contact) => [contact.id, contact]));
    return contacts.some((contact) => before.has(contact.id) && !isSame(before.get(contact.id), contact));
  }

  updatePresent(present) {
    this.#present = present;
  }

  get(id) {
    return this.#known.get(id);
  }

  /** The contact of a session or a presence. */
  of(visitor) {
    return visitor && [...this.#known.values()].find((contact) => isSame(contact, visitor));
  }

  /** Whose app polls the channels, if it does. */
  presenceOf(contact) {
    return this.#present.find((presence) => isSame(presence, contact));
  }

  /** The contact as which a person is here now. */
  current(contact) {
    return contact?.continuedAs ? this.current(this.get(contact.continuedAs)) ?? contact : contact;
  }

  /** Under which other visitor ids the same person was here before, the latest last. */
  before(contact) {
    return [...this.#known.values()].filter(({ continuedAs }) => continuedAs === contact.id);
  }

  unread() {
    return [...this.#known.values()].reduce((sum, { unread }) => sum + unread, 0);
  }

  /** {contact, presence} of those who are here without a session: their app polls, or their chat is open. */
  present(hasSession) {
    const polling = this.#present.map((presence) => ({ contact: this.of(presence), presence }));
    const chatting = [...this.#known.values()].filter((contact) => contact.chatOpen && !this.presenceOf(contact))
      .map((contact) => ({ contact, presence: null }));
    return [...polling, ...chatting]
      .filter(({ contact, presence }) => !contact?.continuedAs && !hasSession(presence ?? contact));
  }

  /** Those who have chatted and are not here. */
  earlier(hasSession) {
    return [...this.#known.values()]
      .filter((contact) => contact.lastMessage && !hasSession(contact)
        && (contact.continuedAs || !(contact.chatOpen || this.presenceOf(contact))))
      .map((contact) => ({ contact, presence: null }));
  }
}
