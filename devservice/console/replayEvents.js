import { element } from './dom.js';
import { span } from './format.js';
import { upTo } from './replayClock.js';

const FILTERS = [
  ['All', () => true],
  ['Pages', (kind) => ['page', 'init', 'connect', 'end'].includes(kind)],
  ['Taps', (kind) => kind === 'tap'],
  ['Agent', (kind) => kind === 'agent'],
  ['Chat', (kind) => kind === 'chat'],
  ['Notes', (kind) => kind === 'note'],
];
// So many rows stand in the page, around the current one.
const BEFORE = 40;
const AFTER = 80;
// From the last of them on, the next are put there.
const NEAR_END = 20;

/** What happened in a recording, to be read and gone to. */
export class ReplayEvents {
  #root = element('section', 'replay-events panel');
  #chips = element('div', 'filters');
  #list = element('ol', 'timeline');
  #empty = element('p', 'muted timeline-empty', 'Nothing of this kind.');
  #events = [];
  #listed = [];
  #times = [];
  #filter = FILTERS[0];
  #first = 0;
  #current = -1;
  #row;

  /** `wordingOf` gives [title, text] of an event; `onSeek` is told its moment; `decorate` may add to its row. */
  constructor({ wordingOf, onSeek, decorate }) {
    this.#root.setAttribute('aria-label', 'What happened');
    this.#chips.setAttribute('role', 'group');
    this.#chips.setAttribute('aria-label', 'Show');
    this.#list.setAttribute('aria-label', 'Events');
    this.#row = (event) => row(event, wordingOf(event), onSeek, decorate);
    for (const filter of FILTERS) {
      const chip = element('button', 'chip', filter[0]);
      chip.type = 'button';
      chip.addEventListener('click', () => this.#choose(filter));
      this.#chips.append(chip);
    }
    this.#root.append(this.#chips, this.#list, this.#empty);
    this.#choose(this.#filter);
  }

  get root() {
    return this.#root;
  }

  set(events) {
    this.#events = events;
    this.#choose(this.#filter);
  }

  /** Makes the last event up to a moment the current one. */
  update(position) {
    const current = upTo(this.#times, position) - 1;
    if (current === this.#current) return;
    this.#current = current;
    this.#show();
  }

  #choose(filter) {
    this.#filter = filter;
    for (const chip of this.#chips.children) chip.setAttribute('aria-pressed', String(chip.textContent === filter[0]));
    this.#listed = this.#events.filter(({ kind }) => filter[1](kind));
    const position = this.#times[this.#current] ?? 0;
    this.#times = this.#listed.map(({ at }) => at);
    this.#current = upTo(this.#times, position) - 1;
    this.#fill();
    this.#show();
  }

  #fill() {
    this.#first = Math.max(this.#current - BEFORE, 0);
    const shown = this.#listed.slice(this.#first, this.#first + BEFORE + AFTER);
    this.#list.replaceChildren(...shown.map(this.#row));
    this.#empty.hidden = shown.length > 0;
    this.#list.hidden = shown.length === 0;
  }

  #show() {
    const end = this.#first + BEFORE + AFTER;
    const beyond = this.#current < this.#first || (this.#current >= end - NEAR_END && end < this.#listed.length);
    if (beyond) this.#fill();
    this.#list.querySelector('[aria-current]')?.removeAttribute('aria-current');
    const button = this.#list.children[this.#current - this.#first]?.querySelector('button');
    if (!button) return;
    button.setAttribute('aria-current', 'true');
    // Within the list only; the page stays where it is.
    const { offsetTop, offsetHeight } = button.parentElement;
    const { scrollTop, clientHeight } = this.#list;
    if (offsetTop < scrollTop || offsetTop + offsetHeight > scrollTop + clientHeight) {
      this.#list.scrollTop = offsetTop - clientHeight / 2;
    }
  }
}

function row(event, [title, text], onSeek, decorate) {
  const item = element('li', 'replay-entry');
  item.dataset.kind = event.kind;
  const button = element('button', 'entry');
  button.type = 'button';
  button.addEventListener('click', () => onSeek(event.at));
  const body = element('span', 'entry-body');
  body.append(element('span', 'entry-title', title));
  if (text) body.append(' ', element('span', 'entry-text', text));
  button.append(element('span', 'entry-dot'), body, element('span', 'entry-time', span(event.at)));
  button.dataset.kind = event.kind;
  item.append(button);
  decorate?.(item, event);
  return item;
}
