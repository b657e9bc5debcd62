// Opens the console's WebSocket while the page's script is still on its way, and asks for the visitor that the page will
// show: on a slow line the picture comes a good deal earlier. No module: the page takes it over when it runs.

window.early = (() => {
  const socket = new WebSocket(`${location.protocol === 'https:' ? 'wss' : 'ws'}://${location.host}/console/ws`);
  const session = new URLSearchParams(location.hash.slice(1)).get('session') ?? '';
  const messages = [];
  socket.binaryType = 'arraybuffer';
  socket.onopen = () => socket.send(JSON.stringify({ type: 'watch', session }));
  socket.onmessage = ({ data }) => messages.push(data);
  return { socket, messages };
})();
