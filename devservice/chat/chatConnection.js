// The chat's WebSocket to the service that the page comes from; connects again by itself when that went away. What was
// not confirmed by then is sent again under the same key, and the service takes it once.

const FIRST_PAUSE_MS = 500;
const LONGEST_PAUSE_MS = 5000;

const newKey = () =>
  [...crypto.getRandomValues(new Uint8Array(12))].map((byte) => byte.toString(16).padStart(2, '0')).join('');

export class ChatConnection {
  #url;
  #visitor;
  #handlers;
  #socket = null;
  #pause = FIRST_PAUSE_MS;
  #unconfirmed = new Map();

  /** handlers: onState(text), onMessages(messages, reset), onRefused(key, reason), onAgents({typing, agent, seenUpTo}) */
  constructor({ tenantId, visitorId }, handlers) {
    this.#visitor = `tId=${encodeURIComponent(tenantId)}&vId=${encodeURIComponent(visitorId)}`;
    const scheme = location.protocol === 'https:' ? 'wss' : 'ws';
    this.#url = `${scheme}://${location.host}/api/in/wc/ws?${this.#visitor}`;
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
    const key = newKey();
    this.#unconfirmed.set(key, text);
    this.#transmit(key, text);
    return key;
  }

  /** The visitor is writing. */
  typing() {
    this.#say({ type: 'typing' });
  }

  /** The visitor has seen everything up to a message. */
  seen(upTo) {
    this.#say({ type: 'seen', upTo });
  }

  /** Sends a file at once; returns its key. */
  attach(file) {
    const key = newKey();
    this.#upload(key, file);
    return key;
  }

  async #upload(key, file) {
    const query = `${this.#visitor}&key=${key}&name=${encodeURIComponent(file.name)}`;
    try {
      const type = file.type || 'application/octet-stream';
      const reply = await fetch(`/api/in/wc/d?${query}`, { method: 'POST', body: file, headers: { 'Content-Type': type } });
      if (!reply.ok) throw new Error(reply.status === 413 ? 'the file is too large' : 'the service does not take it');
    } catch (error) {
      this.#handlers.onRefused(key, error instanceof TypeError ? 'the service cannot be reached' : error.message);
    }
  }

  #transmit(key, text) {
    this.#say({ type: 'message', key, text });
  }

  #say(message) {
    if (this.#socket?.readyState === WebSocket.OPEN) this.#socket.send(JSON.stringify(message));
  }

  #receive(message) {
    if (message.type === 'messages') {
      for (const { key } of message.messages) this.#unconfirmed.delete(key);
      this.#handlers.onMessages(message.messages, message.reset);
    }
    if (message.type === 'state') {
      const { typingUntil, now, agent, seenUpTo } = message;
      this.#handlers.onAgents({ typing: Math.max(0, typingUntil - now), agent, seenUpTo });
    }
    if (message.type === 'refused') {
      this.#unconfirmed.delete(message.key);
      this.#handlers.onRefused(message.key, message.reason);
    }
  }
}
