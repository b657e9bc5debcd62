// What the page is opened with. Title, message, hint and colour come percent-encoded, but as parts of a query may be:
// with "&" and "=" as they are. So they are told apart by their order, not by splitting.

const ORDER = /^#?d=(.*?)&tId=(.*?)&vId=(.*?)&title=(.*?)&message=(.*?)&hint=(.*?)&color=(.*?)(?:&n=.*)?$/s;
const LONGEST = { title: 120, message: 1000, hint: 120 };
const COLOUR = /^#(?:[0-9a-f]{3}|[0-9a-f]{6})$/i;

/** {tenantId, visitorId, title, message, hint, color}; undefined when the text is no such list. */
export function parseParameters(hash) {
  const found = ORDER.exec(hash);
  if (!found) return undefined;
  const [, , tenantId, visitorId, title, message, hint, color] = found.map(decode);
  const shortened = (text, name) => [...text].slice(0, LONGEST[name]).join('');
  return {
    tenantId,
    visitorId,
    title: shortened(title, 'title'),
    message: shortened(message, 'message'),
    hint: shortened(hint, 'hint'),
    color: COLOUR.test(color) ? color : '',
  };
}

/** An escape that is none stands for itself. */
function decode(text) {
  try {
    return decodeURIComponent(text);
  } catch {
    return text;
  }
}

/** Black or white, whichever reads better on a colour. */
export function readableOn(color) {
  const digits = color.length === 4 ? [...color.slice(1)].map((digit) => digit + digit) : color.slice(1).match(/../g);
  const [red, green, blue] = digits.map((pair) => {
    const share = parseInt(pair, 16) / 255;
    return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
  });
  const luminance = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
  return luminance > 0.179 ? '#000000' : '#ffffff';
}
