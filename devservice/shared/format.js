// Figures and times as the pages write them.

const clock = new Intl.DateTimeFormat(undefined, { hour: '2-digit', minute: '2-digit', second: '2-digit', hour12: false });

export function time(milliseconds) {
  return clock.format(milliseconds);
}

const shortClock = new Intl.DateTimeFormat(undefined, { hour: '2-digit', minute: '2-digit', hour12: false });
const day = new Intl.DateTimeFormat(undefined, { day: 'numeric', month: 'short' });

/** A time without seconds, with the day unless that is today. */
export function dayTime(milliseconds) {
  const today = new Date().toDateString() === new Date(milliseconds).toDateString();
  return today ? shortClock.format(milliseconds) : `${day.format(milliseconds)}, ${shortClock.format(milliseconds)}`;
}

/** A span as "0:07" or "1:02:09". */
export function span(milliseconds) {
  const seconds = Math.max(0, Math.floor(milliseconds / 1000));
  const parts = [Math.floor(seconds / 60) % 60, seconds % 60];
  const hours = Math.floor(seconds / 3600);
  if (hours > 0) parts.unshift(hours);
  return parts.map((part, i) => (i === 0 ? String(part) : String(part).padStart(2, '0'))).join(':');
}

/** An age as "0.4 s", "12 s" or "3 min". */
export function age(milliseconds) {
  const seconds = Math.max(0, milliseconds / 1000);
  if (seconds < 10) return `${seconds.toFixed(1)} s`;
  return seconds < 120 ? `${Math.round(seconds)} s` : `${Math.round(seconds / 60)} min`;
}

export function bytes(count) {
  if (count < 1000) return `${Math.round(count)} B`;
  const units = ['kB', 'MB', 'GB', 'TB'];
  let value = count / 1000;
  let unit = 0;
  while (value >= 1000 && unit < units.length - 1) {
    value /= 1000;
    unit += 1;
  }
  return `${value.toFixed(value < 10 ? 1 : 0)} ${units[unit]}`;
}

export function count(value) {
  return value.toLocaleString('en');
}
