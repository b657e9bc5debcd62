#include "Platform/WebSocket.h"

#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtNetwork/QNetworkProxy>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslKey>

#include "RogueServer.h"
#include "Scene.h"
#include "qt/SocketPeerQt.h"

using namespace merovanta;
using merovanta::test::eventually;
using merovanta::test::RogueServer;
using merovanta::test::SocketPeerQt;
using testing::HasSubstr;
using testing::Optional;

namespace {

constexpr auto keepOpen = RogueServer::Afterwards::keepOpen;

struct Connection {
    explicit Connection(HttpRequest request) {
        socket = platform::current().webSockets().create(
            std::move(request), {.didConnect = [this] { isOpen = true; },
                                 .didDisconnect = [this](const auto& with) { error = with; },
                                 .didReceiveText = [this](const auto&) { ++messages; },
                                 .didReceiveData = [this](const auto&) { ++messages; }});
        socket->connect();
    }

    std::unique_ptr<WebSocket> socket;
    bool isOpen = false;
    int messages = 0;
    std::optional<WebSocketError> error;
};

void expectBroken(HttpRequest request, const std::string& description) {
    SCOPED_TRACE(request.url);
    const Connection connection(std::move(request));
    EXPECT_FALSE(connection.error) << "never inside the call";
    ASSERT_TRUE(eventually([&] { return connection.error.has_value(); }));
    EXPECT_FALSE(connection.isOpen);
    EXPECT_EQ(connection.error->code, std::nullopt);
    EXPECT_THAT(connection.error->description, HasSubstr(description));
}

std::string socketUrl(const RogueServer& server) {
    return "ws" + server.url().substr(4);
}

TEST(WebSockets, SayWhyTheyCannotConnect) {
    for (const auto* url : {"", "ws://", "http://127.0.0.1/", "ws://[::1", "ws://127.0.0.1:99999/"})
        expectBroken({.url = url}, "Unsupported URL");
    expectBroken({.url = "ws://127.0.0.1:1/", .headers = {{"A", "b\r\nC: d"}}}, "Malformed header");
    expectBroken({.url = "ws://127.0.0.1:1/"}, "Connection refused");
    expectBroken({.url = "wss://127.0.0.1:1/"}, "Connection refused");
    const RogueServer refusing("HTTP/1.1 404 Not Found\r\n\r\n", keepOpen);
    expectBroken({.url = socketUrl(refusing)}, "404");
    const RogueServer silent("HTTP/1.1 101 Switching Protocols\r\n", keepOpen);
    expectBroken({.url = socketUrl(silent), .timeout = std::chrono::seconds(1)}, "The connection timed out");
    const RogueServer lost("", RogueServer::Afterwards::close);
    expectBroken({.url = socketUrl(lost)}, "closed");
}

TEST(WebSockets, RefuseUnknownCertificatesAndAreWholeOverTls) {
    QFile certificateFile(MEROVANTA_TEST_CERTIFICATE);
    QFile keyFile(MEROVANTA_TEST_KEY);
    ASSERT_TRUE(certificateFile.open(QFile::ReadOnly) && keyFile.open(QFile::ReadOnly));
    const QSslCertificate certificate(&certificateFile);
    QSslConfiguration tls;
    tls.setLocalCertificate(certificate);
    tls.setPrivateKey(QSslKey(&keyFile, QSsl::Ec));
    SocketPeerQt peer(tls);
    expectBroken({.url = peer.url()}, "self-signed");
    EXPECT_EQ(peer.connections, 0);

    const auto before = QSslConfiguration::defaultConfiguration();
    auto trusting = before;
    trusting.addCaCertificate(certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    const auto port = peer.url().substr(peer.url().rfind(':'));
    expectBroken({.url = "wss://localhost" + port}, "host name");
    EXPECT_EQ(peer.connections, 0);
    const Connection trusted({.url = peer.url()});
    ASSERT_TRUE(eventually([&] { return trusted.isOpen && peer.connections == 1; }));
    peer.socket().sendTextMessage("hello");
    peer.socket().close(QWebSocketProtocol::CloseCodeGoingAway);
    ASSERT_TRUE(eventually([&] { return trusted.error.has_value(); }));
    EXPECT_EQ(trusted.messages, 1);
    EXPECT_THAT(trusted.error->code, Optional(1001));

    const Connection stuck({.url = peer.url()});
    ASSERT_TRUE(eventually([&] { return stuck.isOpen && peer.connections == 2; }));
    // The peer takes off whole frames only, for which it has no room now.
    peer.socket().setReadBufferSize(1);
    for (int count = 0; count < 20 && !stuck.error; ++count) {
        stuck.socket->write(std::string(8 << 20, 'x'));
        QTest::qWait(10);
    }
    ASSERT_TRUE(eventually([&] { return stuck.error.has_value(); }));
    EXPECT_EQ(stuck.error->code, std::nullopt);
    EXPECT_EQ(stuck.error->description, "The other side takes no data");
    QSslConfiguration::setDefaultConfiguration(before);
}

TEST(WebSockets, EndAFloodThatTheMainThreadCannotFollow) {
    SocketPeerQt peer;
    const Connection connection({.url = peer.url()});
    ASSERT_TRUE(eventually([&] { return connection.isOpen && peer.connections == 1; }));
    const auto send = [&] { peer.socket().sendBinaryMessage(QByteArray(8 << 20, 'x')); };
    for (int count = 0; count < 9; ++count) {
        send();
        ASSERT_TRUE(eventually([&] { return connection.messages > count; }));
    }
    // More than the bound and all buffers on the way together.
    for (int count = 0; count < 12; ++count)
        send();
    // Nothing but this peer gets the main thread's time.
    QElapsedTimer time;
    for (time.start(); !time.hasExpired(20000) && peer.socket().bytesToWrite() > 0;) {
        peer.socket().flush();
        QTest::qSleep(1);
    }
    ASSERT_TRUE(eventually([&] { return connection.error.has_value(); }));
    EXPECT_THAT(connection.error->code, Optional(1008));
}

TEST(WebSockets, GoThroughTheProxyExceptToThisMachine) {
    RogueServer proxy("HTTP/1.1 403 Forbidden\r\n\r\n", RogueServer::Afterwards::close);
    const auto port = static_cast<quint16>(QUrl(QString::fromStdString(proxy.url())).port());
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, "127.0.0.1", port});
    expectBroken({.url = "ws://socket.example/"}, "roxy");
    EXPECT_THAT(proxy.received().toStdString(), HasSubstr("CONNECT socket.example:80 "));
    SocketPeerQt peer;
    const Connection direct({.url = peer.url()});
    EXPECT_TRUE(eventually([&] { return direct.isOpen; }));
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

}  // namespace
