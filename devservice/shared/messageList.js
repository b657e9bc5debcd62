import { element } from './dom.js';
import * as format from './format.js';

const NEAR_END_PIXELS = 80;
const DOCUMENTS = '/api/in/wc/d/';
const NAMES = { agent: 'Agent', visitor: 'Visitor' };

/** The messages of one chat, the newest last, as the visitor's page and the console both show them. */
export class MessageList {
  #list;
  #scroller;
  #own;
  #waiting = new Map();
  #seen = 0;
  #saves;

  /**
   * `own` is the side whose page this is, "agent" or "visitor"; `scroller` is what scrolls the list. With `saves` a press on a
   * document saves it.
   */
  constructor(list, scroller, own, { saves = false } = {}) {
    this.#saves = saves;
    this.#list = list;
    this.#scroller = scroller;
    this.#own = own;
  }

  /** Adds messages as the service sends them; with `reset` they replace what was shown, except what is unsent. */
  add(messages, reset) {
    const follow = reset || this.#isAtEnd() || messages.some(({ from }) => from === this.#own);
    // Old messages are not read out one by one.
    this.#list.setAttribute('aria-busy', String(reset));
    if (reset) this.#list.replaceChildren(...this.#waiting.values());
    const firstWaiting = () => this.#waiting.values().next().value ?? null;
    for (const message of messages) {
      this.#waiting.get(message.key)?.remove();
      this.#waiting.delete(message.key);
      this.#list.insertBefore(this.#item(message), firstWaiting());
    }
    this.#list.setAttribute('aria-busy', 'false');
    this.#markSeen();
    if (follow) this.toEnd();
  }

  /** The other side has seen everything up to a message. */
  seenUpTo(seq) {
    if (seq === this.#seen) return;
    this.#seen = seq;
    this.#markSeen();
  }

  // On the last own message that was seen; what is before was seen too.
  #markSeen() {
    const own = [...this.#list.querySelectorAll('[data-own][data-seq]')];
    const last = own.findLast(({ dataset }) => Number(dataset.seq) <= this.#seen);
    for (const item of own) item.toggleAttribute('data-seen', item === last);
  }

  /** Shows an own message that is on its way. */
  addWaiting(key, text) {
    const item = this.#item({ from: this.#own, text });
    item.dataset.state = 'sending';
    this.#waiting.set(key, item);
    this.#list.append(item);
    this.toEnd();
  }

  /** The service did not take an own message. */
  refuse(key, reason) {
    const item = this.#waiting.get(key);
    if (!item) return;
    this.#waiting.delete(key);
    item.dataset.state = 'refused';
    item.lastElementChild.textContent = `Not sent: ${reason}`;
  }

  toEnd() {
    this.#scroller.scrollTop = this.#scroller.scrollHeight;
  }

  #isAtEnd() {
    const { scrollHeight, scrollTop, clientHeight } = this.#scroller;
    return scrollHeight - scrollTop - clientHeight < NEAR_END_PIXELS;
  }

  #item({ seq, at, from, text, agent, document: shared }) {
    const item = element('li', 'message');
    item.dataset.from = from;
    if (seq) item.dataset.seq = seq;
    item.toggleAttribute('data-own', from === this.#own);
    const bubble = element('div', 'bubble');
    bubble.append(element('span', 'unseen', `${agent?.name ?? (from === this.#own ? 'You' : NAMES[from])}: `));
    if (shared) bubble.append(documentLink(shared, this.#saves));
    if (text) bubble.append(textLine(text));
    item.append(bubble, at ? timeLine(at, agent?.name) : element('p', 'message-note', 'Sending…'));
    return item;
  }
}

function textLine(text) {
  const line = element('p', 'message-text', text);
  line.dir = 'auto';
  return line;
}

function timeLine(at, name) {
  const note = element('p', 'message-note', name ? `${name} · ` : '');
  const time = element('time', '', format.dayTime(at));
  time.dateTime = new Date(at).toISOString();
  note.append(time);
  return note;
}

function documentLink({ url, name, type, bytes }, saves) {
  const link = element('a', 'document');
  if (url.startsWith(DOCUMENTS)) link.href = url;
  if (saves) link.download = name;
  const kind = /^[\w-]+\/([\w-]+)/.exec(type)?.[1].toUpperCase() ?? '';
  const title = element('bdi', 'document-name', name || 'Document');
  const note = [kind.length <= 5 ? kind : '', format.bytes(bytes)].filter(Boolean).join(' · ');
  link.append(element('span', 'document-icon'), title, element('span', 'document-note', note));
  return link;
}
