// Runs in the page's own world. What the page posts goes to the scripts beside the page as an event, whose
// detail is text: the name, whether the body is a string ("s") or not ("x"), and the body.
(function (page, handlers, eventType) {
    "use strict";
    const own = new URL(page);
    if (location.origin !== own.origin || location.pathname !== own.pathname) return;
    const post = (name, body) => {
        const isString = typeof body === "string";
        const detail = `${name}:${isString ? "s" : "x"}:${isString ? body : ""}`;
        window.dispatchEvent(new CustomEvent(eventType, { detail }));
    };
    const messageHandlers = {};
    for (const name of handlers) messageHandlers[name] = Object.freeze({ postMessage: body => post(name, body) });
    Object.defineProperty(window, "webkit", {
        value: Object.freeze({ messageHandlers: Object.freeze(messageHandlers) }),
    });
})
