// The messages an agent sends to a visitor's app, and how the timeline words them.

export const FASTER = { message: { co: { b: true } }, label: 'Faster polling' };
export const FORCE = { message: { co: { s: true } }, label: 'Force start' };
export const CONSENT = { message: { co: { opt: true } }, label: 'Ask for consent' };
export const CLOSE = { message: { a: 'c' }, label: 'Close session' };

/** A tap in the app, in its device pixels. */
export const tap = ({ x, y }) => ({ message: { x, y }, label: 'Tap' });

/** A drawing to lay over the app: a PNG as a data URL. */
export const drawing = (url) => ({ message: { d: { u: url } }, label: 'Drawing' });

/** A dot where the agent points, a drawing too. */
export const pointer = (url) => ({ ...drawing(url), label: 'Pointer' });

/** Wording of a message that is given as JSON text; texts that are no message stay as they are. */
export function describe(text) {
  let message;
  try {
    message = JSON.parse(text);
  } catch {
    return text;
  }
  const parts = [FASTER, FORCE, CONSENT, CLOSE].filter((known) => contains(message, known.message)).map(({ label }) => label);
  if (typeof message.d?.u === 'string') parts.unshift(`Drawing, ${message.d.u}`);
  if (typeof message.x === 'number' && typeof message.y === 'number') parts.unshift(`Tap at ${message.x}, ${message.y} px`);
  return parts.join(' · ') || text;
}

function contains(message, part) {
  return Object.entries(part).every(([key, value]) => (
    typeof value === 'object' ? contains(message?.[key] ?? {}, value) : message?.[key] === value));
}
