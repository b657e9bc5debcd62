import { byId, element, setText } from './dom.js';

const COLOURS = [['Red', '#e5202e'], ['Orange', '#ff9500'], ['Green', '#16a34a'], ['Blue', '#1d6ff2'], ['Black', '#111418']];
// Fractions of the screen's shorter side.
const WIDTHS = [['Thin', 0.008], ['Medium', 0.016], ['Thick', 0.034]];
const HINTS = {
  tap: 'Click to tap in the app. By keyboard: arrow keys, Enter.',
  draw: 'Drag to draw. The app shows a drawing for 5 seconds.',
};

/** What the agent chose to do with the picture: tap, or draw with which pen. */
export class PictureTools {
  #form = byId('tools');
  #strokes = 0;
  #enabled = false;

  /** handlers: onMode(), onUndo(), onClear(), onSend() */
  constructor({ onMode, onUndo, onClear, onSend }) {
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

  update(enabled, strokes) {
    this.#enabled = enabled;
    this.#strokes = strokes;
    this.#show();
  }

  /** Tells where the crosshair is; null brings the hint back. */
  crosshair(pixel) {
    setText(byId('tools-hint'), pixel ? `Crosshair at ${pixel.x}, ${pixel.y} px. Enter taps there.` : HINTS[this.mode]);
  }

  #show() {
    const drawing = this.mode === 'draw';
    byId('pens').hidden = !drawing;
    byId('drawing-actions').hidden = !drawing;
    byId('pointer-mode').disabled = !this.#enabled;
    for (const id of ['undo', 'clear', 'send-drawing']) {
      byId(id).hidden = this.sendsOnRelease;
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
