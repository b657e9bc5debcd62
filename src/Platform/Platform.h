#pragma once

#include <Merovanta/Export.h>

#include <memory>

#include "Platform/Alert.h"
#include "Platform/Application.h"
#include "Platform/Bundle.h"
#include "Platform/Clock.h"
#include "Platform/CoverView.h"
#include "Platform/DocumentPreview.h"
#include "Platform/FileManager.h"
#include "Platform/HttpSession.h"
#include "Platform/ImageOverlay.h"
#include "Platform/MainQueue.h"
#include "Platform/Random.h"
#include "Platform/ScreenCapture.h"
#include "Platform/TapPlayer.h"
#include "Platform/TapRecognizer.h"
#include "Platform/Timer.h"
#include "Platform/UserDefaults.h"
#include "Platform/WebSocket.h"
#include "Platform/WebView.h"
#include "Platform/WidgetView.h"
#include "Platform/WorkQueue.h"

namespace merovanta {

/// Everything that the library needs from the machine and the toolkit. The ports live as long as the
/// platform.
class Platform {
 public:
    virtual ~Platform() = default;

    virtual Application& application() = 0;
    virtual ScreenCapture& screenCapture() = 0;
    virtual TapRecognizerFactory& tapRecognizers() = 0;
    virtual TapPlayer& tapPlayer() = 0;
    virtual ImageOverlayFactory& imageOverlays() = 0;
    virtual AlertFactory& alerts() = 0;
    virtual WidgetViewFactory& widgets() = 0;
    virtual CoverViewFactory& coverViews() = 0;
    /// Null if the application was built without the chat.
    virtual WebViewFactory* webViews() = 0;
    /// Null exactly if webViews() is.
    virtual DocumentPreviewFactory* documentPreviews() = 0;
    virtual MainQueue& mainQueue() = 0;
    virtual WorkQueue& workQueue() = 0;
    virtual TimerFactory& timers() = 0;
    virtual Clock& clock() = 0;
    virtual Random& random() = 0;
    virtual HttpSession& httpSession() = 0;
    virtual WebSocketFactory& webSockets() = 0;
    virtual UserDefaults& userDefaults() = 0;
    virtual FileManager& fileManager() = 0;
    virtual Bundle& bundle() = 0;
};

namespace platform {

/// Makes this the process's platform. The linked adapter calls it once, before the library is first used; it
/// stays for good unless a test replaces it. Null takes the platform away again.
void install(std::shared_ptr<Platform> platform);

/// Whether install() was called; the library does nothing without a platform but say so in its log.
[[nodiscard]] bool isInstalled();

/// The installed platform. Calling it without one ends the process with a message.
[[nodiscard]] MEROVANTA_INTERNAL Platform& current();

}  // namespace platform
}  // namespace merovanta
