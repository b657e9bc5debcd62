#include "Qt/Foundation/WebSocketFactoryQt.h"

#include <utility>

#include "Qt/Foundation/WebSocketQt.h"

namespace merovanta::qt {

std::unique_ptr<WebSocket> WebSocketFactoryQt::create(HttpRequest request, WebSocket::Delegate delegate) {
    return std::make_unique<WebSocketQt>(mThread, mMainQueue, std::move(request), std::move(delegate));
}

}  // namespace merovanta::qt
