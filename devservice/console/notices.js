import { byId, element } from './dom.js';

const SHOWN_MS = 10000;
const MOST = 3;
const WANTED = 'merovanta.notify';

/** Tells the agent what happened elsewhere: on the page, and by the system too if the agent wants that. */
export class Notices {
  #list = byId('notices');
  #button = byId('notify');

  constructor() {
    this.#button.addEventListener('click', () => this.#toggle());
    this.#show();
  }

  /**
   * `open` shows what it is about; a later notice of the same key takes the place of this one. What is `onView` already is
   * told by the system alone.
   */
  tell({ key, title, text = '', open, onView = false }) {
    this.withdraw(key);
    if (this.#isOn && !document.hasFocus()) notify({ key, title, text, open });
    if (onView) return;
    const item = element('li', 'notice');
    item.dataset.key = key;
    const body = element('button', 'notice-open');
    body.type = 'button';
    body.append(element('strong', 'notice-title', title), element('span', 'notice-text', text));
    const close = element('button', 'notice-close', '×');
    close.type = 'button';
    close.setAttribute('aria-label', `Dismiss: ${title}`);
    body.addEventListener('click', () => { item.remove(); open(); });
    close.addEventListener('click', () => item.remove());
    item.append(body, close);
    this.#list.prepend(item);
    while (this.#list.childElementCount > MOST) this.#list.lastElementChild.remove();
    setTimeout(() => item.remove(), SHOWN_MS);
  }

  /** The agent has seen to it in another way. */
  withdraw(key) {
    for (const item of [...this.#list.children]) if (item.dataset.key === key) item.remove();
  }

  get #isOn() {
    return permission() === 'granted' && localStorage.getItem(WANTED) === 'yes';
  }

  async #toggle() {
    const wanted = !this.#isOn;
    localStorage.setItem(WANTED, wanted ? 'yes' : 'no');
    if (wanted && permission() === 'default') await Notification.requestPermission();
    this.#show();
  }

  #show() {
    const possible = !['none', 'denied'].includes(permission());
    this.#button.disabled = !possible;
    this.#button.setAttribute('aria-pressed', String(this.#isOn));
    this.#button.title = possible ? 'Notifications by the system while this page is not in front'
      : 'The browser allows this page no notifications by the system';
  }
}

// Only pages that came encrypted, or from this machine, may ask.
const permission = () => (window.isSecureContext && 'Notification' in window ? Notification.permission : 'none');

function notify({ key, title, text, open }) {
  const notification = new Notification(title, { body: text, tag: key, icon: '/console/favicon.svg' });
  notification.onclick = () => {
    window.focus();
    notification.close();
    open();
  };
}
