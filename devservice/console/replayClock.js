// Where a recording stands while it is played. Times are milliseconds since its start.

const IDLE_MS = 5000;
// Of a stretch that is skipped this much is shown, so that one sees that time passes.
const SHOWN_BEFORE_MS = 1000;
const SHOWN_AFTER_MS = 500;

export const SPEEDS = [0.5, 1, 2, 4, 8];

export class ReplayClock {
  position = 0;
  playing = false;
  speed = 1;
  skipsIdle = true;

  /** `pictures` and `events`: when each came, in order. */
  constructor(pictures, events, duration = 0) {
    this.pictures = pictures;
    this.duration = Math.max(duration, pictures.at(-1) ?? 0, events.at(-1) ?? 0);
    this.idle = stretches([...pictures, ...events, this.duration].sort((a, b) => a - b));
  }

  /** Goes on by a span of real time. */
  advance(milliseconds) {
    if (!this.playing) return;
    this.seek(this.position + milliseconds * this.speed);
    const stretch = this.skipsIdle && this.idle.find(([from, to]) => this.position > from && this.position < to);
    if (stretch) this.position = stretch[1];
    if (this.position >= this.duration) this.playing = false;
  }

  seek(position) {
    this.position = Math.min(Math.max(position, 0), this.duration);
  }

  /** The number of the picture that was on the screen, counted from 1; 0 before the first. */
  get picture() {
    return upTo(this.pictures, this.position);
  }

  /** A step faster or slower. */
  changeSpeed(step) {
    this.speed = SPEEDS[Math.min(Math.max(SPEEDS.indexOf(this.speed) + step, 0), SPEEDS.length - 1)];
  }
}

/** How many of the times, which are in order, are not after a moment. */
export function upTo(times, moment) {
  let [low, high] = [0, times.length];
  while (low < high) {
    const middle = (low + high) >> 1;
    if (times[middle] <= moment) low = middle + 1;
    else high = middle;
  }
  return low;
}

function stretches(times) {
  const found = [];
  let last = 0;
  for (const time of times) {
    if (time - last > IDLE_MS) found.push([last + SHOWN_BEFORE_MS, time - SHOWN_AFTER_MS]);
    last = time;
  }
  return found;
}
