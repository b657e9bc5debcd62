// The console's WebSocket; connects again by itself when the service went away. README.md describes the messages.

const FIRST_PAUSE_MS = 500;
const LONGEST_PAUSE_MS = 5000;

export class Connection {
  #socket = null;
  #pause = FIRST_PAUSE_MS;
  #watched = null;
  #chat = null;
  #handlers;

  /** handlers: onState(text), onMessage(object), onFrame({visitor, number, at, jpeg}) */
  constructor(handlers) {
    this.#handlers = handlers;
  }

  open() {
    this.#handlers.onState('connecting');
    const scheme = location.protocol === 'https:' ? 'wss' : 'ws';
    const socket = new WebSocket(`${scheme}://${location.host}/console/ws`);
    socket.binaryType = 'arraybuffer';
    socket.onopen = () => {
      this.#pause = FIRST_PAUSE_MS;
      this.#handlers.onState('connected');
      this.#sendWatch();
      this.#sendChat();
    };
    socket.onmessage = (event) => this.#receive(event.data);
    socket.onclose = () => {
      this.#handlers.onState('disconnected');
      setTimeout(() => this.open(), this.#pause);
      this.#pause = Math.min(this.#pause * 2, LONGEST_PAUSE_MS);
    };
    this.#socket = socket;
  }

  /** Asks for the timeline and pictures of a visitor. */
  watch(visitor) {
    this.#watched = visitor;
    this.#sendWatch();
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
