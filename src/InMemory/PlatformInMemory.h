#pragma once

#include <memory>

#include "InMemory/AlertsInMemory.h"
#include "InMemory/ApplicationInMemory.h"
#include "InMemory/BundleInMemory.h"
#include "InMemory/ClockInMemory.h"
#include "InMemory/CoverViewsInMemory.h"
#include "InMemory/DocumentPreviewsInMemory.h"
#include "InMemory/FileManagerInMemory.h"
#include "InMemory/HttpSessionInMemory.h"
#include "InMemory/MainQueueInMemory.h"
#include "InMemory/OverlaysInMemory.h"
#include "InMemory/RandomInMemory.h"
#include "InMemory/ScreenCaptureInMemory.h"
#include "InMemory/TapPlayerInMemory.h"
#include "InMemory/TapRecognizersInMemory.h"
#include "InMemory/TimerFactoryInMemory.h"
#include "InMemory/UserDefaultsInMemory.h"
#include "InMemory/VirtualTime.h"
#include "InMemory/WebSocketsInMemory.h"
#include "InMemory/WebViewsInMemory.h"
#include "InMemory/WidgetsInMemory.h"
#include "InMemory/WorkQueueInMemory.h"
#include "Platform/Platform.h"

namespace merovanta::inmemory {

/// A whole machine for tests: everything on one thread, in virtual time, the same every time.
class PlatformInMemory : public Platform {
 public:
    PlatformInMemory() : mCapture(time, app) {}

    /// Makes a new one the process's platform, and the library forget all it knew
    /// but what was set on Merovanta::configuration().
    static std::shared_ptr<PlatformInMemory> installNew();

    /// Takes the platform away again.
    static void uninstall();

    ApplicationInMemory& application() override { return app; }
    ScreenCaptureInMemory& screenCapture() override { return mCapture; }
    TapRecognizersInMemory& tapRecognizers() override { return mTapRecognizers; }
    TapPlayerInMemory& tapPlayer() override { return mTapPlayer; }
    OverlaysInMemory& imageOverlays() override { return mOverlays; }
    AlertsInMemory& alerts() override { return mAlerts; }
    WidgetsInMemory& widgets() override { return mWidgets; }
    CoverViewsInMemory& coverViews() override { return mCoverViews; }
    WebViewsInMemory* webViews() override { return hasChat ? &mWebViews : nullptr; }
    DocumentPreviewsInMemory* documentPreviews() override { return hasChat ? &mDocumentPreviews : nullptr; }
    MainQueueInMemory& mainQueue() override { return mMainQueue; }
    WorkQueueInMemory& workQueue() override { return mWorkQueue; }
    TimerFactoryInMemory& timers() override { return mTimers; }
    ClockInMemory& clock() override { return mClock; }
    RandomInMemory& random() override { return mRandom; }
    HttpSessionInMemory& httpSession() override { return mHttpSession; }
    WebSocketsInMemory& webSockets() override { return mWebSockets; }
    UserDefaultsInMemory& userDefaults() override { return mUserDefaults; }
    FileManagerInMemory& fileManager() override { return mFileManager; }
    BundleInMemory& bundle() override { return mBundle; }

    const std::shared_ptr<VirtualTime> time = std::make_shared<VirtualTime>();
    ApplicationInMemory app;
    /// Whether the application was built with the chat.
    bool hasChat = true;

 private:
    ScreenCaptureInMemory mCapture;
    TapRecognizersInMemory mTapRecognizers;
    TapPlayerInMemory mTapPlayer{mTapRecognizers};
    OverlaysInMemory mOverlays;
    AlertsInMemory mAlerts{time};
    WidgetsInMemory mWidgets;
    CoverViewsInMemory mCoverViews{time};
    WebViewsInMemory mWebViews{time};
    DocumentPreviewsInMemory mDocumentPreviews;
    MainQueueInMemory mMainQueue{time};
    WorkQueueInMemory mWorkQueue{time};
    TimerFactoryInMemory mTimers{time};
    ClockInMemory mClock{time};
    RandomInMemory mRandom;
    HttpSessionInMemory mHttpSession{time};
    WebSocketsInMemory mWebSockets{time};
    UserDefaultsInMemory mUserDefaults;
    FileManagerInMemory mFileManager;
    BundleInMemory mBundle;
};

}  // namespace merovanta::inmemory
