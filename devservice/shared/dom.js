/** The element with this id. */
export const byId = (id) => document.getElementById(id);

/** A new element. Text only ever becomes text: what a visitor sends is never markup. */
export function element(tag, className, text) {
  const result = document.createElement(tag);
  if (className) result.className = className;
  if (text !== undefined) result.textContent = text;
  return result;
}

/** Sets text only when it differs, so that assistive technology is not told again. */
export function setText(target, text) {
  if (target.textContent !== text) target.textContent = text;
}
