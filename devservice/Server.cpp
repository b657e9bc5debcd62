#include "Server.h"

#include <boost/asio/ip/address.hpp>
#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <utility>

#include "HttpConnection.h"
#include "Secret.h"

namespace merovanta::devservice {

namespace asio = boost::asio;
using asio::ip::tcp;
using ErrorCode = boost::system::error_code;

Server::Server(Options options, std::ostream& log)
    : options_(std::move(options)),
      visitors_(audience_),
      presences_([this] { hub_.visitorsChanged(); }),
      contacts_([this](const Contact& contact) {
          hub_.contactsChanged();
          chatSockets_.contactChanged(contact);
      }),
      sessionRecorder_(recordings_, visitors_, contacts_, std::cerr),
      chatSockets_(contacts_),
      assets_(options_.pagesDirectory),
      agents_(access_, [this] { hub_.agentsChanged(); }),
      controls_([this] { hub_.agentsChanged(); }),
      streams_(visitors_, recorder_),
      sockets_(streams_),
      log_(log, options_.logRequests),
      visitorApi_(visitors_, options_.initReply, recorder_, streams_, sockets_, presences_, contacts_,
                  tenants_),
      chatApi_(chatSockets_, contacts_, documents_, assets_, tenants_),
      signInApi_(access_, assets_),
      consoleApi_(visitors_, presences_, sockets_, options_.initReply, options_.faults, hub_, assets_,
                  agents_, controls_),
      contactApi_(contacts_, documents_, agents_),
      agentApi_(agents_, controls_, visitors_, hub_),
      recordingApi_(recordings_, sessionRecorder_, visitors_, agents_),
      slots_(kMaxConnections),
      acceptor_(context_),
      tickTimer_(context_),
      settleTimer_(context_),
      acceptTimer_(context_) {
    audience_.add(hub_);
    audience_.add(sessionRecorder_);
    hub_.attach({visitors_, presences_, contacts_, options_.initReply, options_.faults, agents_, controls_});
    options_.faults.observe([this] { hub_.settingsChanged(); });
    visitorApi_.addRoutes(router_);
    GuardedRoutes ownPages(router_, OriginPolicy(options_.host));
    chatApi_.addRoutes(ownPages);
    signInApi_.addRoutes(ownPages);
    GuardedRoutes console(router_, OriginPolicy(options_.host), access_, assets_);
    consoleApi_.addRoutes(console);
    contactApi_.addRoutes(console);
    recordingApi_.addRoutes(console);
    agentApi_.addRoutes(console);
}

std::optional<std::string> Server::open() {
    if (!options_.recordDirectory.empty()) {
        if (auto problem = recorder_.open(options_.recordDirectory)) return problem;
    }
    if (!options_.tlsCertificate.empty()) {
        if (auto problem = loadCertificate()) return problem;
    }
    if (!options_.tenantsFile.empty()) {
        if (auto problem = tenants_.load(options_.tenantsFile)) return problem;
    }
    const std::string where = options_.host + " port " + std::to_string(options_.port);
    ErrorCode error;
    const auto endpoints =
        tcp::resolver(context_).resolve(options_.host, std::to_string(options_.port), error);
    if (error) return "cannot resolve " + where + ": " + error.message();
    const tcp::endpoint endpoint = endpoints.begin()->endpoint();
    acceptor_.open(endpoint.protocol(), error);
    if (!error) acceptor_.set_option(tcp::acceptor::reuse_address(true), error);
    if (!error) acceptor_.bind(endpoint, error);
    if (!error) acceptor_.listen(asio::socket_base::max_listen_connections, error);
    if (error) return "cannot listen on " + where + ": " + error.message();
    port_ = acceptor_.local_endpoint(error).port();
    if (auto problem = guardConsole()) return problem;
    if (!options_.dataDirectory.empty()) {
        sessionRecorder_.open(options_.dataDirectory, options_.recordingLimits);
        settleRecordings();
    }
    accept();
    tick();
    return std::nullopt;
}

std::optional<std::string> Server::loadCertificate() {
    using Context = asio::ssl::context;
    tls_.emplace(Context::tls_server);
    tls_->set_options(Context::default_workarounds | Context::no_sslv2 | Context::no_sslv3 |
                      Context::no_tlsv1 | Context::no_tlsv1_1);
    ErrorCode error;
    tls_->use_certificate_chain_file(options_.tlsCertificate.string(), error);
    if (error) return "cannot use certificate " + options_.tlsCertificate.string() + ": " + error.message();
    tls_->use_private_key_file(options_.tlsKey.string(), Context::pem, error);
    if (error) return "cannot use key " + options_.tlsKey.string() + ": " + error.message();
    return std::nullopt;
}

std::optional<std::string> Server::guardConsole() {
    constexpr std::size_t leastBytes = 16, mostBytes = 256, madeBytes = 16;
    ErrorCode error;
    const bool isLocal = acceptor_.local_endpoint(error).address().is_loopback();
    if (isLocal && !options_.auth && options_.authFile.empty()) return std::nullopt;
    std::string token;
    if (options_.authFile.empty()) {
        token = madeToken_ = randomHex(madeBytes);
    } else {
        std::ifstream file(options_.authFile);
        if (!std::getline(file, token)) return "cannot read " + options_.authFile.string();
        if (token.size() < leastBytes || token.size() > mostBytes)
            return "the token in " + options_.authFile.string() + " must have 16 to 256 characters";
    }
    access_.demand(std::move(token));
    if (!isLocal && !tls_) std::cerr << "merovanta-devservice: what other machines get is not encrypted\n";
    return std::nullopt;
}

std::string Server::url() const {
    const bool bracketed = options_.host.find(':') != std::string::npos;
    const std::string host = bracketed ? "[" + options_.host + "]" : options_.host;
    return (tls_ ? "https://" : "http://") + host + ":" + std::to_string(port_) + "/" +
           (madeToken_.empty() ? "" : "?token=" + madeToken_);
}

void Server::run() {
    // One request that fails unexpectedly (out of memory, say) costs its own connection only.
    while (!context_.stopped()) {
        try {
            context_.run();
        } catch (const std::exception& exception) {
            std::cerr << "merovanta-devservice: " << exception.what() << std::endl;
        }
    }
}

void Server::stop() {
    context_.stop();
}

void Server::accept() {
    acceptor_.async_accept([this](ErrorCode error, tcp::socket socket) {
        if (error == asio::error::operation_aborted) return;
        if (error) return retryAccept();
        ErrorCode ignored;
        socket.set_option(tcp::no_delay(true), ignored);
        // Beyond the bound the socket is closed as it goes out of scope.
        if (auto slot = slots_.acquire()) {
            std::make_shared<HttpConnection>(ClientStream(std::move(socket), tls_ ? &*tls_ : nullptr),
                                             std::move(slot), router_, options_.faults, log_,
                                             options_.timeouts)
                ->start();
        }
        accept();
    });
}

// Out of descriptors, most likely: without a pause this would spin.
void Server::retryAccept() {
    acceptTimer_.expires_after(std::chrono::milliseconds(100));
    acceptTimer_.async_wait([this](ErrorCode error) {
        if (!error) accept();
    });
}

void Server::settleRecordings() {
    sessionRecorder_.settle(currentMoment());
    settleTimer_.expires_after(SessionRecorder::kSettlePause);
    settleTimer_.async_wait([this](ErrorCode error) {
        if (!error) settleRecordings();
    });
}

void Server::tick() {
    tickTimer_.expires_after(std::chrono::seconds(1));
    tickTimer_.async_wait([this](ErrorCode error) {
        if (error) return;
        presences_.expire(currentMoment());
        visitors_.expire(currentMoment());
        controls_.expire(currentMoment(), [this](const std::string& agent, std::uint32_t visitor) {
            return hub_.watches(agent, visitor);
        });
        hub_.visitorsChanged();
        tick();
    });
}

}  // namespace merovanta::devservice
