// Looks at pictures of the app's window, with the agent's browser as the decoder.

/** The bytes of a picture's pixels, four a pixel. */
async function pixels(page, png) {
  return page.evaluate(async (base64) => {
    const bytes = Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
    const bitmap = await createImageBitmap(new Blob([bytes]));
    const context = new OffscreenCanvas(bitmap.width, bitmap.height).getContext('2d');
    context.drawImage(bitmap, 0, 0);
    const { data } = context.getImageData(0, 0, bitmap.width, bitmap.height);
    return { width: bitmap.width, height: bitmap.height, data: Array.from(data) };
  }, png.toString('base64'));
}

const near = (data, at, rgb, most) => rgb.every((value, channel) => Math.abs(data[at + channel] - value) <= most);

/** How much of an area shows a colour, from 0 to 1. */
export async function shareOf(page, png, area, rgb) {
  const { width, data } = await pixels(page, png);
  let found = 0;
  for (let y = area.y; y < area.y + area.height; y += 1) {
    for (let x = area.x; x < area.x + area.width; x += 1) found += near(data, 4 * (y * width + x), rgb, 12) ? 1 : 0;
  }
  return found / (area.width * area.height);
}

/** The middle of the lowest stretch of a colour in a column above `bottom`; null without one. */
export async function lowestStretch(page, png, x, bottom, rgb) {
  const { width, data } = await pixels(page, png);
  const is = (y) => y >= 0 && near(data, 4 * (y * width + x), rgb, 2);
  let end = bottom;
  while (end >= 0 && !is(end)) end -= 1;
  if (end < 0) return null;
  let begin = end;
  while (is(begin - 1)) begin -= 1;
  return (begin + end) / 2;
}
