import { describe } from './agentMessages.js';
import { byId, element } from './dom.js';
import * as format from './format.js';

const MOST_ENTRIES = 500;

const FILTERS = [
  ['all', 'All', () => true],
  ['pages', 'Pages', (kind) => ['page', 'init', 'connect', 'disconnect', 'end'].includes(kind)],
  ['taps', 'Taps', (kind) => kind === 'tap'],
  ['agent', 'Agent', (kind) => kind === 'agent'],
  ['tags', 'Tags', (kind) => ['tag', 'userTag', 'activity', 'consent'].includes(kind)],
  ['warnings', 'Warnings', (kind) => kind === 'warning'],
];

function userTag(detail) {
  const name = [detail.firstname, detail.lastname].filter(Boolean).join(' ');
  const rest = [detail.email, detail.id && `id ${detail.id}`, detail.assignedUser && `agent ${detail.assignedUser}`];
  return [name, ...rest, ...(detail.label ?? []).map((label) => `#${label}`)].filter(Boolean).join(' · ');
}

const ENDINGS = {
  visitor: 'by the visitor', agent: 'by an agent', background: 'stream closed, for the background', silent: 'no word from the app for a minute', unopened: 'never began to stream',
};

// Kind to [title, text].
const WORDING = {
  init: (e) => ['Session initialised', [e.text, e.detail.forced && 'forced'].filter(Boolean).join(' · ')],
  connect: (e) => ['Stream opened', [e.text, e.detail.transport === 'websocket' && 'WebSocket'].filter(Boolean).join(' · ')],
  disconnect: (e) => ['Connection closed', e.text],
  end: (e) => ['Session ended', ENDINGS[e.detail?.reason] ?? ''],
  page: (e) => ['Page', e.text],
  tap: (e) => ['Tap', `${Math.round(e.detail.x)}, ${Math.round(e.detail.y)} px`],
  tag: (e) => ['Tag', e.text],
  userTag: (e) => ['Visitor identified', userTag(e.detail)],
  picture: (e) => ['Picture', `${e.text} px`],
  consent: (e) => ['Consent', e.text],
  activity: (e) => ['Activity', e.text],
  agent: (e) => ['Agent', describe(e.text)],
  warning: (e) => ['Warning', e.text],
};

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
    const [title, text] = (WORDING[entry.kind] ?? ((e) => [e.kind, e.text]))(entry);
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
