// What is on view, kept in the page's address: it is there again after a reload, and can be handed on as a link.

const KEYS = ['session', 'contact'];

/** {session} or {contact}: the session's id, or the person's tenant and visitor id. */
export function fromAddress() {
  const wanted = new URLSearchParams(location.hash.slice(1));
  const key = KEYS.find((each) => wanted.get(each));
  return key ? { [key]: wanted.get(key) } : null;
}

export function toAddress(session, contact) {
  const hash = new URLSearchParams();
  if (session) hash.set('session', session.sessionId);
  else if (contact) hash.set('contact', contactKey(contact));
  const address = String(hash) !== '' ? `#${hash}` : '';
  if (address !== location.hash) history.replaceState(null, '', address || location.pathname);
}

export const contactKey = ({ tenantId, visitorId }) => `${tenantId}/${visitorId}`;
