// The agent's side: the console in a browser, used with the mouse alone.

import { eventually, openBrowser } from './support.mjs';

/** The visitor's window in points. */
const SCREEN = { width: 390, height: 844 };

export const WIDGET_GREY = [0x38, 0x38, 0x38];
const DIGIT_POINTS = 30;
const REST_MS = 1500;
const PATIENCE_MS = 6000;
// Where the example app shows nothing that matters.
const DOT = { x: 3, y: 740, width: 4, height: 4 };

const middleOf = ({ x, y, width, height }) => ({ x: x + width / 2, y: y + height / 2 });

export class AgentConsole {
  /** Everything that went wrong in the page. */
  problems = [];

  static async open(t, url, viewport = { width: 1280, height: 900 }, desktop = undefined) {
    const agent = new AgentConsole();
    agent.page = await (await openBrowser(t, desktop)).newPage({ viewport });
    agent.page.setDefaultTimeout(30_000);
    agent.page.on('pageerror', (error) => agent.problems.push(String(error)));
    agent.page.on('console', (line) => ['error', 'warning'].includes(line.type()) && agent.problems.push(line.text()));
    await agent.page.goto(url);
    return agent;
  }

  button(name) {
    return this.page.getByRole('button', { name, exact: true });
  }

  entry(text) {
    return this.page.getByRole('list', { name: 'Timeline' }).getByRole('listitem').filter({ hasText: text });
  }

  async join(code) {
    await this.page.getByLabel('Join by share code').fill(code);
    await this.button('Join').click();
    await this.page.locator('#share-code').filter({ hasText: code }).waitFor();
  }

  /** Where a point of the visitor's window is in the page. */
  async onPage({ x, y }) {
    const box = await this.page.locator('#surface').boundingBox();
    return { x: box.x + (x / SCREEN.width) * box.width, y: box.y + (y / SCREEN.height) * box.height };
  }

  /** Taps in the middle of an area of the visitor's window. */
  async tap(area) {
    await this.page.locator('#surface[data-mode="tap"]').waitFor();
    const { x, y } = await this.onPage(middleOf(area));
    await this.page.mouse.click(x, y);
  }

  /** Draws around an area with the pen that is chosen. */
  async encircle(area, colour) {
    await this.page.getByRole('radio', { name: 'Draw' }).check();
    await this.page.getByLabel(colour).check();
    await this.page.getByLabel('Thick').check();
    const middle = middleOf(area);
    for (let angle = 0; angle <= 2 * Math.PI + 0.1; angle += 0.15) {
      const { x, y } = await this.onPage({
        x: middle.x + (area.width / 2) * Math.cos(angle), y: middle.y + (area.height / 2) * Math.sin(angle),
      });
      await this.page.mouse.move(x, y);
      if (angle === 0) await this.page.mouse.down();
    }
    await this.page.mouse.up();
    await this.page.getByRole('radio', { name: 'Tap' }).check();
  }

  /** Opens the chat with a visitor, found by a text of its entry in the lists. */
  async openChat(text) {
    await this.page.locator('.present-open').filter({ hasText: text }).click();
    await this.page.getByRole('tab', { name: /^Chat/ }).click();
  }

  /** Whether the console says that the visitor has the chat open. */
  chatIsOpen() {
    return this.page.locator('#chat-state').getAttribute('data-open').then((open) => open === 'true');
  }

  async write(text) {
    await this.page.getByLabel('Message to the visitor').fill(text);
    await this.page.keyboard.press('Enter');
  }

  message(text) {
    return this.page.locator('#chat-messages li').filter({ hasText: text });
  }

  async shareFile(name, mimeType, buffer) {
    await this.page.locator('#chat-file').setInputFiles({ name, mimeType, buffer });
    await this.page.locator('#share-form button[type="submit"]').click();
    await this.message(name).waitFor();
  }

  async closeSession() {
    await this.button('Close').click();
    await this.button('Close session').click();
  }

  /** Waits until the picture has not changed for a while. */
  async rests() {
    const content = () => this.page.locator('#picture').evaluate((canvas) => canvas.toDataURL());
    let before = await content();
    let since = performance.now();
    await eventually('a picture at rest', async () => {
      const now = await content();
      if (now !== before) since = performance.now();
      before = now;
      return performance.now() - since > REST_MS;
    });
  }

