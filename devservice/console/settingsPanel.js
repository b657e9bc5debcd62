import { byId } from './dom.js';

const FLAGS = ['s', 'x'];
const OPTIONAL_FLAGS = ['cA', 'pnWS'];
const OPTIONAL_TEXTS = ['st', 'fsTy'];
const LISTS = ['blacklist', 'blacklistClasses'];

/** The dialog for what the service replies when a session starts. */
export class SettingsPanel {
  #dialog = byId('settings');
  #form = byId('settings-form');
  #error = byId('settings-error');
  #settings = {};

  constructor(onSaved) {
    byId('open-settings').addEventListener('click', () => this.#open());
    byId('settings-cancel').addEventListener('click', () => this.#dialog.close());
    this.#form.addEventListener('submit', async (event) => {
      event.preventDefault();
      if (await this.#save()) onSaved();
    });
  }

  /** The settings in force; an open dialog keeps what is being edited. */
  update(settings) {
    this.#settings = settings;
  }

  #open() {
    const { elements } = this.#form;
    for (const key of FLAGS) elements[key].checked = this.#settings[key];
    for (const key of OPTIONAL_FLAGS) elements[key].value = String(this.#settings[key] ?? '');
    for (const key of OPTIONAL_TEXTS) elements[key].value = this.#settings[key] ?? '';
    for (const key of LISTS) elements[key].value = (this.#settings[key] ?? []).join('\n');
    this.#error.hidden = true;
    this.#dialog.showModal();
  }

  async #save() {
    const { elements } = this.#form;
    const changes = {};
    for (const key of FLAGS) changes[key] = elements[key].checked;
    for (const key of OPTIONAL_FLAGS) changes[key] = elements[key].value === '' ? null : elements[key].value === 'true';
    for (const key of OPTIONAL_TEXTS) changes[key] = elements[key].value.trim() || null;
    for (const key of LISTS) changes[key] = elements[key].value.split(/[\n,]/).map((item) => item.trim()).filter(Boolean);
    const problem = await put(changes);
    this.#error.textContent = problem;
    this.#error.hidden = problem === '';
    if (problem === '') this.#dialog.close();
    return problem === '';
  }
}

async function put(settings) {
  try {
    const reply = await fetch('/console/api/settings', { method: 'PUT', body: JSON.stringify(settings) });
    return reply.ok ? '' : (await reply.json()).error;
  } catch {
    return 'The service does not answer.';
  }
}
