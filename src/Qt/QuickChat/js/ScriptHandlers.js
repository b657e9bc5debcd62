// Runs beside the page, out of reach of its scripts. Hands messages over one after the other and piece by
// piece, each when the one before has been taken; what waits meanwhile is bounded.
(function (page, handlers, eventType) {
    "use strict";
    const own = new URL(page);
    if (location.origin !== own.origin || location.pathname !== own.pathname) return;

    const pieceLength = 256 * 1024;
    const maximumLength = 48 * 1024 * 1024;
    const maximumWaiting = 64;
    // Apart, so that a page that floods does not keep the library's own scripts from being heard.
    const queues = { script: { messages: [], length: 0 }, page: { messages: [], length: 0 } };
    let receiver = null;
    let isSending = false;
    let hasDropped = false;

    function post(sender, name, body) {
        const queue = queues[sender];
        const length = body === null ? 0 : body.length;
        if (queue.messages.length >= maximumWaiting || queue.length + length > maximumLength) {
            hasDropped = true;
        } else {
            queue.messages.push({ sender, name, body, start: 0 });
            queue.length += length;
        }
        if (receiver && !isSending) sendNext();
    }

    function pieceOf(message) {
        if (message.body === null) return "";
        let end = Math.min(message.start + pieceLength, message.body.length);
        const last = message.body.charCodeAt(end - 1);
        const splitsPair = end < message.body.length && last >= 0xd800 && last < 0xdc00;
        if (splitsPair) --end;
        return message.body.slice(message.start, end);
    }

    function sendNext() {
        if (hasDropped) {
            hasDropped = false;
            receiver.dropped();
        }
        const queue = queues.script.messages.length > 0 ? queues.script : queues.page;
        const message = queue.messages[0];
        isSending = message !== undefined;
        if (!isSending) return;
        const piece = pieceOf(message);
        const isFirst = message.start === 0;
        message.start += piece.length;
        const isLast = message.body === null || message.start === message.body.length;
        if (isLast) {
            queue.messages.shift();
            queue.length -= message.start;
        }
        const isScript = message.sender === "script";
        receiver.receive(message.name, message.body !== null, isScript, piece, isFirst, isLast);
    }

    window.addEventListener(eventType, event => {
        const detail = event.detail;
        if (typeof detail !== "string") return;
        const nameEnd = detail.indexOf(":");
        const name = detail.slice(0, Math.max(nameEnd, 0));
        const kind = detail.slice(nameEnd + 1, nameEnd + 3);
        if (!handlers.includes(name) || (kind !== "s:" && kind !== "x:")) return;
        post("page", name, kind === "s:" ? detail.slice(nameEnd + 3) : null);
    }, true);

    const messageHandlers = {};
    for (const name of handlers) {
        messageHandlers[name] = Object.freeze({
            postMessage: body => post("script", name, typeof body === "string" ? body : null),
        });
    }
    Object.defineProperty(window, "webkit", {
        value: Object.freeze({ messageHandlers: Object.freeze(messageHandlers) }),
    });

    new QWebChannel(qt.webChannelTransport, channel => {
        receiver = channel.objects.receiver;
        receiver.taken.connect(sendNext);
        sendNext();
    });
})
