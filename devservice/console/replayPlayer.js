import { element, setText } from './dom.js';
import { span } from './format.js';
import { ReplayClock, SPEEDS, upTo } from './replayClock.js';
import { ReplayEvents } from './replayEvents.js';
import { ReplayScreen } from './replayScreen.js';
import { ReplayScrubber } from './replayScrubber.js';
import { wording } from './timelineWording.js';

const MARKED = ['page', 'tap', 'agent', 'chat', 'note'];
const KEYS = [
  ['Space, K', 'play, pause'],
  ['← →', '5 seconds back, ahead'],
  ['J L', '30 seconds back, ahead'],
  [', .', 'picture back, ahead'],
  ['P N', 'event back, ahead'],
  ['− +', 'slower, faster'],
  ['I', 'skip idle stretches, or not'],
  ['Home, End', 'start, end'],
];

/** Plays a recording: the screen, the bar of its time, and what happened. */
export class ReplayPlayer {
  #clock;
  #screen;
  #scrubber;
  #list;
  #events;
  #eventTimes;
  // When something happened that is marked, notes included.
  #marks = [];
  #last = 0;
  #play = button('button primary replay-play', 'Play');
  #time = element('span', 'replay-time');
  #skip = element('input');
  #speed = element('select', 'replay-speed');

