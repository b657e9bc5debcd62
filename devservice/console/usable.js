import { toast } from './toast.js';

/** A button that, while it cannot work, stays where it is and says why. */
export class UsableButton {
  #button;
  #title;
  #reason = '';

  constructor(button, onPress) {
    this.#button = button;
    this.#title = button.title;
    button.addEventListener('click', () => {
      if (this.#reason) toast(`${button.textContent.trim()}: ${this.#reason}`);
      else onPress();
    });
  }

  /** `reason` says why it cannot work; empty when it can. */
  update(reason) {
    if (reason === this.#reason) return;
    this.#reason = reason;
    this.#button.title = reason || this.#title;
    if (reason) this.#button.setAttribute('aria-disabled', 'true');
    else this.#button.removeAttribute('aria-disabled');
  }
}
