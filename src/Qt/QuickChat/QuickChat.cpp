#include <Merovanta/Quick.h>
#include <Merovanta/QuickChat.h>

#include <QtWebEngineQuick/qtwebenginequickglobal.h>
#include <memory>

#include "Qt/Quick/AddChat.h"
#include "Qt/QuickChat/DocumentPreviewFactoryQuick.h"
#include "Qt/QuickChat/WebViewFactoryQuick.h"

static void initChatFiles() {
    // Has to stand outside a namespace.
    Q_INIT_RESOURCE(merovanta_quickchat);
}

namespace merovanta::quick {

void initializeChat() {
    static const bool initialized = [] {
        initChatFiles();
        QtWebEngineQuick::initialize();
        initialize();
        addChat(std::make_unique<WebViewFactoryQuick>(), std::make_unique<DocumentPreviewFactoryQuick>());
        return true;
    }();
    static_cast<void>(initialized);
}

}  // namespace merovanta::quick
