#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "AgentApi.h"
#include "AgentRegistry.h"
#include "ChatApi.h"
#include "ChatSockets.h"
#include "ConnectionSlots.h"
#include "ConsoleAccess.h"
#include "ConsoleApi.h"
#include "ConsoleHub.h"
#include "ContactApi.h"
#include "ContactRegistry.h"
#include "Controls.h"
#include "DocumentStore.h"
#include "Options.h"
#include "PageAssets.h"
#include "PresenceRegistry.h"
#include "Recorder.h"
#include "RecordingApi.h"
#include "RecordingStore.h"
#include "RequestLog.h"
#include "Router.h"
#include "SessionRecorder.h"
#include "SignInApi.h"
#include "Tenants.h"
#include "VisitorApi.h"
#include "VisitorAudience.h"
#include "VisitorRegistry.h"
#include "VisitorSockets.h"
#include "VisitorStreams.h"

namespace merovanta::devservice {

/// The whole service. One thread runs it; only `stop` may be called from another.
class Server {
 public:
    static constexpr std::size_t kMaxConnections = 384;

    /// Request lines go to `log`, which must outlive the server.
    Server(Options options, std::ostream& log);

    /// Starts to listen. Returns what went wrong, if anything.
    std::optional<std::string> open();

    /// Valid after `open`.
    std::string url() const;
    std::uint16_t port() const { return port_; }

    /// Serves until stopped.
    void run();

    /// Ends `run`. From any thread.
    void stop();

    boost::asio::io_context& context() { return context_; }

 private:
    std::optional<std::string> loadCertificate();
    /// Decides whether the console demands a token, and which.
    std::optional<std::string> guardConsole();
    void accept();
    void retryAccept();
    void tick();
    void settleRecordings();

    Options options_;
    Recorder recorder_;
    RecordingStore recordings_;
    ConsoleHub hub_;
    VisitorAudience audience_;
    VisitorRegistry visitors_;
    PresenceRegistry presences_;
    ContactRegistry contacts_;
    SessionRecorder sessionRecorder_;
    ChatSockets chatSockets_;
    DocumentStore documents_;
    PageAssets assets_;
    ConsoleAccess access_;
    /// The token that the service made, for its address.
    std::string madeToken_;
    AgentRegistry agents_;
    Controls controls_;
    Tenants tenants_;
    VisitorStreams streams_;
    VisitorSockets sockets_;
    RequestLog log_;
    Router router_;
    VisitorApi visitorApi_;
    ChatApi chatApi_;
    SignInApi signInApi_;
    ConsoleApi consoleApi_;
    ContactApi contactApi_;
    AgentApi agentApi_;
    RecordingApi recordingApi_;
    ConnectionSlots slots_;
    std::optional<boost::asio::ssl::context> tls_;
    std::uint16_t port_ = 0;
    // Connections live in the context's pending operations, so it goes before all that they refer to.
    boost::asio::io_context context_{1};
    boost::asio::ip::tcp::acceptor acceptor_;
    boost::asio::steady_timer tickTimer_;
    boost::asio::steady_timer settleTimer_;
    boost::asio::steady_timer acceptTimer_;
};

}  // namespace merovanta::devservice
