#include "Qt/Foundation/HttpWorkerQt.h"

#include <utility>

#include "Qt/Foundation/HttpExchangeQt.h"
#include "Qt/Foundation/ProxyFactoryQt.h"

namespace merovanta::qt {

void HttpWorkerQt::execute(const HttpRequest& request, HttpSession::Completion completion) {
    if (mStopped) return;
    auto* const exchange =
        new HttpExchangeQt(this, [this, completion = std::move(completion)](HttpReply reply) {
            if (!mStopped) completion(std::move(reply));
        });
    exchange->start(manager(), request);
}

QNetworkAccessManager& HttpWorkerQt::manager() {
    if (mManager == nullptr) {
        mManager = new QNetworkAccessManager(this);
        mManager->setProxyFactory(new ProxyFactoryQt());
    }
    return *mManager;
}

}  // namespace merovanta::qt
