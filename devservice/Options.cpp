#include "Options.h"

#include <charconv>
#include <functional>
#include <map>
#include <optional>
#include <string_view>

namespace merovanta::devservice {
namespace {

constexpr std::string_view kHelp = R"(Usage: merovanta-devservice [OPTION]...

The Merovanta development service: the endpoints that the library calls, and an
agent console at "/", in one process. For demos and end-to-end tests only; it
has no accounts, and storage and encryption only when asked.

  --host ADDRESS             listen on this address (127.0.0.1); on any that other
                             machines reach, the console demands a token
  --port PORT                listen on this port (8480); 0 chooses a free one
  --tls-cert FILE            serve HTTPS and WSS only, with this certificate chain
  --tls-key FILE             and this key, both PEM
  --auth                     demand the token on 127.0.0.1 too
  --auth-file FILE           the token is the first line of FILE, of 16 to 256
                             characters; otherwise the service makes one and
                             prints it as part of the console's address
  --tenants FILE             serve the apps of these tenants only: "ID TOKEN" a line
  --log-requests             print a line for each request
  --data DIR                 keep a recording of each session in DIR, for the console
  --keep-days DAYS           delete recordings this old (30)
  --keep-size MB             delete the oldest when they take more room (5000)
  --record DIR               write each received picture and event to DIR, as it came,
                             for tests
  --pages-dir DIR            serve the console and the chat page from DIR, not those
                             built in
  --help                     print this

What the service replies when a visitor initialises a session; the console can
change it later. "none" leaves an optional key out of the reply.

  --reply-s BOOL             "s": capture screenshots and page changes (true)
  --reply-st TEXT|none       "st": "u" starts the session unasked (u)
  --reply-x BOOL             "x": ignore the visitor (false)
  --reply-fsty TEXT|none     "fsTy": storage type (l)
  --reply-pnws BOOL|none     "pnWS": no WebSocket transport (none)
  --reply-ca BOOL|none       "cA": chat is available (none)
  --reply-mask-tags LIST     view tags to mask, separated by commas
  --reply-mask-classes LIST  view classes to mask, separated by commas

Faults, for tests of what a visitor does then; the console can change them later.

  --fault ENDPOINT=KIND[:VALUE][,COUNT]
                             let an endpoint misbehave, COUNT times or always;
                             may be given again for other endpoints

ENDPOINT is im/c, ix/m:get, ix/m:post, ix/m:delete, imws, io/l, co, i18n, ic/h,
tag, wc/c, chat, wc/ws, wc/d, or * for all the others. KIND is delay:MILLISECONDS (1000), drop, truncate,
status:CODE (503), empty, garbage or large:BYTES (17825792).

When ready it prints one line on standard output:
  Merovanta development service: http://ADDRESS:PORT/
followed by "?token=TOKEN" where it made one.
)";

std::optional<bool> boolean(std::string_view text) {
    if (text == "true") return true;
    if (text == "false") return false;
    return std::nullopt;
}

bool set(bool& target, std::string_view text) {
    const auto value = boolean(text);
    if (value) target = *value;
    return value.has_value();
}

bool set(std::optional<bool>& target, std::string_view text) {
    target = boolean(text);
    return target.has_value() || text == "none";
}

bool set(std::optional<std::string>& target, std::string_view text) {
    target = text == "none" ? std::nullopt : std::optional<std::string>(text);
    return true;
}

bool set(std::vector<std::string>& target, std::string_view text) {
    target.clear();
    while (!text.empty()) {
        const std::string_view item = text.substr(0, text.find(','));
        text.remove_prefix(std::min(item.size() + 1, text.size()));
        if (!item.empty()) target.emplace_back(item);
    }
    return true;
}

template <typename Number>
bool setNumber(Number& target, std::string_view text) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), target);
    return error == std::errc() && end == text.data() + text.size();
}

bool set(std::string& target, std::string_view text) {
    target = text;
    return !text.empty();
}

