#include "ServiceProbe.h"

#include <QUrl>
#include <cstdio>

namespace {

constexpr std::chrono::seconds connectTimeout{3};
constexpr int httpPort = 80;

}  // namespace

ServiceProbe::ServiceProbe(const QString& server, QObject* parent) : QObject(parent), m_server(server) {
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(connectTimeout);
    connect(&m_timeout, &QTimer::timeout, this, &ServiceProbe::fail);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &ServiceProbe::fail);
    connect(&m_socket, &QTcpSocket::connected, this, [this] {
        m_timeout.stop();
        m_socket.disconnectFromHost();
    });
}

void ServiceProbe::check() {
    m_timeout.stop();
    m_socket.abort();
    const QUrl url(QStringLiteral("http://") + m_server);
    m_timeout.start();
    m_socket.connectToHost(url.host(), static_cast<quint16>(url.port(httpPort)));
}

void ServiceProbe::fail() {
    // After `connected` the timer is off: the service closing the idle connection is no failure.
    if (!m_timeout.isActive() && sender() != &m_timeout) return;
    m_timeout.stop();
    m_socket.abort();
    std::fprintf(stderr, "merovanta-bank: cannot reach the service at %s\n", qPrintable(m_server));
    emit unreachable();
}
