#pragma once

#include <QtNetwork/QNetworkProxyFactory>

namespace merovanta::qt {

/// The application's or the system's proxies, but none for a service on this very machine.
class ProxyFactoryQt final : public QNetworkProxyFactory {
 public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;
};

}  // namespace merovanta::qt
