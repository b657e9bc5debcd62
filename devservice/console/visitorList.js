import { showFaces } from './agents.js';
import { showUnread, visitorName } from './contacts.js';
import { byId, element, setText } from './dom.js';
import { shareCode, visitorState } from './visitorState.js';

/** The visitors by share code; live ones first, ended ones last, the latest first among equals. */
export class VisitorList {
  #list = byId('visitor-list');
  #ended = byId('ended-list');
  #items = new Map();
  #onSelect;

  constructor(onSelect) {
    this.#onSelect = onSelect;
    for (const each of [this.#list, this.#ended]) each.addEventListener('keydown', (event) => this.#moveFocus(event));
  }

  show(visitors, selected, now, contacts, agents) {
    const ordered = [...visitors].sort((a, b) => rank(a) - rank(b) || Number(b.id) - Number(a.id));
    const ids = new Set(ordered.map((visitor) => visitor.id));
    for (const [id, item] of this.#items) {
      if (!ids.has(id)) {
        item.row.remove();
        this.#items.delete(id);
      }
    }
    const isOver = (visitor) => visitor.id !== selected && visitorState(visitor, now).key === 'ended';
    const here = ordered.filter((visitor) => !isOver(visitor));
    const ended = ordered.filter(isOver);
    for (const [place, group] of [[this.#list, here], [this.#ended, ended]]) {
      group.forEach((visitor, index) => {
        const item = this.#items.get(visitor.id) ?? this.#add(visitor.id);
        this.#update(item, visitor, visitor.id === selected, now, contacts.of(visitor));
        showFaces(item.faces, agents, visitor.id);
        if (place.children[index] !== item.row) place.insertBefore(item.row, place.children[index] ?? null);
      });
    }
    setText(byId('visitor-count'), String(here.length));
    setText(byId('ended-count'), String(ended.length));
    byId('ended').hidden = ended.length === 0;
    byId('visitor-hint').hidden = ordered.length > 0;
  }

  #add(id) {
    const item = {
      row: element('li'),
      button: element('button', 'visitor'),
      code: element('span', 'visitor-code'),
      pill: element('span', 'pill'),
      page: element('span', 'visitor-page'),
      tenant: element('span', 'visitor-tenant'),
      badge: element('span', 'unread'),
      faces: element('span', 'faces'),
    };
    item.button.type = 'button';
    item.button.append(item.code, item.pill, item.page, item.tenant, item.badge, item.faces);
    item.button.addEventListener('click', () => this.#onSelect(id));
    item.row.append(item.button);
    this.#items.set(id, item);
    return item;
  }

  #update(item, visitor, selected, now, contact) {
    const state = visitorState(visitor, now);
    item.pill.dataset.state = state.key;
    setText(item.pill, state.label);
    setText(item.code, shareCode(visitor));
    setText(item.page, visitor.page || 'No page yet');
    setText(item.tenant, `${visitorName(visitor, contact)} · ${visitor.tenantId || 'No tenant'}`);
    showUnread(item.row, item.badge, contact);
    if (selected === item.button.hasAttribute('aria-current')) return;
    item.button.toggleAttribute('aria-current', selected);
    if (!selected) return;
    item.button.setAttribute('aria-current', 'true');
    item.row.scrollIntoView({ block: 'nearest', inline: 'nearest' });
  }

  #moveFocus(event) {
    const step = { ArrowDown: 1, ArrowRight: 1, ArrowUp: -1, ArrowLeft: -1 }[event.key];
    if (!step) return;
    const buttons = [...document.querySelectorAll('.visitor')];
    const next = buttons[buttons.indexOf(document.activeElement) + step];
    if (!next) return;
    event.preventDefault();
    next.focus();
  }
}

function rank(visitor) {
  return ['live', 'waiting', 'ended'].indexOf(visitor.state);
}
