import { byId, element } from './dom.js';
import * as format from './format.js';
import { wording } from './timelineWording.js';

const MOST_ENTRIES = 500;

const FILTERS = [
  ['all', 'All', () => true],
  ['pages', 'Pages', (kind) => ['page', 'init', 'connect', 'disconnect', 'end'].includes(kind)],
  ['taps', 'Taps', (kind) => kind === 'tap'],
  ['agent', 'Agent', (kind) => kind === 'agent'],
  ['tags', 'Tags', (kind) => ['tag', 'userTag', 'activity', 'consent'].includes(kind)],
  ['warnings', 'Warnings', (kind) => kind === 'warning'],
];

/** The history of the visitor's session, newest first. */
export class TimelineView {
  #list = byId('timeline');
  #entries = [];
  #filter = FILTERS[0];

  constructor() {
    for (const filter of FILTERS) {
      const button = element('button', 'chip', filter[1]);
      button.type = 'button';
      button.setAttribute('aria-pressed', String(filter === this.#filter));
      button.addEventListener('click', () => this.#choose(filter));
      byId('filters').append(button);
    }
  }

  add(entries, reset) {
    if (reset) {
      this.#entries = [];
      this.#list.replaceChildren();
    }
    for (const entry of entries) {
      this.#entries.push(entry);
      if (this.#filter[2](entry.kind)) this.#list.prepend(this.#row(entry));
    }
    this.#entries = this.#entries.slice(-MOST_ENTRIES);
    while (this.#list.childElementCount > MOST_ENTRIES) this.#list.lastElementChild.remove();
    byId('timeline-empty').hidden = this.#list.childElementCount > 0;
  }

  #choose(filter) {
    this.#filter = filter;
    for (const button of byId('filters').children) {
      button.setAttribute('aria-pressed', String(button.textContent === filter[1]));
    }
    this.add(this.#entries, true);
  }

  #row(entry) {
    const [title, text] = wording(entry);
    const row = element('li', 'entry');
    row.dataset.kind = entry.kind;
    const when = element('time', 'entry-time', format.time(entry.at));
    when.dateTime = new Date(entry.at).toISOString();
    if (entry.time !== null) when.title = `${format.span(entry.time)} after the session's start`;
    const body = element('p', 'entry-body');
    body.append(element('span', 'entry-title', title));
    if (text) body.append(' ', element('span', 'entry-text', text));
    row.append(element('span', 'entry-dot'), body, when);
    return row;
  }
}
