import { byId, element, setText } from './dom.js';

const BYTES_PER_MIB = 1024 * 1024;

// Endpoint to what it is for.
const ENDPOINTS = {
  'im/c': 'Session start',
  'ix/m:get': 'Stream, opening',
  'ix/m:post': 'Stream, events',
  'ix/m:delete': 'Stream, end',
  imws: 'Stream, WebSocket',
  'io/l': 'Activity log',
  co: 'Channel polling',
  i18n: 'Interface texts',
  'ic/h': 'Health check',
  tag: 'Identity',
  'wc/c': 'Chat configuration',
  chat: 'Chat page',
  'wc/ws': 'Chat, messages',
  'wc/d': 'Chat, documents',
  '*': 'All others',
};

// Kind to its label and, where it has a value, the value's unit, default, bounds and size of one.
const KINDS = {
  '': { label: 'None' },
  delay: { label: 'Late reply', unit: 'ms', usual: 1000, min: 1, max: 600000, scale: 1 },
  drop: { label: 'Connection dropped' },
  truncate: { label: 'Closed in mid-body' },
  status: { label: 'Status code', unit: 'code', usual: 503, min: 200, max: 599, scale: 1 },
  empty: { label: 'Empty body' },
  garbage: { label: 'Garbage body' },
  large: { label: 'Very large reply', unit: 'MiB', usual: 17, min: 1, max: 1024, scale: BYTES_PER_MIB },
};

function numberInput(label, max) {
  const input = element('input', 'fault-number');
  Object.assign(input, { type: 'number', min: 1, max, step: 1 });
  input.setAttribute('aria-label', label);
  return input;
}

/** One endpoint's fault: its kind, value and count. */
class FaultRow {
  #kind = element('select', 'fault-kind');
  #value;
  #unit = element('span', 'fault-unit');
  #count;
  #before = '';

  constructor(endpoint, title) {
    this.endpoint = endpoint;
    this.item = element('li', 'fault');
    const name = element('span', 'fault-name', title);
    name.append(element('code', '', endpoint));
    this.#kind.setAttribute('aria-label', `${title}: fault`);
    for (const [kind, { label }] of Object.entries(KINDS)) this.#kind.append(new Option(label, kind));
    this.#kind.addEventListener('change', () => this.#chooseKind());
    this.#value = numberInput(`${title}: value`, 1);
    this.#count = numberInput(`${title}: only the next requests`, 1000000);
    this.#count.placeholder = 'all';
    const value = element('span', 'fault-value');
    value.append(this.#value, this.#unit);
    const count = element('span', 'fault-count');
    count.append(this.#count, element('span', 'fault-unit', 'requests'));
    this.item.append(name, this.#kind, value, count);
  }

  show(fault) {
    this.#kind.value = fault?.kind ?? '';
    this.#chooseKind();
    const { scale } = KINDS[this.#kind.value];
    if (scale) this.#value.value = fault.value / scale;
    this.#count.value = fault?.count ?? '';
    this.#before = JSON.stringify(this.fault);
  }

  /** As the service takes it; null for none. */
  get fault() {
    const kind = this.#kind.value;
    const { scale } = KINDS[kind];
    if (kind === '') return null;
    return {
      kind,
      value: scale ? Math.round(this.#value.value * scale) : null,
      count: this.#count.value === '' ? null : Number(this.#count.value),
    };
  }

  get changed() {
    return JSON.stringify(this.fault) !== this.#before;
  }

  #chooseKind() {
    const kind = KINDS[this.#kind.value];
    const { unit = '', usual = '', min = 1, max = 1 } = kind;
    this.item.dataset.kind = this.#kind.value;
    setText(this.#unit, unit);
    Object.assign(this.#value, { min, max, step: kind.scale > 1 ? 'any' : 1, value: usual, required: unit !== '' });
    this.#value.disabled = unit === '';
    this.#count.disabled = this.#kind.value === '';
    if (this.#count.disabled) this.#count.value = '';
  }
}

/** The dialog for how the service misbehaves. */
export class FaultsPanel {
  #dialog = byId('faults');
  #error = byId('faults-error');
  #rows = Object.entries(ENDPOINTS).map(([endpoint, title]) => new FaultRow(endpoint, title));
  #faults = {};
  #onSaved;

  /** `onSaved` is told what has happened, as a text. */
  constructor(onSaved) {
    this.#onSaved = onSaved;
    byId('fault-rows').append(...this.#rows.map((row) => row.item));
    byId('open-faults').addEventListener('click', () => this.#open());
    byId('faults-cancel').addEventListener('click', () => this.#dialog.close());
    byId('faults-clear').addEventListener('click', () => this.#send('DELETE'));
    byId('faults-form').addEventListener('submit', (event) => {
      event.preventDefault();
      const changes = this.#rows.filter((row) => row.changed).map((row) => [row.endpoint, row.fault]);
      this.#send('PUT', JSON.stringify(Object.fromEntries(changes)));
    });
  }

  /** The faults in force; an open dialog keeps what is being edited. */
  update(faults) {
    this.#faults = faults;
    const active = this.#active();
    byId('fault-count').hidden = active === 0;
    setText(byId('fault-count'), String(active));
    byId('open-faults').setAttribute('aria-label', active === 0 ? 'Faults' : `Faults, ${active} active`);
  }

  #active() {
    return Object.values(this.#faults).filter(Boolean).length;
  }

  #open() {
    for (const row of this.#rows) row.show(this.#faults[row.endpoint]);
    this.#error.hidden = true;
    this.#dialog.showModal();
  }

  async #send(method, body) {
    const problem = await this.#request(method, body);
    this.#error.textContent = problem;
    this.#error.hidden = problem === '';
    if (problem !== '') return;
    this.#dialog.close();
    const active = this.#active();
    this.#onSaved(active === 0 ? 'No faults.' : `${active} ${active === 1 ? 'endpoint misbehaves' : 'endpoints misbehave'} from now on.`);
  }

  async #request(method, body) {
    try {
      const reply = await fetch('/console/api/faults', { method, body });
      const result = await reply.json();
      if (!reply.ok) return result.error;
      this.update(result);
      return '';
    } catch {
      return 'The service does not answer.';
    }
  }
}
