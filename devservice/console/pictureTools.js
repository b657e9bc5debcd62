import { byId, element, setText } from './dom.js';

const COLOURS = [['Red', '#e5202e'], ['Orange', '#ff9500'], ['Green', '#16a34a'], ['Blue', '#1d6ff2'], ['Black', '#111418']];
// Fractions of the screen's shorter side.
const WIDTHS = [['Thin', 0.008], ['Medium', 0.016], ['Thick', 0.034]];
const HINTS = {
  tap: 'Click to tap in the app. By keyboard: arrow keys, Enter.',
  pointer: 'The visitor sees a dot where you point.',
  draw: 'Drag to draw; Enter begins and ends by keyboard. Shown for 5 seconds.',
  arrow: 'Drag from the arrow\u2019s end to its tip. Shown for 5 seconds.',
  box: 'Drag from corner to corner. Shown for 5 seconds.',
  text: 'Click where the text begins. Shown for 5 seconds.',
};

const AT_CROSSHAIR = {
  tap: 'Enter taps there.', pointer: 'The visitor sees it.', draw: 'Enter begins or ends.', arrow: 'Enter begins or ends.', box: 'Enter begins or ends.', text: 'Enter writes there.',
};

/** What the agent chose to do with the picture: tap, or draw with which pen. */
export class PictureTools {
  #form = byId('tools');
  #strokes = 0;
  #enabled = false;
  #reason = '';

  /** handlers: onMode(), onKeep(keep), onUndo(), onClear(), onSend() */
  constructor({ onMode, onKeep, onUndo, onClear, onSend }) {
    COLOURS.forEach(([name, value], index) => {
      const swatch = choice('colour', name, value, 'swatch', index === 0);
      swatch.style.setProperty('--swatch', value);
      byId('colours').append(swatch);
    });
    WIDTHS.forEach(([name, value], index) => {
      byId('widths').append(choice('width', name, value, `line-width line-width-${name.toLowerCase()}`, index === 1));
    });
    this.#form.addEventListener('submit', (event) => event.preventDefault());
    this.#form.addEventListener('change', (event) => {
      this.#show();
      if (event.target.name === 'mode') onMode();
      if (event.target.id === 'keep-drawing') onKeep(event.target.checked);
    });
    byId('undo').addEventListener('click', onUndo);
    byId('clear').addEventListener('click', onClear);
    byId('send-drawing').addEventListener('click', onSend);
    this.#show();
  }

  get mode() {
    return this.#form.elements.mode.value;
  }

  get pen() {
    return { colour: this.#form.elements.colour.value, width: Number(this.#form.elements.width.value) };
  }

  get sendsOnRelease() {
    return byId('send-on-release').checked;
  }

  /** Whether a drawing stays until it is cleared. */
  get keeps() {
    return byId('keep-drawing').checked;
  }

  /** Says why the agent cannot act, if so. */
  explain(reason) {
    if (reason === this.#reason) return;
    this.#reason = reason;
    this.crosshair(null);
  }

  update(enabled, strokes) {
    this.#enabled = enabled;
    this.#strokes = strokes;
    this.#show();
  }

  /** Tells where the crosshair is; null brings the hint back. */
  crosshair(pixel) {
    setText(byId('tools-hint'), pixel ? `Crosshair at ${pixel.x}, ${pixel.y} px. ${AT_CROSSHAIR[this.mode]}` : this.#reason || HINTS[this.mode]);
  }

  #show() {
    const drawing = !['tap', 'pointer'].includes(this.mode);
    byId('pens').hidden = this.mode === 'tap';
    byId('widths').hidden = !drawing;
    byId('drawing-actions').hidden = !drawing;
    byId('pointer-mode').disabled = !this.#enabled;
    for (const id of ['undo', 'clear', 'send-drawing']) {
      byId(id).hidden = this.sendsOnRelease && (id === 'send-drawing' || !this.keeps);
      byId(id).disabled = !this.#enabled || this.#strokes === 0;
    }
    if (byId('tools-hint').dataset.mode === this.mode) return;
    byId('tools-hint').dataset.mode = this.mode;
    this.crosshair(null);
  }
}

function choice(group, name, value, className, checked) {
  const label = element('label', className);
  const input = element('input');
  Object.assign(input, { type: 'radio', name: group, value, checked, title: name });
  input.setAttribute('aria-label', name);
  label.append(input);
  return label;
}
