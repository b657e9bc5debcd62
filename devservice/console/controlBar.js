import { control, showFaces } from './agents.js';
import { byId, setText } from './dom.js';
import { toast } from './toast.js';

const ANSWER_MS = 20000;

/** Who watches and who acts for the visitor on view; asks for the control, and answers who asks for it. */
export class ControlBar {
  #agents;
  #visitor = null;

  constructor(agents) {
    this.#agents = agents;
    for (const [id, what] of [['take-over', 'ask'], ['give', 'give'], ['keep', 'keep']]) {
      byId(id).addEventListener('click', async () => {
        const problem = await control(this.#visitor, what);
        if (problem) toast(`${byId(id).textContent}: ${problem}.`);
      });
    }
  }

  update(visitor, now) {
    this.#visitor = visitor.id;
    showFaces(byId('watchers'), this.#agents, visitor.id);
    const held = this.#agents.control(visitor.id);
    const [text, buttons] = this.#say(held, now);
    byId('control-bar').hidden = text === '';
    setText(byId('control-text'), text);
    for (const id of ['take-over', 'give', 'keep']) byId(id).hidden = !buttons.includes(id);
  }

  #say(held, now) {
    if (!held) return ['', []];
    const left = held.asker ? Math.max(0, Math.ceil((held.askedAt + ANSWER_MS - now) / 1000)) : 0;
    if (held.mine) {
      return held.asker ? [`${this.#agents.nameOf(held.asker)} asks to take over (${left} s).`, ['give', 'keep']] : ['', []];
    }
    const holder = this.#agents.nameOf(held.holder);
    if (held.asks) return [`Asked ${holder} to hand over; passes to you in ${left} s.`, []];
    if (held.asker) return [`${holder} acts; ${this.#agents.nameOf(held.asker)} asks to take over.`, []];
    return [`${holder} acts for this visitor.`, ['take-over']];
  }
}
