// Signs in with the token, and then shows the page that was asked for.

import { byId } from './dom.js';

function show(problem) {
  byId('problem').textContent = problem;
  byId('problem').hidden = problem === '';
}

async function signIn(token) {
  try {
    const reply = await fetch('/console/sign-in', { method: 'POST', body: JSON.stringify({ token }) });
    if (reply.ok) location.reload();
    else show(`Not signed in: ${(await reply.json()).error}.`);
  } catch {
    show('The service does not answer.');
  }
}

const address = new URL(location.href);
if (address.searchParams.has('token')) {
  show('Not signed in: the token in the address was not taken.');
  address.searchParams.delete('token');
  history.replaceState(null, '', address);
}
byId('sign-in').addEventListener('submit', (event) => {
  event.preventDefault();
  signIn(byId('token').value.trim());
});
byId('token').focus();
