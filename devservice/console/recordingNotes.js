import { byId, element } from './dom.js';
import { span } from './format.js';

// Where the live console keeps the agent's name.
const NAME = 'merovanta.name';

/** The notes and tags of a recording: written, shown and taken away. */
export class RecordingNotes {
  #ask;
  #labels;
  #onProblem;
  #player = null;
  list;

  /** `ask` sends to the service; `onProblem` is told what goes wrong. */
  constructor(ask, recording, onProblem) {
    this.#ask = ask;
    this.#labels = recording.labels;
    this.list = recording.notes;
    this.#onProblem = onProblem;
  }

  attach(player) {
    this.#player = player;
    player.side.append(byId('side').content.cloneNode(true));
    player.setNotes(this.list);
    this.#showLabels();
    const note = byId('note-form');
    note.addEventListener('submit', (event) => this.#write(event));
    byId('note-text').addEventListener('keydown', (event) => {
      if (event.key === 'Enter' && (event.ctrlKey || event.metaKey)) note.requestSubmit();
    });
    byId('label-form').addEventListener('submit', (event) => this.#addLabel(event));
  }

  /** Gives a note's row a button to take it away. */
  decorate(row, event) {
    if (event.kind !== 'note') return;
    row.append(removeButton(`Delete the note at ${span(event.at)}`, () => this.#keep(async () => {
      this.#receive(await this.#ask(`/notes/${event.detail.id}`, 'DELETE'));
    })));
  }

  #write(event) {
    event.preventDefault();
    const { text } = event.target.elements;
    if (!text.value.trim()) return;
    const note = { text: text.value, author: localStorage.getItem(NAME) ?? '', at: Math.round(this.#player.position) };
    this.#keep(async () => {
      this.#receive(await this.#ask('/notes', 'POST', note));
      text.value = '';
    });
  }

  #receive({ notes }) {
    this.list = notes;
    this.#player.setNotes(notes);
  }

  #addLabel(event) {
    event.preventDefault();
    const input = event.target.elements.label;
    const label = input.value.trim();
    input.value = '';
    if (label && !this.#labels.includes(label)) this.#setLabels([...this.#labels, label]);
  }

  #setLabels(labels) {
    this.#keep(async () => {
      ({ labels: this.#labels } = await this.#ask('/labels', 'PUT', { labels }));
      this.#showLabels();
    });
  }

  #showLabels() {
    byId('labels').replaceChildren(...this.#labels.map((label) => {
      const item = element('li', 'label', label);
      item.append(removeButton(`Remove the tag ${label}`, () => this.#setLabels(this.#labels.filter((other) => other !== label))));
      return item;
    }));
  }

  #keep(change) {
    change().catch(this.#onProblem);
  }
}

function removeButton(name, onPress) {
  const button = element('button', 'remove', '×');
  button.type = 'button';
  button.setAttribute('aria-label', name);
  button.title = name;
  button.addEventListener('click', onPress);
  return button;
}