bool set(std::filesystem::path& target, std::string_view text) {
    target = text;
    return !text.empty();
}

using Setter = std::function<bool(Options&, std::string_view)>;

const std::map<std::string_view, Setter>& valueOptions() {
    static const std::map<std::string_view, Setter> table = {
        {"--host", [](Options& o, std::string_view v) { return set(o.host, v); }},
        {"--auth-file", [](Options& o, std::string_view v) { return set(o.authFile, v); }},
        {"--tenants", [](Options& o, std::string_view v) { return set(o.tenantsFile, v); }},
        {"--port", [](Options& o, std::string_view v) { return setNumber(o.port, v); }},
        {"--data", [](Options& o, std::string_view v) { return set(o.dataDirectory, v); }},
        {"--keep-days",
         [](Options& o, std::string_view v) {
             std::uint16_t days = 0;
             o.recordingLimits.age = std::chrono::days(setNumber(days, v) ? days : 0);
             return days > 0;
         }},
        {"--keep-size",
         [](Options& o, std::string_view v) {
             std::uint32_t megabytes = 0;
             o.recordingLimits.bytes = setNumber(megabytes, v) ? megabytes * std::uint64_t{1'000'000} : 0;
             return megabytes > 0;
         }},
        {"--record", [](Options& o, std::string_view v) { return set(o.recordDirectory, v); }},
        {"--tls-cert", [](Options& o, std::string_view v) { return set(o.tlsCertificate, v); }},
        {"--tls-key", [](Options& o, std::string_view v) { return set(o.tlsKey, v); }},
        {"--pages-dir", [](Options& o, std::string_view v) { return set(o.pagesDirectory, v); }},
        {"--fault", [](Options& o, std::string_view v) { return o.faults.set(v); }},
        {"--reply-s", [](Options& o, std::string_view v) { return set(o.initReply.startMonitoring, v); }},
        {"--reply-st", [](Options& o, std::string_view v) { return set(o.initReply.startType, v); }},
        {"--reply-x", [](Options& o, std::string_view v) { return set(o.initReply.ignoreVisitor, v); }},
        {"--reply-fsty", [](Options& o, std::string_view v) { return set(o.initReply.storageType, v); }},
        {"--reply-pnws", [](Options& o, std::string_view v) { return set(o.initReply.disableWebSocket, v); }},
        {"--reply-ca", [](Options& o, std::string_view v) { return set(o.initReply.chatActivated, v); }},
        {"--reply-mask-tags", [](Options& o, std::string_view v) { return set(o.initReply.maskedTags, v); }},
        {"--reply-mask-classes",
         [](Options& o, std::string_view v) { return set(o.initReply.maskedClasses, v); }},
    };
    return table;
}

Options::Exit mistake(const std::string& text) {
    return {2, "merovanta-devservice: " + text + " (see --help)\n"};
}

}  // namespace

std::variant<Options, Options::Exit> Options::parse(int argc, const char* const* argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        std::string_view name = argv[i];
        if (name == "--help") return Exit{0, std::string(kHelp)};
        if (name == "--log-requests") {
            options.logRequests = true;
            continue;
        }
        if (name == "--auth") {
            options.auth = true;
            continue;
        }
        std::optional<std::string_view> value;
        if (const std::size_t equals = name.find('='); equals != std::string_view::npos) {
            value = name.substr(equals + 1);
            name = name.substr(0, equals);
        }
        const auto option = valueOptions().find(name);
        if (option == valueOptions().end()) return mistake("unknown option \"" + std::string(name) + "\"");
        if (!value && i + 1 < argc) value = argv[++i];
        if (!value) return mistake("option " + std::string(name) + " needs a value");
        if (!option->second(options, *value)) {
            return mistake("option " + std::string(name) + " does not take \"" + std::string(*value) + "\"");
        }
    }
    if (options.tlsCertificate.empty() != options.tlsKey.empty()) {
        return mistake("--tls-cert and --tls-key go together");
    }
    return options;
}

}  // namespace merovanta::devservice
