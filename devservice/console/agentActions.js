import { CLOSE, CONSENT, FASTER, FORCE } from './agentMessages.js';
import { confirm } from './confirmDialog.js';
import { byId } from './dom.js';

const BUTTONS = { consent: CONSENT, faster: FASTER, force: FORCE };

/** The buttons that act on the visitor's session as a whole. */
export class AgentActions {
  constructor(channel) {
    for (const [id, known] of Object.entries(BUTTONS)) byId(id).addEventListener('click', () => channel.send(known));
    byId('close').addEventListener('click', async () => {
      const { visitor } = channel;
      const sure = await confirm({
        title: 'Close the session?',
        text: 'The visitor\u2019s app stops sharing its screen. It can be invited again afterwards.',
        action: 'Close session',
      });
      if (sure) channel.send(CLOSE, { visitor });
    });
  }

  update(visitor) {
    for (const id of [...Object.keys(BUTTONS), 'close']) byId(id).disabled = visitor.state !== 'live';
  }
}
