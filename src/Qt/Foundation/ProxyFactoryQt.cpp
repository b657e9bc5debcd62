#include "Qt/Foundation/ProxyFactoryQt.h"

#include <QtNetwork/QHostAddress>

namespace merovanta::qt {

QList<QNetworkProxy> ProxyFactoryQt::queryProxy(const QNetworkProxyQuery& query) {
    const QString host = query.peerHostName();
    if (host == u"localhost" || QHostAddress(host).isLoopback()) return {QNetworkProxy::NoProxy};
    return proxyForQuery(query);
}

}  // namespace merovanta::qt
