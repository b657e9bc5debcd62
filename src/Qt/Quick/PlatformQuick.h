#pragma once

#include <memory>
#include <utility>

#include "Platform/Platform.h"
#include "Qt/Foundation/BundleQt.h"
#include "Qt/Foundation/ClockQt.h"
#include "Qt/Foundation/FileManagerQt.h"
#include "Qt/Foundation/HttpSessionQt.h"
#include "Qt/Foundation/MainQueueQt.h"
#include "Qt/Foundation/NetworkThreadQt.h"
#include "Qt/Foundation/RandomQt.h"
#include "Qt/Foundation/TimerFactoryQt.h"
#include "Qt/Foundation/UserDefaultsQt.h"
#include "Qt/Foundation/WebSocketFactoryQt.h"
#include "Qt/Foundation/WorkQueueQt.h"
#include "Qt/Quick/AlertFactoryQuick.h"
#include "Qt/Quick/ApplicationQuick.h"
#include "Qt/Quick/CoverViewFactoryQuick.h"
#include "Qt/Quick/ImageOverlayFactoryQuick.h"
#include "Qt/Quick/ScreenCaptureQuick.h"
#include "Qt/Quick/TapPlayerQuick.h"
#include "Qt/Quick/TapRecognizerFactoryQuick.h"
#include "Qt/Quick/WidgetViewFactoryQuick.h"

namespace merovanta::quick {

/// Qt Quick as the library's platform. May be made before the application object.
class PlatformQuick : public Platform {
 public:
    /// Gives the application the chat.
    void addChat(std::unique_ptr<WebViewFactory> webViews,
                 std::unique_ptr<DocumentPreviewFactory> documentPreviews) {
        mWebViews = std::move(webViews);
        mDocumentPreviews = std::move(documentPreviews);
    }

    Application& application() override { return mApplication; }
    ScreenCapture& screenCapture() override { return mScreenCapture; }
    TapRecognizerFactory& tapRecognizers() override { return mTapRecognizers; }
    TapPlayer& tapPlayer() override { return mTapPlayer; }
    ImageOverlayFactory& imageOverlays() override { return mImageOverlays; }
    AlertFactory& alerts() override { return mAlerts; }
    WidgetViewFactory& widgets() override { return mWidgets; }
    CoverViewFactory& coverViews() override { return mCoverViews; }
    WebViewFactory* webViews() override { return mWebViews.get(); }
    DocumentPreviewFactory* documentPreviews() override { return mDocumentPreviews.get(); }
    MainQueue& mainQueue() override { return mMainQueue; }
    WorkQueue& workQueue() override { return mWorkQueue; }
    TimerFactory& timers() override { return mTimers; }
    Clock& clock() override { return mClock; }
    Random& random() override { return mRandom; }
    HttpSession& httpSession() override { return mHttpSession; }
    WebSocketFactory& webSockets() override { return mWebSockets; }
    UserDefaults& userDefaults() override { return mUserDefaults; }
    FileManager& fileManager() override { return mFileManager; }
    Bundle& bundle() override { return mBundle; }

 private:
    // First, so that it is the last to stop when the application ends.
    qt::MainQueueQt mMainQueue;
    qt::UserDefaultsQt mUserDefaults;
    qt::WorkQueueQt mWorkQueue;
    qt::NetworkThreadQt mNetworkThread;
    qt::HttpSessionQt mHttpSession{mNetworkThread};
    qt::WebSocketFactoryQt mWebSockets{mNetworkThread, mMainQueue};
    qt::TimerFactoryQt mTimers;
    qt::BundleQt mBundle;
    qt::ClockQt mClock;
    qt::RandomQt mRandom;
    qt::FileManagerQt mFileManager;
    ApplicationQuick mApplication;
    TapRecognizerFactoryQuick mTapRecognizers;
    TapPlayerQuick mTapPlayer;
    ImageOverlayFactoryQuick mImageOverlays;
    AlertFactoryQuick mAlerts;
    WidgetViewFactoryQuick mWidgets;
    CoverViewFactoryQuick mCoverViews;
    std::unique_ptr<WebViewFactory> mWebViews;
    std::unique_ptr<DocumentPreviewFactory> mDocumentPreviews;
    ScreenCaptureQuick mScreenCapture{mMainQueue};
};

}  // namespace merovanta::quick
