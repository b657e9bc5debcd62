import { byId } from './dom.js';

/** How large the picture is: as fits, as on the visitor's device, twice as large, on the whole screen of the agent. */
export class Zoom {
  #phone = byId('phone');
  #stage = byId('stage');
  #view = byId('view');
  #fullScreen = byId('full-screen');
  #buttons = [...byId('zoom').querySelectorAll('[data-zoom]')];

  constructor() {
    for (const button of this.#buttons) button.addEventListener('click', () => this.#choose(button.dataset.zoom));
    this.#fullScreen.addEventListener('click', () => this.#toggleFullScreen());
    document.addEventListener('fullscreenchange', () => {
      this.#fullScreen.setAttribute('aria-pressed', String(document.fullscreenElement === this.#view));
    });
    this.#choose('fit');
  }

  /** The screen's width on the visitor's device, in points. */
  update(points) {
    this.#phone.style.setProperty('--points', String(points));
  }

  #choose(zoom) {
    this.#phone.dataset.zoom = zoom;
    // What is larger than its place is scrolled, by keyboard too.
    this.#stage.tabIndex = zoom === 'fit' ? -1 : 0;
    for (const button of this.#buttons) button.setAttribute('aria-pressed', String(button.dataset.zoom === zoom));
  }

  #toggleFullScreen() {
    const change = document.fullscreenElement ? document.exitFullscreen() : this.#view.requestFullscreen();
    change.catch((error) => console.info('No full screen', error));
  }
}