  /** How much of an area of the visitor's window the picture shows in a colour, from 0 to 1. */
  share(area, colour, tolerance = 30) {
    return this.page.locator('#picture').evaluate((canvas, [{ x, y, width, height }, rgb, most, screen]) => {
      const [across, down] = [canvas.width / screen.width, canvas.height / screen.height];
      const size = [Math.max(1, Math.round(width * across)), Math.max(1, Math.round(height * down))];
      const copy = new OffscreenCanvas(...size).getContext('2d');
      copy.drawImage(canvas, -Math.round(x * across), -Math.round(y * down));
      const { data } = copy.getImageData(0, 0, ...size);
      let found = 0;
      for (let i = 0; i < data.length; i += 4) {
        found += rgb.every((value, channel) => Math.abs(data[i + channel] - value) <= most) ? 1 : 0;
      }
      return found / (size[0] * size[1]);
    }, [area, colour, tolerance, SCREEN]);
  }

  /**
   * Waits for what the picture shows. A picture is lost when the app takes it while a request is under way; a dot brings
   * the next.
   */
  sees(what, probe) {
    let since = performance.now();
    return eventually(what, async () => {
      if (await probe()) return true;
      if (performance.now() - since > PATIENCE_MS) {
        await this.encircle(DOT, 'Black');
        since = performance.now();
      }
      return false;
    });
  }

  /** Waits until the picture shows an area in a colour, or no longer. */
  shows(what, area, colour, { least = 0.3, not = false } = {}) {
    return this.sees(what, async () => (await this.share(area, colour) >= least) !== not);
  }

  /** Waits until the widget shows the code that the console names, and gives it back. */
  async showsCode(app) {
    await this.shows('the widget', await app.place('shareId'), WIDGET_GREY);
    const code = await this.page.locator('#share-code').textContent();
    await this.sees(`the widget showing ${code}`, async () =>
      await this.digits(await app.place('shareId'), code.length, DIGIT_POINTS) === code);
    return code;
  }

  /**
   * Reads digits from an area of the picture by comparing them with those that the browser draws: white, in cells of
   * equal width, in the app's font.
   */
  digits(area, count, size) {
    return this.page.locator('#picture').evaluate((canvas, [{ x, y, width, height }, number, points, screen]) => {
      const scale = canvas.width / screen.width;
      const cell = { width: Math.round((width / number) * scale), height: Math.round(height * scale) };
      const reach = 3;
      const grey = (context) => {
        const { data } = context.getImageData(0, 0, context.canvas.width, context.canvas.height);
        return Array.from({ length: data.length / 4 }, (_, i) => data[4 * i + 1]);
      };
      const drawn = (digit, [right, down]) => {
        const context = new OffscreenCanvas(cell.width, cell.height).getContext('2d');
        context.fillStyle = '#383838';
        context.fillRect(0, 0, cell.width, cell.height);
        context.font = `600 ${points * scale}px Inter, Roboto, "Liberation Sans", sans-serif`;
        context.textAlign = 'center';
        context.textBaseline = 'middle';
        context.fillStyle = 'white';
        context.fillText(String(digit), cell.width / 2 + right, cell.height / 2 + down);
        return grey(context);
      };
      const difference = (a, b) => a.reduce((sum, value, i) => sum + (value - b[i]) ** 2, 0);
      const shifts = [];
      for (let i = -reach; i <= reach; i += 1) for (let j = -reach; j <= reach; j += 1) shifts.push([i, j]);
      const known = Array.from({ length: 10 }, (_, digit) => shifts.map((shift) => drawn(digit, shift)));
      return Array.from({ length: number }, (_, place) => {
        const context = new OffscreenCanvas(cell.width, cell.height).getContext('2d');
        context.drawImage(canvas, -Math.round((x + (place * width) / number) * scale), -Math.round(y * scale));
        const seen = grey(context);
        const misfits = known.map((shapes) => Math.min(...shapes.map((shape) => difference(seen, shape))));
        return misfits.indexOf(Math.min(...misfits));
      }).join('');
    }, [area, count, size, SCREEN]);
  }
}
