#include "Qt/Foundation/HttpSessionQt.h"

#include <utility>

#include "Qt/Foundation/ApplicationLifeQt.h"
#include "Qt/Foundation/ConnectionsQt.h"
#include "Qt/Foundation/NetworkThreadQt.h"

namespace merovanta::qt {

void HttpSessionQt::execute(HttpRequest request, Completion completion) {
    auto complete = [completion = std::move(completion)](HttpReply reply) {
        const auto phase = ApplicationLifeQt::instance().phase();
        if (phase == ApplicationLifeQt::Phase::running) completion(std::move(reply));
    };
    mThread.post([request = std::move(request), complete = std::move(complete)](QObject& owner) {
        ConnectionsQt::start(owner, request, complete);
    });
}

}  // namespace merovanta::qt
