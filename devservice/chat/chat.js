// The visitor's side of the chat, shown full-screen in the app.

import { byId } from './dom.js';
import { ChatConnection } from './chatConnection.js';
import { parseParameters, readableOn } from './chatParameters.js';
import { MessageList } from './messageList.js';

const STATES = { connected: 'Connected', lost: 'Connection lost. Trying again…', unknown: 'This chat cannot be opened.' };

const TYPING_PAUSE_MS = 3000;

const field = byId('text');
const list = new MessageList(byId('messages'), byId('talk'), 'visitor');

function showState(state) {
  byId('state').dataset.state = state;
  byId('state').textContent = STATES[state];
}

function dress({ title, message, hint, color }) {
  if (color) {
    document.documentElement.style.setProperty('--accent', color);
    document.documentElement.style.setProperty('--on-accent', readableOn(color));
  }
  byId('title').textContent = title || 'Chat';
  document.title = title || 'Chat';
  byId('greeting').textContent = message;
  byId('greeting').hidden = message === '';
  field.placeholder = hint || 'Message';
}

function fitField() {
  field.style.height = 'auto';
  field.style.height = `${field.scrollHeight + field.offsetHeight - field.clientHeight}px`;
  byId('send').disabled = field.value.trim() === '';
}

function startWriting(connection) {
  let told = 0;
  field.addEventListener('input', () => {
    fitField();
    if (field.value === '' || Date.now() - told < TYPING_PAUSE_MS) return;
    told = Date.now();
    connection.typing();
  });
  field.addEventListener('keydown', (event) => {
    if (event.key !== 'Enter' || event.shiftKey || event.isComposing) return;
    event.preventDefault();
    byId('composer').requestSubmit();
  });
  byId('composer').addEventListener('submit', (event) => {
    event.preventDefault();
    const text = field.value.trim();
    if (text === '') return;
    list.addWaiting(connection.send(text), text);
    field.value = '';
    fitField();
    field.focus();
  });
}

function startAttaching(connection) {
  byId('file').addEventListener('change', ({ target }) => {
    for (const file of target.files) list.addWaiting(connection.attach(file), file.name);
    target.value = '';
  });
}

let typingTimer = 0;

function showAgents({ typing, agent, seenUpTo }) {
  list.seenUpTo(seenUpTo);
  clearTimeout(typingTimer);
  byId('typing').textContent = typing > 0 ? `${agent || 'Somebody'} is typing…` : '';
  if (typing > 0) typingTimer = setTimeout(() => { byId('typing').textContent = ''; }, typing);
}

function start(parameters) {
  dress(parameters);
  let last = 0;
  const tellSeen = () => !document.hidden && last > 0 && connection.seen(last);
  const connection = new ChatConnection(parameters, {
    onState: showState,
    onMessages: (messages, reset) => {
      list.add(messages, reset);
      last = messages.at(-1)?.seq ?? last;
      tellSeen();
    },
    onAgents: showAgents,
    onRefused: (key, reason) => list.refuse(key, reason),
  });
  document.addEventListener('visibilitychange', tellSeen);
  startWriting(connection);
  startAttaching(connection);
  connection.open();
}

const parameters = parseParameters(location.hash);
if (parameters?.tenantId && parameters.visitorId) {
  start(parameters);
} else {
  showState('unknown');
  field.disabled = true;
  byId('file').disabled = true;
}
window.addEventListener('hashchange', () => location.reload());
window.addEventListener('resize', () => list.toEnd());
