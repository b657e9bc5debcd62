import { byId } from './dom.js';

// The app takes 10 million pixels; larger screens get a drawing that the app scales up.
const MOST_PIXELS = 9.9e6;
// As strong as the app shows a drawing.
const ECHO_ALPHA = 0.5;

/** The drawing over the picture, kept as marks: strokes, arrows, boxes and texts. Places are fractions of the screen. */
export class Sketch {
  #canvas = byId('sketch');
  #context = this.#canvas.getContext('2d');
  #marks = [];
  #echo = [];
  #current = null;

  /** Fits the drawing to the app's screen; another size leaves nothing of what was drawn. */
  resize({ width, height }) {
    const shrink = Math.min(1, Math.sqrt(MOST_PIXELS / (width * height)));
    const [w, h] = [width, height].map((side) => Math.max(1, Math.round(side * shrink)));
    if (this.#canvas.width === w && this.#canvas.height === h) return;
    this.#canvas.width = w;
    this.#canvas.height = h;
    this.clear();
  }

  get marks() {
    return this.#marks.length;
  }

  /** `tool` is "draw", "arrow" or "box", `width` a fraction of the screen's shorter side. */
  begin(place, { tool, colour, width }) {
    this.#current = { tool, colour, width, places: [place] };
    this.#repaint();
  }

  extend(places) {
    if (!this.#current) return;
    this.#current.places = this.#current.tool === 'draw' ? [...this.#current.places, ...places] : [this.#current.places[0], places.at(-1)];
    this.#repaint();
  }

  /** Whether there was a mark to finish. */
  finish() {
    if (!this.#current) return false;
    this.#marks.push(this.#current);
    this.#current = null;
    return true;
  }

  /** A text that begins at a place. */
  write(place, text, { colour, width }) {
    this.#marks.push({ tool: 'text', colour, width, places: [place], text });
    this.#repaint();
  }

  abandon() {
    this.#current = null;
    this.#repaint();
  }

  undo() {
    this.#marks.pop();
    this.#repaint();
  }

  clear() {
    this.#marks = [];
    this.#echo = [];
    this.abandon();
  }

  /** What is drawn has gone out: it stays to be seen, as the app shows it, until `drop`. */
  keepAsEcho() {
    this.#echo = this.#marks;
    this.#marks = [];
    this.#repaint();
  }

  drop() {
    if (this.#echo.length === 0) return;
    this.#echo = [];
    this.#repaint();
  }

  /** The drawing as the app gets it: a PNG as a data URL, transparent where nothing is drawn. */
  toPng() {
    this.#clean();
    for (const mark of this.#marks) this.#paint(mark);
    const url = this.#canvas.toDataURL('image/png');
    this.#repaint();
    return url;
  }

  #clean() {
    this.#context.clearRect(0, 0, this.#canvas.width, this.#canvas.height);
  }

  #repaint() {
    this.#clean();
    this.#context.globalAlpha = ECHO_ALPHA;
    for (const mark of this.#echo) this.#paint(mark);
    this.#context.globalAlpha = 1;
    for (const mark of this.#marks) this.#paint(mark);
    if (this.#current) this.#paint(this.#current);
  }

  #paint({ tool, colour, width, places, text }) {
    const { width: w, height: h } = this.#canvas;
    const points = places.map(({ left, top }) => ({ x: left * w, y: top * h }));
    const context = this.#context;
    context.strokeStyle = colour;
    context.fillStyle = colour;
    context.lineWidth = width * Math.min(w, h);
    context.lineCap = 'round';
    context.lineJoin = 'round';
    SHAPES[tool](context, points, text, Math.min(w, h));
  }
}

const SHAPES = {
  draw(context, points) {
    context.beginPath();
    context.moveTo(points[0].x, points[0].y);
    for (let i = 1; i < points.length - 1; i += 1) {
      const [a, b] = [points[i], points[i + 1]];
      context.quadraticCurveTo(a.x, a.y, (a.x + b.x) / 2, (a.y + b.y) / 2);
    }
    const last = points[points.length - 1];
    context.lineTo(last.x, last.y);
    context.stroke();
  },

  arrow(context, points) {
    const [from, to] = [points[0], points[points.length - 1]];
    const head = Math.min(context.lineWidth * 4, Math.hypot(to.x - from.x, to.y - from.y) / 2);
    const angle = Math.atan2(to.y - from.y, to.x - from.x);
    context.beginPath();
    context.moveTo(from.x, from.y);
    context.lineTo(to.x, to.y);
    for (const side of [-0.5, 0.5]) {
      context.moveTo(to.x, to.y);
      context.lineTo(to.x - head * Math.cos(angle + side), to.y - head * Math.sin(angle + side));
    }
    context.stroke();
  },

  box(context, points) {
    const [from, to] = [points[0], points[points.length - 1]];
    context.strokeRect(from.x, from.y, to.x - from.x, to.y - from.y);
  },

  text(context, [{ x, y }], text, side) {
    const size = side * 0.02 + context.lineWidth * 2.2;
    context.font = `650 ${size}px Inter, system-ui, sans-serif`;
    context.textBaseline = 'middle';
    context.lineWidth = size / 5;
    context.strokeStyle = '#ffffff';
    context.strokeText(text, x, y);
    context.fillText(text, x, y);
  },
};
