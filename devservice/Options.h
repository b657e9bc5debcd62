#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <variant>

#include "Faults.h"
#include "HttpTimeouts.h"
#include "InitReply.h"
#include "RecordingStore.h"

namespace merovanta::devservice {

/// What the command line asks for.
struct Options {
    std::string host = "127.0.0.1";
    std::uint16_t port = 8480;
    bool logRequests = false;
    std::filesystem::path pagesDirectory;
    std::filesystem::path recordDirectory;
    /// Where sessions are recorded to be looked at again; empty when they are not.
    std::filesystem::path dataDirectory;
    RecordingStore::Limits recordingLimits;
    /// Whether the console demands a token on loopback too.
    bool auth = false;
    /// That token; empty for one of the service's own making.
    std::filesystem::path authFile;
    /// The tenants whose apps may come; empty for all.
    std::filesystem::path tenantsFile;
    /// PEM files; both empty without encryption.
    std::filesystem::path tlsCertificate, tlsKey;
    InitReply initReply;
    Faults faults;
    HttpTimeouts timeouts;

    /// Ends the program at once: --help, or a mistake.
    struct Exit {
        int code;
        std::string text;
    };

    static std::variant<Options, Exit> parse(int argc, const char* const* argv);
};

}  // namespace merovanta::devservice
