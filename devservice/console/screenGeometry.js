// From the picture to the app's own pixels.

const SHRINK = 3;
// What shrinking can lose at an edge, as the picture has whole pixels.
const MOST_LOST = SHRINK;
const SCALE_STEPS = 8;

/**
 * The captured screen's size in device pixels. The picture is a third of it, rounded; the points that the app announced
 * tell the exact size when they belong to this picture, turned or not.
 */
export function deviceSize(picture, points) {
  const about = { width: picture.width * SHRINK, height: picture.height * SHRINK };
  const turned = { width: points.height, height: points.width };
  return [points, turned].map((side) => exact(about, side)).find(Boolean) ?? about;
}

function exact(about, { width, height }) {
  if (!width || !height) return null;
  const scale = Math.round((about.width / width) * SCALE_STEPS) / SCALE_STEPS;
  const size = { width: Math.round(width * scale), height: Math.round(height * scale) };
  const near = Math.abs(size.width - about.width) <= MOST_LOST && Math.abs(size.height - about.height) <= MOST_LOST;
  return near ? size : null;
}

/** The screen's width in points: as announced, turned if the picture is, or the picture's own if it is another screen. */
export function pointsAcross(picture, points) {
  const about = { width: picture.width * SHRINK, height: picture.height * SHRINK };
  const turned = { width: points.height, height: points.width };
  return [points, turned].find((side) => exact(about, side))?.width ?? picture.width;
}

/** The device pixel at a place given as fractions of the screen. */
export function devicePixel({ left, top }, size) {
  const inside = (fraction, length) => Math.min(length - 1, Math.max(0, Math.floor(fraction * length)));
  return { x: inside(left, size.width), y: inside(top, size.height) };
}
