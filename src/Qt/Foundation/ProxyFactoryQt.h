#pragma once

#include <QtCore/QUrl>
#include <QtNetwork/QNetworkProxyFactory>

namespace merovanta::qt {

/// The application's or the system's proxies, but none for a service on this very machine.
class ProxyFactoryQt final : public QNetworkProxyFactory {
 public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;

    /// The proxy that leads a connection of the URL's kind ("ws:" or "wss:") through to its host.
    [[nodiscard]] static QNetworkProxy tunnelTo(QUrl url);
};

}  // namespace merovanta::qt
