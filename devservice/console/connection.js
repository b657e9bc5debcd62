// The console's WebSocket; connects again by itself when the service went away. README.md describes the messages.

const FIRST_PAUSE_MS = 500;
const LONGEST_PAUSE_MS = 5000;

function connect() {
  const socket = new WebSocket(`${location.protocol === 'https:' ? 'wss' : 'ws'}://${location.host}/console/ws`);
  socket.binaryType = 'arraybuffer';
  return { socket, messages: [] };
}

/** A page whose browser is not signed in any more becomes the page to sign in on. */
async function reloadIfSignedOut() {
  const reply = await fetch('/console/api/visitors').catch(() => null);
  if (reply?.status === 401) location.reload();
}

export class Connection {
  #socket = null;
  #pause = FIRST_PAUSE_MS;
  #watched = null;
  #chat = null;
  #handlers;
  // Whose timeline and pictures come without being asked for anew.
  #watchedEarly = null;

  /** handlers: onState(text), onMessage(object), onFrame({visitor, number, at, jpeg}) */
  constructor(handlers) {
    this.#handlers = handlers;
  }

  open() {
    this.#handlers.onState('connecting');
    const { socket, messages } = this.#takeEarly() ?? connect();
    socket.onopen = () => {
      this.#pause = FIRST_PAUSE_MS;
      this.#handlers.onState('connected');
      this.#sendWatch();
      this.#sendChat();
    };
    socket.onmessage = (event) => this.#receive(event.data);
    socket.onclose = () => {
      reloadIfSignedOut();
      this.#handlers.onState('disconnected');
      setTimeout(() => this.open(), this.#pause);
      this.#pause = Math.min(this.#pause * 2, LONGEST_PAUSE_MS);
    };
    this.#socket = socket;
    if (socket.readyState === WebSocket.OPEN) socket.onopen();
    for (const message of messages) this.#receive(message);
  }

  /** What was opened before this script came, if it still lives. */
  #takeEarly() {
    const { early } = window;
    window.early = undefined;
    if (!early || early.socket.readyState > WebSocket.OPEN) return undefined;
    const told = early.messages.filter((data) => typeof data === 'string').map((text) => JSON.parse(text));
    this.#watchedEarly = told.find(({ type }) => type === 'timeline')?.visitor ?? null;
    return early;
  }

  /** Asks for the timeline and pictures of a visitor. */
  watch(visitor) {
    this.#watched = visitor;
    if (this.#watchedEarly !== visitor) this.#sendWatch();
    this.#watchedEarly = null;
  }

  /** Asks for the messages of a contact's chat. */
  watchChat(contact) {
    this.#chat = contact;
    this.#sendChat();
  }

  #sendWatch() {
    if (this.#watched !== null) this.#send({ type: 'watch', visitor: this.#watched });
  }

  #sendChat() {
    if (this.#chat !== null) this.#send({ type: 'chat', contact: this.#chat });
  }

  #send(message) {
    if (this.#socket?.readyState === WebSocket.OPEN) this.#socket.send(JSON.stringify(message));
  }

  #receive(data) {
    if (typeof data === 'string') {
      this.#handlers.onMessage(JSON.parse(data));
      return;
    }
    const header = new DataView(data, 0, 16);
    this.#handlers.onFrame({
      visitor: String(header.getUint32(0)),
      number: header.getUint32(4),
      at: Number(header.getBigUint64(8)),
      jpeg: new Blob([new Uint8Array(data, 16)], { type: 'image/jpeg' }),
    });
  }
}
