import { byId, element, setText } from './dom.js';
import { span } from './format.js';
import { exportFile, stretch } from './replayExport.js';

/** Asks for a stretch of a recording and saves it as one file. */
export class ExportDialog {
  #dialog = byId('export-dialog');
  #form = byId('export-form');
  #progress = byId('export-progress');
  #error = byId('export-error');
  #recording;
  #notes;
  #load;
  #running = null;

  /** `recording` as for the player, with `title` and `about`; `notes` gives those there are at the time. */
  constructor(recording, notes, load) {
    this.#recording = recording;
    this.#notes = notes;
    this.#load = load;
    this.#form.addEventListener('submit', (event) => this.#submit(event));
    byId('export-cancel').addEventListener('click', () => this.#dialog.close());
    this.#dialog.addEventListener('close', () => this.#running?.abort());
  }

  open() {
    this.#form.elements.from.value = span(0);
    // Rounded up: a whole recording is the whole of it.
    this.#form.elements.to.value = span(this.#recording.duration + 999);
    this.#show(false, '');
    this.#dialog.showModal();
  }

  async #submit(event) {
    event.preventDefault();
    if (this.#running) return;
    const from = moment(this.#form.elements.from.value);
    const to = Math.min(moment(this.#form.elements.to.value), this.#recording.duration);
    if (!(from < to)) {
      this.#show(false, 'Give two moments of the recording, such as 0:00 and 1:30, the earlier one first.');
      return;
    }
    this.#running = new AbortController();
    this.#show(true, '');
    try {
      await this.#save(from, to, this.#running.signal);
      this.#dialog.close();
    } catch (error) {
      this.#show(false, error.name === 'AbortError' ? '' : `It cannot be exported: ${error.message}.`);
    }
    this.#running = null;
  }

  async #save(from, to, signal) {
    const { first, recording } = stretch({ ...this.#recording, notes: this.#notes() }, from, to);
    const file = await exportFile(recording, (number) => this.#load(number + first - 1),
      (fraction) => { this.#progress.value = fraction; }, signal);
    const link = element('a');
    link.href = URL.createObjectURL(file);
    link.download = `${recording.title.replace(/[^\p{L}\p{N}]+/gu, '-')}.html`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 60_000);
  }

  #show(running, error) {
    this.#progress.value = 0;
    this.#progress.hidden = !running;
    this.#error.hidden = error === '';
    setText(this.#error, error);
  }
}

/** The milliseconds of "1:30" or "1:02:30"; NaN for anything else. */
function moment(text) {
  if (!/^\s*\d+(:\d{1,2}){0,2}(\.\d+)?\s*$/.test(text)) return NaN;
  return text.split(':').reduce((sum, part) => sum * 60 + Number(part), 0) * 1000;
}
