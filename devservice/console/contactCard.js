import { personName, visitorName } from './contacts.js';
import { byId, element } from './dom.js';
import * as format from './format.js';

const DEVICES = { MOBILE: 'Mobile', WEB: 'Web' };

/** Who the visitor is and whether it is here. */
export class ContactCard {
  #card = byId('card');
  #onSelect;
  #shown = '';

  /** onSelect(contact id) opens the chat under an earlier visitor id. */
  constructor(onSelect) {
    this.#onSelect = onSelect;
  }

  /** before: the contacts as which the same person was here before. */
  update(contact, presence, before) {
    const state = JSON.stringify([contact, presence, before].map((each) => ({ ...each, lastSeenAt: 0 })));
    if (state === this.#shown) return;
    this.#shown = state;
    const who = contact.identity ?? {};
    this.#card.dataset.contact = contact.id;
    this.#card.replaceChildren(
      this.#line('name', visitorName(contact, contact)),
      this.#line('email', who.email !== personName(contact) && who.email),
      this.#tags(who.tags ?? []),
      this.#line('assigned', who.assignedUser && `Assigned to ${who.assignedUser}`),
      this.#line('id', `${contact.identity ? '' : 'Not identified · '}Id ${contact.visitorId}`),
      this.#line('presence', presenceText(contact, presence)),
      ...before.slice(-1).map((earlier) => this.#earlier(earlier)),
    );
  }

  #line(name, text) {
    const line = element('p', `card-${name}`, text || '');
    line.dataset.field = name;
    line.hidden = !text;
    line.title = text || '';
    return line;
  }

  #tags(tags) {
    const list = element('ul', 'card-tags');
    list.setAttribute('aria-label', 'Tags');
    list.hidden = tags.length === 0;
    list.append(...tags.map((tag) => element('li', 'card-tag', tag)));
    return list;
  }

  #earlier(contact) {
    const button = element('button', 'card-earlier', `Before: visitor ${contact.visitorId}`);
    button.type = 'button';
    button.title = 'Shows the chat under that visitor id';
    button.addEventListener('click', () => this.#onSelect(contact.id));
    return button;
  }
}

function presenceText(contact, presence) {
  const chat = contact.chatOpen ? 'Chat open' : '';
  if (!presence) return chat || (contact.continuedAs ? 'Goes on under another visitor id' : '');
  const since = `here since ${format.time(presence.joinedAt ?? presence.firstSeenAt)}`;
  return [presence.page, since, DEVICES[presence.device] ?? presence.device, chat].filter(Boolean).join(' · ');
}
