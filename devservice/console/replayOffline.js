// Starts the player in an exported file, where everything it needs stands in the document.

import { byId, element } from './dom.js';
import { ReplayPlayer } from './replayPlayer.js';

function start() {
  const recording = JSON.parse(byId('recording').textContent);
  const pictures = document.getElementsByClassName('picture');
  const load = async (number) => {
    const bytes = Uint8Array.from(atob(pictures[number - 1].textContent), (character) => character.charCodeAt(0));
    return new Blob([bytes], { type: 'image/jpeg' });
  };
  document.title = recording.title;
  byId('head').append(element('h1', 'recording-title', recording.title), element('p', 'muted', recording.about));
  const player = new ReplayPlayer(byId('replay'), recording, load);
  player.setNotes(recording.notes);
}

start();
