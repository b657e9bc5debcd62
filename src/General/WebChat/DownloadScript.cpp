#include "General/WebChat/DownloadScript.h"

#include "General/Panoptra/Util/Url.h"

namespace merovanta {

namespace {

constexpr std::string_view beforeUrl = "    (async function download() {\n        const url = '";
constexpr std::string_view afterUrl = "';\n        const mostBytes = ";

// A document that has neither a name nor a type that gives it one is refused: the names in the last template
// are unknown, so that building it ends the download. Engines differ in the data URL of an empty document,
// and have none for one that is too long for a text.
constexpr std::string_view steps = R"js(
        const handlers = window.webkit.messageHandlers;
        const fail = text => handlers.jsError.postMessage(text);
        try {
            let res;
            try {
                res = await fetch(url, { credentials: 'include' });
            } catch (err) {
                fail(`fetch threw, error: ${err}, url: ${url}`);
                return;
            }
            if (!res.ok) {
                fail(`Response status was not ok, status: ${res.status}, url: ${url}`);
                return;
            }
            const contentDisp = res.headers.get('content-disposition');
            if (!contentDisp) {
                fail(`content-disposition header missing, url: ${url}`);
                return;
            }
            let filename;
            const match = contentDisp.match(/(;|)\s*filename=\s*("([^"]*)"|([^;\s]*))\s*(?:;|$)/i);
            if (match) {
                filename = match[3] || match[4];
            } else {
                fail(`content-disposition header could not be matched against regex, content-disposition: ${contentDisp} url: ${url}`);
            }
            if (!filename) {
                const type = res.headers.get('content-type') || '';
                if (type.startsWith('application/json')) {
                    filename = 'unnamed.pdf';
                } else if (type.startsWith('image/tiff')) {
                    filename = 'unnamed.tiff';
                }
            }
            if (!filename) {
                fail(`Could not determine filename from content-disposition nor content-type, content-dispositon: ${contentDispositon}, content-type: ${contentType}, url: ${url}`);
                return;
            }
            let tooLarge = null;
            const bounded = ({ body, headers }) => {
                let left = mostBytes;
                const transform = (chunk, controller) => {
                    left -= chunk.byteLength;
                    if (left < 0) throw tooLarge = new RangeError('The document is too large');
                    controller.enqueue(chunk);
                };
                const type = (headers.get('content-type') || '').split(';')[0];
                return new Response(body && body.pipeThrough(new TransformStream({ transform })),
                    { headers: type ? { 'content-type': type } : {} });
            };
            let blob;
            try {
                blob = await bounded(res).blob();
            } catch (err) {
                fail(`res.blob() threw, error: ${tooLarge ?? err}, url: ${url}`);
                return;
            }
            const reader = new FileReader();
            reader.onload = () => {
                const dataUrl = blob.size === 0 ? 'data:;base64,' : reader.result;
                if (typeof dataUrl === 'string' && dataUrl.includes(',')) {
                    handlers.openDocument.postMessage(`${filename};${dataUrl}`);
                } else {
                    fail(`FileReader threw, error: ${reader.error}`);
                }
            };
            reader.onerror = err => fail(`FileReader threw, error: ${err}`);
            reader.readAsDataURL(blob);
        } catch (err) {
            fail(`JSError while downloading document, url: ${url}, err: ${err}`);
        }
    })();
    null)js";

/// The address as part of a text in single quotes. A page chooses it: what could end that text is encoded.
std::string quotable(std::string_view url) {
    std::string text;
    text.reserve(url.size());
    for (const char character : url) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte <= 0x20 || byte >= 0x7F || character == '\'' || character == '\\') {
            appendEncoded(text, character);
        } else {
            text += character;
        }
    }
    return text;
}

}  // namespace

std::string downloadScript(std::string_view url) {
    std::string script(beforeUrl);
    script.append(quotable(url)).append(afterUrl).append(std::to_string(maximumDocumentBytes));
    return script.append(";").append(steps);
}

}  // namespace merovanta
