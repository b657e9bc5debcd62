#include "Qt/Foundation/ConnectionsQt.h"

#include <algorithm>
#include <utility>

#include "Qt/Foundation/HttpExchangeQt.h"
#include "Qt/Foundation/ProxyFactoryQt.h"

namespace merovanta::qt {

ConnectionsQt& ConnectionsQt::of(QObject& owner) {
    const auto all = owner.findChildren<ConnectionsQt*>(Qt::FindDirectChildrenOnly);
    const auto usable =
        std::find_if(all.begin(), all.end(), [](const ConnectionsQt* each) { return !each->mIsRetired; });
    return usable == all.end() ? *new ConnectionsQt(owner) : **usable;
}

ConnectionsQt::ConnectionsQt(QObject& owner) : QNetworkAccessManager(&owner) {
    setProxyFactory(new ProxyFactoryQt());
}

void ConnectionsQt::start(const HttpRequest& request, HttpSession::Completion completion) {
    ++mExchanges;
    auto* const exchange = new HttpExchangeQt(this, std::move(completion));
    connect(exchange, &HttpExchangeQt::timedOut, this, &ConnectionsQt::retire);
    connect(exchange, &QObject::destroyed, this, &ConnectionsQt::exchangeEnded);
    exchange->start(*this, request);
}

void ConnectionsQt::exchangeEnded() {
    if (--mExchanges == 0 && mIsRetired) deleteLater();
}

}  // namespace merovanta::qt
