import { byId, element, setText } from './dom.js';

const NAME = 'merovanta.name';
const MOST_FACES = 4;

/** The agents whose consoles are open, as the service tells them: who watches whom, and who acts. */
export class Agents {
  #all = new Map();
  #controls = {};
  #you = '';
  #told = false;

  /** Returns the visitors for whom another agent has just asked this one to hand over. */
  update({ you, agents, controls, signIn }) {
    const asked = (all, id) => all[id]?.holder === you && all[id].asker;
    const news = Object.keys(controls).filter((id) => asked(controls, id) && !asked(this.#controls, id));
    this.#you = you;
    this.#all = new Map(agents.map((agent) => [agent.id, agent]));
    this.#controls = controls;
    if (!this.#told) this.#tellName();
    byId('sign-out').hidden = !signIn;
    return news;
  }

  /** The service may be another one now, to which the name is to be told. */
  restart() {
    this.#told = false;
  }

  get me() {
    return this.#all.get(this.#you);
  }

  nameOf(id) {
    return this.#all.get(id)?.name ?? 'Another agent';
  }

  /** Who looks at this visitor, this agent first. */
  watchers(visitor) {
    const watching = [...this.#all.values()].filter((agent) => agent.watching.includes(visitor));
    return watching.sort((a, b) => Number(b.id === this.#you) - Number(a.id === this.#you));
  }

  /** {holder, asker, askedAt} of who acts, with `mine` and `asks` saying whether this agent is either; null when nobody acts. */
  control(visitor) {
    const control = this.#controls[visitor];
    return control ? { ...control, mine: control.holder === this.#you, asks: control.asker === this.#you } : null;
  }

  /** Why this agent cannot act for a visitor, empty when it can. */
  heldBy(visitor) {
    const control = this.control(visitor);
    return control && !control.mine ? `${this.nameOf(control.holder)} acts for this visitor` : '';
  }

  async rename(name) {
    const problem = await request('PUT', '/console/api/agent', { name });
    if (!problem) localStorage.setItem(NAME, name);
    return problem;
  }

  // A service that was started anew knows this browser and not its name.
  #tellName() {
    const name = localStorage.getItem(NAME);
    if (!this.me) return;
    this.#told = true;
    if (name && name !== this.me.name) this.rename(name);
  }
}

/** Asks for the control, or answers who asks; resolves to what went wrong, if anything. */
export const control = (visitor, what) => request('POST', `/console/api/visitors/${visitor}/control`, { do: what });

async function request(method, path, body) {
  try {
    const reply = await fetch(path, { method, body: JSON.stringify(body) });
    return reply.ok ? '' : (await reply.json()).error;
  } catch {
    return 'the service does not answer';
  }
}

/** An agent's initials in its colour. */
export function face(agent, acts) {
  const initials = agent.name.split(/\s+/).map((word) => [...word][0]).slice(0, 2).join('').toUpperCase();
  const result = element('span', 'face', initials);
  result.style.setProperty('--face', agent.colour);
  result.toggleAttribute('data-acts', acts);
  result.title = `${agent.name} ${acts ? 'acts' : 'watches'}`;
  result.setAttribute('role', 'img');
  result.setAttribute('aria-label', result.title);
  return result;
}

/** The faces of who watches a visitor. */
export function showFaces(place, agents, visitor) {
  const holder = agents.control(visitor)?.holder;
  const watchers = agents.watchers(visitor);
  const key = JSON.stringify([holder, watchers.map(({ id, name, colour }) => [id, name, colour])]);
  if (place.dataset.key === key) return;
  place.dataset.key = key;
  place.replaceChildren(...watchers.slice(0, MOST_FACES).map((agent) => face(agent, agent.id === holder)));
  if (watchers.length > MOST_FACES) place.append(element('span', 'face-more', `+${watchers.length - MOST_FACES}`));
}

/** The button that says who this agent is, and the dialog behind it. */
export class AgentDialog {
  #agents;
  #dialog = byId('agent-dialog');

  constructor(agents) {
    this.#agents = agents;
    byId('agent').addEventListener('click', () => {
      byId('agent-name').value = agents.me?.name ?? '';
      byId('agent-error').hidden = true;
      this.#dialog.showModal();
      byId('agent-name').select();
    });
    byId('agent-cancel').addEventListener('click', () => this.#dialog.close());
    byId('sign-out').addEventListener('click', async () => {
      await fetch('/console/sign-out', { method: 'POST' }).catch(() => {});
      location.reload();
    });
    byId('agent-form').addEventListener('submit', (event) => {
      event.preventDefault();
      this.#save();
    });
  }

  show() {
    const { me } = this.#agents;
    byId('agent').hidden = !me;
    if (!me) return;
    setText(byId('agent-label'), me.name);
    byId('agent-face').style.setProperty('--face', me.colour);
    setText(byId('agent-face'), face(me, false).textContent);
  }

  async #save() {
    const problem = await this.#agents.rename(byId('agent-name').value.trim());
    byId('agent-error').hidden = !problem;
    setText(byId('agent-error'), problem ? `Not changed: ${problem}.` : '');
    if (!problem) this.#dialog.close();
  }
}
