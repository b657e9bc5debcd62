import { byId, element, setText } from './dom.js';
import * as format from './format.js';

const BUTTON = { none: 'Invite', waiting: 'Inviting…', delivered: 'Invite again' };
const NOTE = { none: '', waiting: 'Waits for the next poll', delivered: 'Invitation delivered' };

/** Visitors whose app is open but shares nothing yet; they can be invited. */
export class PresentList {
  #list = byId('present-list');
  #rows = new Map();
  #onInvite;

  /** onInvite(presence) */
  constructor(onInvite) {
    this.#onInvite = onInvite;
  }

  show(presences) {
    byId('present').hidden = presences.length === 0;
    setText(byId('present-count'), String(presences.length));
    const ids = new Set(presences.map(({ id }) => id));
    for (const [id, row] of this.#rows) {
      if (ids.has(id)) continue;
      row.item.remove();
      this.#rows.delete(id);
    }
    for (const presence of presences) this.#update(this.#rows.get(presence.id) ?? this.#add(presence.id), presence);
  }

  #add(id) {
    const row = {
      item: element('li', 'present'),
      name: element('span', 'present-name'),
      note: element('span', 'present-note'),
      button: element('button', 'button'),
    };
    row.button.type = 'button';
    row.button.addEventListener('click', () => this.#onInvite(row.presence));
    row.item.append(row.name, row.button, row.note);
    this.#list.append(row.item);
    this.#rows.set(id, row);
    return row;
  }

  #update(row, presence) {
    row.presence = presence;
    const name = presence.customerId || presence.visitorId;
    const joined = format.time(presence.joinedAt ?? presence.firstSeenAt);
    setText(row.name, name);
    row.name.title = presence.visitorId;
    setText(row.note, NOTE[presence.invitation] || [presence.page, joined].filter(Boolean).join(' · '));
    row.note.title = `Here since ${joined}`;
    row.item.dataset.invitation = presence.invitation;
    row.button.disabled = !presence.listens || presence.invitation === 'waiting';
    row.button.title = presence.listens ? '' : 'This app takes no invitations at present';
    setText(row.button, BUTTON[presence.invitation]);
    row.button.setAttribute('aria-label', `${BUTTON[presence.invitation]}: visitor ${name}, to co-browse`);
  }
}