  /**
   * recording: pictures (when each came), events ({at, kind, text, detail}), duration, screen (in points).
   * `load` promises the picture of a number as a Blob; `decorate` may add to an event's row.
   */
  constructor(root, recording, load, decorate) {
    this.#events = recording.events;
    this.#eventTimes = recording.events.map(({ at }) => at);
    this.#clock = new ReplayClock(recording.pictures, this.#eventTimes, recording.duration);
    this.#screen = new ReplayScreen(load, recording.screen);
    const onSeek = (moment) => this.seek(moment);
    const wordingOf = (event) => eventWording(event);
    this.#scrubber = new ReplayScrubber({
      duration: this.#clock.duration, idle: this.#clock.idle, titleOf: (event) => wordingOf(event).filter(Boolean).join(' '), onSeek,
    });
    this.#list = new ReplayEvents({ wordingOf, onSeek, decorate });
    const stage = element('div', 'replay-stage');
    stage.append(this.#screen.root);
    const view = element('div', 'replay-view');
    view.append(stage, this.#scrubber.root, this.#controls());
    root.classList.add('replay');
    root.append(view, this.#list.root);
    document.addEventListener('keydown', (event) => this.#key(event));
    // A session's first picture comes a moment after its start.
    this.#clock.seek(recording.pictures[0] ?? 0);
    this.setNotes([]);
    requestAnimationFrame((now) => this.#tick(now));
  }

  get position() {
    return this.#clock.position;
  }

  /** Where what is added beside the events belongs. */
  get side() {
    return this.#list.root;
  }

  seek(moment) {
    this.#clock.seek(moment);
    this.#show();
  }

  /** Notes that agents have written: {at, text, author}; those without a moment belong to the start. */
  setNotes(notes) {
    const written = notes.map((note) => ({ at: note.at ?? 0, kind: 'note', text: note.text, detail: note }));
    const all = [...this.#events, ...written].sort((a, b) => a.at - b.at);
    const marked = all.filter(({ kind }) => MARKED.includes(kind));
    this.#marks = marked.map(({ at }) => at);
    this.#list.set(all);
    this.#scrubber.mark(marked);
    this.#show();
  }

  #controls() {
    const bar = element('div', 'replay-controls');
    this.#play.addEventListener('click', () => this.#toggle());
    const back = button('button', '−5 s', '−5 s, back');
    back.addEventListener('click', () => this.seek(this.position - 5000));
    const ahead = button('button', '+5 s', '+5 s, ahead');
    ahead.addEventListener('click', () => this.seek(this.position + 5000));
    Object.assign(this.#skip, { type: 'checkbox', checked: this.#clock.skipsIdle });
    this.#skip.addEventListener('change', () => { this.#clock.skipsIdle = this.#skip.checked; });
    const skip = element('label', 'check');
    skip.append(this.#skip, 'Skip idle');
    for (const speed of SPEEDS) this.#speed.append(new Option(`${speed}×`, String(speed)));
    this.#speed.setAttribute('aria-label', 'Speed');
    this.#speed.addEventListener('change', () => { this.#clock.speed = Number(this.#speed.value); });
    bar.append(this.#play, back, ahead, this.#time, element('span', 'spacer'), skip, this.#speed, ...keysHelp());
    return bar;
  }

  #toggle() {
    if (!this.#clock.playing && this.position >= this.#clock.duration) this.#clock.seek(0);
    this.#clock.playing = !this.#clock.playing;
    this.#show();
  }

  #tick(now) {
    if (this.#clock.playing) {
      this.#clock.advance(this.#last ? now - this.#last : 0);
      this.#show();
    }
    this.#last = now;
    requestAnimationFrame((next) => this.#tick(next));
  }

  #show() {
    const { position, duration, playing, speed, skipsIdle, pictures } = this.#clock;
    this.#screen.show(this.#clock.picture, playing ? pictures.length : 0);
    this.#screen.mark(this.#events, upTo(this.#eventTimes, position), position);
    this.#screen.label(`Recorded screen at ${span(position)}`);
    this.#scrubber.update(position);
    this.#list.update(position);
    setText(this.#time, `${span(position)} / ${span(duration)}`);
    setText(this.#play, playing ? 'Pause' : 'Play');
    this.#skip.checked = skipsIdle;
    this.#speed.value = String(speed);
  }

  // The last marked event before the moment, or the first after it.
  #step(direction) {
    const next = direction > 0 ? upTo(this.#marks, this.position) : upTo(this.#marks, this.position - 1) - 1;
    if (next in this.#marks) this.seek(this.#marks[next]);
  }

  #stepPicture(direction) {
    const { picture, pictures } = this.#clock;
    this.#clock.playing = false;
    const moment = pictures[Math.min(Math.max(picture + direction, 1), pictures.length) - 1];
    if (moment !== undefined) this.seek(moment);
  }

  #key(event) {
    const { target, key } = event;
    const typing = target.matches?.('textarea, select, input:not([type="checkbox"], [type="range"])');
    if (typing || event.ctrlKey || event.altKey || event.metaKey || document.querySelector('dialog[open]')) return;
    const pressing = key === ' ' && target.matches?.('button, a, input[type="checkbox"]');
    const action = !pressing && {
      ' ': () => this.#toggle(), k: () => this.#toggle(),
      ArrowLeft: () => this.seek(this.position - 5000), ArrowRight: () => this.seek(this.position + 5000),
      j: () => this.seek(this.position - 30000), l: () => this.seek(this.position + 30000),
      ',': () => this.#stepPicture(-1), '.': () => this.#stepPicture(1),
      p: () => this.#step(-1), n: () => this.#step(1),
      '-': () => this.#clock.changeSpeed(-1), '+': () => this.#clock.changeSpeed(1),
      i: () => { this.#clock.skipsIdle = !this.#clock.skipsIdle; },
      Home: () => this.seek(0), End: () => this.seek(this.#clock.duration),
    }[key.length === 1 ? key.toLowerCase() : key];
    if (!action) return;
    event.preventDefault();
    action();
    this.#show();
  }
}

function button(className, text, label) {
  const result = element('button', className, text);
  result.type = 'button';
  if (label) {
    result.setAttribute('aria-label', label);
    result.title = label;
  }
  return result;
}

function keysHelp() {
  const list = element('dl', 'replay-keys');
  list.id = 'replay-keys';
  list.popover = 'auto';
  for (const [keys, what] of KEYS) list.append(element('dt', '', keys), element('dd', '', what));
  const open = button('button', 'Keys');
  open.popoverTargetElement = list;
  return [open, list];
}

/** [title, text] of an event or a note. */
function eventWording(event) {
  if (event.kind === 'note') return [event.detail.author ? `Note by ${event.detail.author}` : 'Note', event.text];
  if (event.kind === 'chat') return [event.detail?.from === 'agent' ? `${event.detail.agent?.name ?? 'Agent'} wrote` : 'Visitor wrote', event.text];
  return wording(event);
}
