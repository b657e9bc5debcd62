#include "Qt/Foundation/HttpSessionQt.h"

#include <QtNetwork/QNetworkAccessManager>
#include <utility>

#include "Qt/Foundation/ApplicationLifeQt.h"
#include "Qt/Foundation/HttpExchangeQt.h"
#include "Qt/Foundation/NetworkThreadQt.h"
#include "Qt/Foundation/ProxyFactoryQt.h"

namespace merovanta::qt {

namespace {

QNetworkAccessManager& managerOf(QObject& owner) {
    auto* manager = owner.findChild<QNetworkAccessManager*>({}, Qt::FindDirectChildrenOnly);
    if (manager == nullptr) {
        manager = new QNetworkAccessManager(&owner);
        manager->setProxyFactory(new ProxyFactoryQt());
    }
    return *manager;
}

}  // namespace

void HttpSessionQt::execute(HttpRequest request, Completion completion) {
    auto complete = [completion = std::move(completion)](HttpReply reply) {
        const auto phase = ApplicationLifeQt::instance().phase();
        if (phase == ApplicationLifeQt::Phase::running) completion(std::move(reply));
    };
    mThread.post([request = std::move(request), complete = std::move(complete)](QObject& owner) {
        auto* const exchange = new HttpExchangeQt(&owner, complete);
        exchange->start(managerOf(owner), request);
    });
}

}  // namespace merovanta::qt
