import { byId, setText } from './dom.js';
import { MessageList } from './messageList.js';
import { ShareDialog } from './shareDialog.js';

const TYPING_PAUSE_MS = 3000;

/** The chat with the visitor on view: its messages, a field to write in and files to share. */
export class ChatPanel {
  #list = new MessageList(byId('chat-messages'), byId('chat-scroll'), 'agent', { saves: true });
  #pane = byId('chat-pane');
  #told = 0;
  #field = byId('chat-text');
  #drafts = new Map();
  #contact = null;
  #last = 0;
  #read = 0;
  #say;
  #show;

  /** say(text) tells the agent what went wrong, show() brings the chat into view. */
  constructor(say, show) {
    this.#say = say;
    this.#show = show;
    const dialog = new ShareDialog();
    const share = (file) => file && dialog.open(file, this.#contact);
    byId('chat-file').addEventListener('change', ({ target }) => {
      share(target.files[0]);
      target.value = '';
    });
    this.#takeDrops(share);
    this.#takeWriting();
  }

  /** Another contact, or null for none; its messages follow. */
  choose(contact) {
    if (this.#contact !== null) this.#drafts.set(this.#contact, this.#field.value);
    this.#contact = contact;
    this.#last = 0;
    this.#read = 0;
    this.#list.add([], true);
    this.#field.value = this.#drafts.get(contact) ?? '';
    this.#fitField();
    byId('chat-empty').hidden = false;
  }

  forgetDrafts() {
    this.#drafts.clear();
  }

  receive({ messages, reset }) {
    this.#list.add(messages, reset);
    this.#last = messages.at(-1)?.seq ?? this.#last;
    byId('chat-empty').hidden = this.#last > 0;
  }

  update(contact, now) {
    this.#list.seenUpTo(contact.seenUpTo);
    setText(byId('chat-typing'), contact.typingUntil > now ? 'The visitor is typing…' : '');
    setText(byId('chat-state'), contact.chatOpen ? 'The visitor has the chat open.' : 'The chat is closed. Messages wait there for the visitor.');
    byId('chat-state').dataset.open = contact.chatOpen;
    if (contact.unread > 0 && this.#last > this.#read && !this.#pane.hidden && !document.hidden) this.#markRead();
  }

  /** The pane has come into view. */
  shown() {
    this.#list.toEnd();
    this.#fitField();
  }

  async #markRead() {
    this.#read = this.#last;
    if (await post(this.#contact, 'read', { upTo: this.#last })) this.#read = 0;
  }

  async #send() {
    const text = this.#field.value.trim();
    if (text === '') return;
    const contact = this.#contact;
    this.#field.value = '';
    this.#fitField();
    const problem = await post(contact, 'messages', { text });
    if (!problem) return;
    this.#say(`Message: ${problem}.`);
    if (contact === this.#contact && this.#field.value === '') this.#field.value = text;
    this.#fitField();
  }

  #takeWriting() {
    this.#field.addEventListener('input', () => {
      this.#fitField();
      this.#tellTyping();
    });
    this.#field.addEventListener('keydown', (event) => {
      if (event.key !== 'Enter' || event.shiftKey || event.isComposing) return;
      event.preventDefault();
      this.#send();
    });
    byId('chat-form').addEventListener('submit', (event) => {
      event.preventDefault();
      this.#send();
    });
  }

  #tellTyping() {
    if (this.#field.value === '' || Date.now() - this.#told < TYPING_PAUSE_MS) return;
    this.#told = Date.now();
    post(this.#contact, 'typing', {});
  }

  // Onto the whole side pane, whatever it shows.
  #takeDrops(share) {
    const pane = byId('pane');
    const hover = (over) => this.#pane.toggleAttribute('data-dropping', over);
    pane.addEventListener('dragover', (event) => {
      if (this.#contact === null || !event.dataTransfer.types.includes('Files')) return;
      event.preventDefault();
      this.#show();
      hover(true);
    });
    pane.addEventListener('dragleave', ({ relatedTarget }) => hover(pane.contains(relatedTarget)));
    pane.addEventListener('drop', (event) => {
      if (this.#contact === null) return;
      event.preventDefault();
      hover(false);
      share(event.dataTransfer.files[0]);
    });
  }

  #fitField() {
    const field = this.#field;
    field.style.height = 'auto';
    field.style.height = `${field.scrollHeight + field.offsetHeight - field.clientHeight}px`;
    byId('chat-send').disabled = field.value.trim() === '';
  }
}

/** Returns what went wrong, if anything. */
async function post(contact, what, body) {
  try {
    const reply = await fetch(`/console/api/contacts/${contact}/${what}`, { method: 'POST', body: JSON.stringify(body) });
    return reply.ok ? '' : (await reply.json()).error;
  } catch {
    return 'the service does not answer';
  }
}
