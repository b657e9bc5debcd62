import { readFileSync } from 'node:fs';

const AXE = readFileSync(new URL('../../node_modules/axe-core/axe.min.js', import.meta.url), 'utf8');

/** What automatic checks find that keeps people from using the page. */
export async function violations(page) {
  if (!await page.evaluate(() => 'axe' in window)) await page.evaluate(AXE);
  const { violations: found } = await page.evaluate(() => window.axe.run());
  return found.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html).join(' ')}`);
}
