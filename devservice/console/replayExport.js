// Makes a recording into one HTML file that plays anywhere, without the service and without a network.

/** More than this no browser opens well. */
export const MOST_BYTES = 200_000_000;

/**
 * recording: as for the player, with `title`, `about` and `notes`. `load` promises the picture of a number as a Blob,
 * `onProgress` is told the fraction that is done. Gives back a Blob; rejects when `signal` aborts or a picture fails.
 */
export async function exportFile(recording, load, onProgress, signal) {
  const [script, style] = await Promise.all([source('js', signal), source('css', signal)]);
  const pictures = [];
  let bytes = 0;
  for (let number = 1; number <= recording.pictures.length; number += 1) {
    signal.throwIfAborted();
    const line = await encoded(await load(number));
    bytes += line.length;
    if (bytes > MOST_BYTES) throw new Error('this stretch is too large for one file; choose a shorter one');
    pictures.push(`<script type="text/plain" class="picture">${line}</script>\n`);
    onProgress(number / recording.pictures.length);
  }
  return new Blob([page(recording, script, style), ...pictures, '</body>\n</html>\n'],
    { type: 'text/html' });
}

/** The part of a recording between two moments, which becomes a recording of its own; its first picture's number. */
export function stretch(recording, from, to) {
  const inside = ({ at }) => (at ?? 0) >= from && (at ?? 0) <= to;
  const moved = (item) => ({ ...item, at: (item.at ?? 0) - from });
  // What was on the screen when it begins is the picture before.
  const before = recording.pictures.filter((at) => at <= from).length;
  const first = Math.max(before, 1);
  const pictures = recording.pictures.slice(first - 1).filter((at) => at <= to).map((at) => Math.max(at - from, 0));
  return {
    first,
    recording: {
      ...recording, pictures, duration: to - from,
      events: recording.events.filter(inside).map(moved), notes: recording.notes.filter(inside).map(moved),
    },
  };
}

/** The player with all that it needs, as the build bundles it. */
async function source(type, signal) {
  const reply = await fetch(`/console/replayOffline.${type}`, { signal });
  if (!reply.ok) throw new Error('the service does not give the player');
  const text = await reply.text();
  if (/^(?:@?import )/m.test(text)) throw new Error('pages that are read from a directory make no exports');
  return text;
}

async function encoded(blob) {
  const bytes = new Uint8Array(await blob.arrayBuffer());
  let text = '';
  for (let i = 0; i < bytes.length; i += 0x8000) text += String.fromCharCode(...bytes.subarray(i, i + 0x8000));
  return btoa(text);
}

// What a visitor sent is data, and no markup: "<" never stands in it. The player puts texts into the document as texts;
// should anything get past that, only what bears the file's own random number runs.
function page(recording, script, style) {
  const nonce = [...crypto.getRandomValues(new Uint8Array(16))].map((byte) => byte.toString(16).padStart(2, '0')).join('');
  const data = JSON.stringify(recording).replaceAll('<', '\\u003c');
  return `<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; script-src 'nonce-${nonce}'; style-src 'nonce-${nonce}'; base-uri 'none'; form-action 'none'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>Recording</title>
<style nonce="${nonce}">${style}</style>
</head>
<body class="recording-page">
<header id="head" class="recording-head"></header>
<main id="replay"></main>
<script type="application/json" id="recording">${data}</script>
<script type="module" nonce="${nonce}">
${script}</script>
`;
}
