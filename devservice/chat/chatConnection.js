// The chat's WebSocket to the service that the page comes from; connects again by itself when that went away. What was
// not confirmed by then is sent again under the same key, and the service takes it once.

const FIRST_PAUSE_MS = 500;
const LONGEST_PAUSE_MS = 5000;

export class ChatConnection {
  #url;
  #handlers;
  #socket = null;
  #pause = FIRST_PAUSE_MS;
  #unconfirmed = new Map();

  /** handlers: onState(text), onMessages(messages, reset), onRefused(key, reason) */
  constructor({ tenantId, visitorId }, handlers) {
    const scheme = location.protocol === 'https:' ? 'wss' : 'ws';
    this.#url = `${scheme}://${location.host}/api/in/wc/ws?tId=${encodeURIComponent(tenantId)}&vId=${encodeURIComponent(visitorId)}`;
    this.#handlers = handlers;
  }

  open() {
    const socket = new WebSocket(this.#url);
    socket.onopen = () => {
      this.#pause = FIRST_PAUSE_MS;
      this.#handlers.onState('connected');
      for (const [key, text] of this.#unconfirmed) this.#transmit(key, text);
    };
    socket.onmessage = ({ data }) => this.#receive(JSON.parse(data));
    socket.onclose = () => {
      this.#handlers.onState('lost');
      setTimeout(() => this.open(), this.#pause);
      this.#pause = Math.min(this.#pause * 2, LONGEST_PAUSE_MS);
    };
    this.#socket = socket;
  }

  /** Sends a text now or when the service is back; returns its key. */
  send(text) {
    const key = [...crypto.getRandomValues(new Uint8Array(12))].map((byte) => byte.toString(16).padStart(2, '0')).join('');
    this.#unconfirmed.set(key, text);
    this.#transmit(key, text);
    return key;
  }

  #transmit(key, text) {
    if (this.#socket?.readyState !== WebSocket.OPEN) return;
    this.#socket.send(JSON.stringify({ type: 'message', key, text }));
  }

  #receive(message) {
    if (message.type === 'messages') {
      for (const { key } of message.messages) this.#unconfirmed.delete(key);
      this.#handlers.onMessages(message.messages, message.reset);
    }
    if (message.type === 'refused') {
      this.#unconfirmed.delete(message.key);
      this.#handlers.onRefused(message.key, message.reason);
    }
  }
}
