import { byId } from './dom.js';
import * as format from './format.js';

const MOST_BYTES = 16 * 1024 * 1024;

/** Asks under which name and headers a file goes to the visitor, and sends it. */
export class ShareDialog {
  #dialog = byId('share');
  #form = byId('share-form');
  #error = byId('share-error');
  #file = null;
  #contact = null;

  constructor() {
    byId('share-cancel').addEventListener('click', () => this.#dialog.close());
    this.#form.addEventListener('submit', async (event) => {
      event.preventDefault();
      const submit = this.#form.querySelector('[type="submit"]');
      const file = this.#file;
      submit.disabled = true;
      const problem = await this.#share();
      submit.disabled = false;
      if (file !== this.#file) return;
      this.#show(problem);
      if (!problem) this.#dialog.close();
    });
  }

  open(file, contact) {
    this.#file = file;
    this.#contact = contact;
    const { elements } = this.#form;
    elements.name.value = file.name;
    elements.as.value = 'encoded';
    elements.type.value = file.type;
    byId('share-note').textContent = `${format.bytes(file.size)}. The name and how it is sent can be changed, for tests.`;
    this.#show('');
    this.#dialog.showModal();
  }

  async #share() {
    if (this.#file.size > MOST_BYTES) return 'The file is larger than 16 MiB.';
    const { name, as, type } = this.#form.elements;
    const query = `name=${encodeURIComponent(name.value)}&as=${as.value}`;
    try {
      const reply = await fetch(`/console/api/contacts/${this.#contact}/documents?${query}`, {
        method: 'POST', body: this.#file, headers: { 'Content-Type': type.value || 'application/octet-stream' },
      });
      return reply.ok ? '' : (await reply.json()).error;
    } catch {
      return 'The service does not answer.';
    }
  }

  #show(problem) {
    this.#error.textContent = problem;
    this.#error.hidden = problem === '';
  }
}
