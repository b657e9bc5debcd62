import { byId } from './dom.js';

// The app takes 10 million pixels; larger screens get a drawing that the app scales up.
const MOST_PIXELS = 9.9e6;

/** The drawing over the picture, kept as strokes. Places are fractions of the screen. */
export class Sketch {
  #canvas = byId('sketch');
  #context = this.#canvas.getContext('2d');
  #strokes = [];
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

  get strokes() {
    return this.#strokes.length;
  }

  /** `width` is a fraction of the screen's shorter side. */
  begin(place, { colour, width }) {
    this.#current = { colour, width, places: [place] };
    this.#paint(this.#current);
  }

  extend(places) {
    if (!this.#current) return;
    this.#current.places.push(...places);
    this.#paint(this.#current);
  }

  /** Whether there was a stroke to finish. */
  finish() {
    if (!this.#current) return false;
    this.#strokes.push(this.#current);
    this.#current = null;
    return true;
  }

  abandon() {
    this.#current = null;
    this.#repaint();
  }

  undo() {
    this.#strokes.pop();
    this.#repaint();
  }

  clear() {
    this.#strokes = [];
    this.abandon();
  }

  /** The drawing as the app gets it: a PNG as a data URL, transparent where nothing is drawn. */
  toPng() {
    return this.#canvas.toDataURL('image/png');
  }

  #repaint() {
    this.#context.clearRect(0, 0, this.#canvas.width, this.#canvas.height);
    for (const stroke of this.#strokes) this.#paint(stroke);
  }

  // Opaque colours, so that painting a growing stroke anew over itself changes nothing but its end.
  #paint({ colour, width, places }) {
    const { width: w, height: h } = this.#canvas;
    const points = places.map(({ left, top }) => ({ x: left * w, y: top * h }));
    const context = this.#context;
    context.strokeStyle = colour;
    context.lineWidth = width * Math.min(w, h);
    context.lineCap = 'round';
    context.lineJoin = 'round';
    context.beginPath();
    context.moveTo(points[0].x, points[0].y);
    for (let i = 1; i < points.length - 1; i += 1) {
      const [a, b] = [points[i], points[i + 1]];
      context.quadraticCurveTo(a.x, a.y, (a.x + b.x) / 2, (a.y + b.y) / 2);
    }
    const last = points[points.length - 1];
    context.lineTo(last.x, last.y);
    context.stroke();
  }
}
