// The page for tests: what the service replies when a session starts, and how it misbehaves.

import { Connection } from './connection.js';
import { showConnection } from './connectionPill.js';
import { FaultsPanel } from './faultsPanel.js';
import { SettingsPanel } from './settingsPanel.js';
import { toast } from './toast.js';

const settings = new SettingsPanel(() => toast('Saved. Holds from the next session start on.'));
const faults = new FaultsPanel(toast);

function receive(message) {
  if (message.type !== 'settings') return;
  settings.update(message.settings);
  faults.update(message.faults);
}

new Connection({ onState: showConnection, onMessage: receive, onFrame: () => {} }).open();
