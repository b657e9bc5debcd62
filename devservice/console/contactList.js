import { showUnread, visitorName } from './contacts.js';
import { byId, element, setText } from './dom.js';
import * as format from './format.js';

const BUTTON = { none: 'Invite', waiting: 'Inviting…', delivered: 'Invite again' };
const NOTE = { none: '', waiting: 'Waits for the next poll', delivered: 'Invitation delivered' };

/** People without a session, by section of the page: whoever is present can be invited, whoever is known written to. */
export class ContactList {
  #section;
  #list;
  #count;
  #rows = new Map();
  #handlers;

  /** handlers: onSelect(contact id), onInvite(presence) */
  constructor(name, handlers) {
    this.#section = byId(name);
    this.#list = byId(`${name}-list`);
    this.#count = byId(`${name}-count`);
    this.#handlers = handlers;
  }

  /** Entries are {contact, presence}, either of which may be missing. */
  show(entries, selected) {
    this.#section.hidden = entries.length === 0;
    setText(this.#count, String(entries.length));
    const shown = new Set(entries.map(keyOf));
    for (const [key, row] of this.#rows) {
      if (shown.has(key)) continue;
      row.item.remove();
      this.#rows.delete(key);
    }
    for (const entry of entries) {
      const row = this.#rows.get(keyOf(entry)) ?? this.#add(keyOf(entry));
      row.entry = entry;
      this.#describe(row, entry, selected);
      this.#showInvitation(row, entry);
    }
  }

  #add(key) {
    const row = {
      item: element('li', 'present'),
      open: element('button', 'present-open'),
      name: element('span', 'present-name'),
      note: element('span', 'present-note'),
      badge: element('span', 'unread'),
      button: element('button', 'button'),
    };
    row.open.type = row.button.type = 'button';
    row.open.append(row.name, row.badge, row.note);
    row.open.addEventListener('click', () => this.#handlers.onSelect(row.entry.contact.id));
    row.button.addEventListener('click', () => this.#handlers.onInvite(row.entry.presence));
    row.item.append(row.open, row.button);
    this.#list.append(row.item);
    this.#rows.set(key, row);
    return row;
  }

  #describe(row, { contact, presence }, selected) {
    setText(row.name, nameOf({ contact, presence }));
    row.name.title = (presence ?? contact).visitorId;
    const since = format.time(presence?.joinedAt ?? (presence ?? contact).firstSeenAt);
    const place = presence?.page || (contact?.chatOpen ? 'In the chat' : '');
    setText(row.note, NOTE[presence?.invitation] || contact?.lastMessage?.text || [place, since].filter(Boolean).join(' · '));
    row.note.title = `Here since ${since}`;
    row.open.disabled = !contact;
    row.item.dataset.contact = contact?.id ?? '';
    if (contact && contact.id === selected) row.open.setAttribute('aria-current', 'true');
    else row.open.removeAttribute('aria-current');
    showUnread(row.item, row.badge, contact);
  }

  #showInvitation(row, { contact, presence }) {
    row.button.hidden = !presence;
    row.item.dataset.invitation = presence?.invitation ?? 'none';
    if (!presence) return;
    row.button.disabled = !presence.listens || presence.invitation === 'waiting';
    row.button.title = presence.listens ? '' : 'This app takes no invitations at present';
    setText(row.button, BUTTON[presence.invitation]);
    const name = nameOf({ contact, presence });
    row.button.setAttribute('aria-label', `${BUTTON[presence.invitation]}: visitor ${name}, to co-browse`);
  }
}

const keyOf = ({ contact, presence }) => JSON.stringify([(presence ?? contact).tenantId, (presence ?? contact).visitorId]);

const nameOf = ({ contact, presence }) => (!contact?.identity && presence?.customerId) || visitorName(presence ?? contact, contact);
