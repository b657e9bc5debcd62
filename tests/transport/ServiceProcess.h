#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QNetworkAccessManager>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "EventLoop.h"

namespace merovanta::test {

/// The development service as a process of its own, which sees one visitor. Waiting for it handles events.
class ServiceProcess {
 public:
    explicit ServiceProcess(EventLoop& loop);
    ~ServiceProcess();

    /// On a free port; on the same again when started anew, which then knows nothing any more.
    void start();
    /// Asks it to end; the exit code.
    int stop();

    [[nodiscard]] const std::string& port() const { return mPort; }

    /// The reply of the control API; null if there is none.
    nlohmann::json request(const char* method, const std::string& path, const nlohmann::json& body = nullptr);
    nlohmann::json visitors() { return request("GET", "visitors"); }
    nlohmann::json counters() { return visitors().at(0).at("counters"); }
    nlohmann::json timeline() { return request("GET", visitorPath("timeline")); }
    void send(const nlohmann::json& agentMessage) { expectQueued("messages", agentMessage); }
    void sendFrame(const nlohmann::json& frame) { expectQueued("frames", frame); }

    /// All tags since the start, in the order in which they arrived.
    [[nodiscard]] std::vector<std::string> recordedTags() const;

 private:
    [[nodiscard]] std::string visitorPath(const std::string& what) const { return "visitors/1/" + what; }
    void expectQueued(const std::string& what, const nlohmann::json& body);

    EventLoop& mLoop;
    QTemporaryDir mRecord;
    std::string mPort = "0";
    QNetworkAccessManager mNetwork;
    QProcess mProcess;
};

}  // namespace merovanta::test
