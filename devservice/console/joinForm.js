import { byId } from './dom.js';

const DIGITS = 5;

/** The field for the share code that a visitor reads to the agent. */
export class JoinForm {
  #code = byId('join-code');
  #error = byId('join-error');

  /** join(code) opens the visitor and returns what is wrong, if anything. */
  constructor(join) {
    this.#code.addEventListener('input', () => {
      const digits = this.#code.value.replace(/\D/g, '').slice(0, DIGITS);
      if (digits !== this.#code.value) this.#code.value = digits;
      this.#show('');
    });
    byId('join').addEventListener('submit', (event) => {
      event.preventDefault();
      const code = this.#code.value;
      const problem = code.length < DIGITS ? `A share code has ${DIGITS} digits.` : join(code);
      this.#show(problem);
      if (!problem) this.#code.value = '';
    });
  }

  #show(problem) {
    this.#error.textContent = problem;
    this.#error.hidden = problem === '';
    this.#code.setAttribute('aria-invalid', String(problem !== ''));
    if (problem) this.#code.select();
  }
}
