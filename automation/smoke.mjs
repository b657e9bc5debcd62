// Waits until the development service has received frames, pages and taps of a visitor, and prints how many.
// Usage: node automation/smoke.mjs SERVICE_URL SECONDS. Exits with 0 only if each arrived.
const [url, limit] = process.argv.slice(2);
const kinds = ['frames', 'pages', 'taps'];
const deadline = Date.now() + Number(limit) * 1000;
let counts = {};

while (Date.now() < deadline) {
  const reply = await fetch(new URL('console/api/visitors', url)).catch(() => null);
  const visitors = reply?.ok ? await reply.json() : [];
  for (const visitor of visitors) {
    counts = Object.fromEntries(kinds.map((kind) => [kind, visitor.counters[kind]]));
  }
  // The tour goes on for a while after the first of each: wait for a few.
  if (kinds.every((kind) => counts[kind] >= 3)) break;
  await new Promise((resolve) => setTimeout(resolve, 500));
}

const missing = kinds.filter((kind) => !counts[kind]);
console.log(kinds.map((kind) => `${kind}: ${counts[kind] ?? 0}`).join(', '));
if (missing.length > 0) console.error(`No ${missing.join(', no ')} arrived within ${limit} s`);
process.exit(missing.length > 0 ? 1 : 0);
