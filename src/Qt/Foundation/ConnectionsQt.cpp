#include "Qt/Foundation/ConnectionsQt.h"

#include <algorithm>
#include <utility>

#include "Qt/Foundation/HttpExchangeQt.h"
#include "Qt/Foundation/ProxyFactoryQt.h"

namespace merovanta::qt {

void ConnectionsQt::start(QObject& owner, const HttpRequest& request, HttpSession::Completion completion) {
    const auto all = owner.findChildren<ConnectionsQt*>(Qt::FindDirectChildrenOnly);
    auto usable =
        std::find_if(all.begin(), all.end(), [](const ConnectionsQt* each) { return !each->mIsRetired; });
    if (usable != all.end() && request.onNewConnection) (*std::exchange(usable, all.end()))->retire();
    auto& connections = usable == all.end() ? *new ConnectionsQt(owner) : **usable;
    connections.start(request, std::move(completion));
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
    --mExchanges;
    endIfUnused();
}

void ConnectionsQt::retire() {
    mIsRetired = true;
    endIfUnused();
}

void ConnectionsQt::endIfUnused() {
    if (mExchanges == 0 && mIsRetired) deleteLater();
}

}  // namespace merovanta::qt
