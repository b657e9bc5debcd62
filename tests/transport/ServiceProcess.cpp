#include "ServiceProcess.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <QtNetwork/QNetworkReply>
#include <csignal>
#include <fstream>
#include <memory>

namespace merovanta::test {

using nlohmann::json;

ServiceProcess::ServiceProcess(EventLoop& loop) : mLoop(loop) {
    mProcess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Not to outlive a test that crashes.
    mProcess.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    start();
}

ServiceProcess::~ServiceProcess() {
    mProcess.terminate();
    mProcess.waitForFinished();
}

void ServiceProcess::start() {
    mProcess.start(QStringLiteral(MEROVANTA_DEVSERVICE),
                   {"--port", QString::fromStdString(mPort), "--record", mRecord.path()});
    ASSERT_TRUE(mLoop.runUntil([this] { return mProcess.canReadLine(); })) << "The service does not start";
    const std::string line = mProcess.readLine().trimmed().toStdString();
    mPort = line.substr(line.rfind(':') + 1);
    mPort.pop_back();
}

int ServiceProcess::stop() {
    mProcess.terminate();
    mLoop.runUntil([this] { return mProcess.state() == QProcess::NotRunning; });
    return mProcess.exitStatus() == QProcess::NormalExit ? mProcess.exitCode() : -1;
}

json ServiceProcess::request(const char* method, const std::string& path, const json& body) {
    QNetworkRequest request(
        QUrl(QString::fromStdString("http://localhost:" + mPort + "/console/api/" + path)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
    const auto content = body.is_null() ? QByteArray() : QByteArray::fromStdString(body.dump());
    const std::unique_ptr<QNetworkReply> reply(mNetwork.sendCustomRequest(request, method, content));
    EXPECT_TRUE(mLoop.runUntil([&] { return reply->isFinished(); }));
    return json::parse(reply->readAll().toStdString(), nullptr, false);
}

void ServiceProcess::expectQueued(const std::string& what, const json& body) {
    EXPECT_TRUE(request("POST", visitorPath(what), body).value("queued", false));
}

std::vector<std::string> ServiceProcess::recordedTags() const {
    std::vector<std::string> tags;
    std::ifstream events(mRecord.filePath("events.jsonl").toStdString());
    for (std::string line; std::getline(events, line);) {
        const json event = json::parse(line);
        if (event.at("kind") == "tag") tags.push_back(event.at("tag"));
    }
    return tags;
}

}  // namespace merovanta::test
