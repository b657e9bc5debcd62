#include "Qt/Foundation/ProxyFactoryQt.h"

#include <QtNetwork/QHostAddress>
#include <algorithm>

namespace merovanta::qt {

QList<QNetworkProxy> ProxyFactoryQt::queryProxy(const QNetworkProxyQuery& query) {
    const QString host = query.peerHostName();
    if (host == u"localhost" || QHostAddress(host).isLoopback()) return {QNetworkProxy::NoProxy};
    return proxyForQuery(query);
}

QNetworkProxy ProxyFactoryQt::tunnelTo(QUrl url) {
    // What proxies are set up for.
    url.setScheme(url.scheme() == u"wss" ? QStringLiteral("https") : QStringLiteral("http"));
    const auto proxies = ProxyFactoryQt().queryProxy(QNetworkProxyQuery(url));
    const auto tunnel = std::find_if(proxies.begin(), proxies.end(), [](const QNetworkProxy& proxy) {
        return proxy.type() == QNetworkProxy::NoProxy ||
               proxy.capabilities().testFlag(QNetworkProxy::TunnelingCapability);
    });
    return tunnel == proxies.end() ? QNetworkProxy(QNetworkProxy::NoProxy) : *tunnel;
}

}  // namespace merovanta::qt
