#pragma once

#include "InMemory/PlatformInMemory.h"
#include "Qt/Foundation/ClockQt.h"
#include "Qt/Foundation/HttpSessionQt.h"
#include "Qt/Foundation/MainQueueQt.h"
#include "Qt/Foundation/NetworkThreadQt.h"
#include "Qt/Foundation/RandomQt.h"
#include "Qt/Foundation/TimerFactoryQt.h"
#include "Qt/Foundation/WebSocketFactoryQt.h"
#include "Qt/Foundation/WorkQueueQt.h"

namespace merovanta::test {

/// The real network, run loop and clock; screen, settings and bundle in memory.
class PlatformTransport final : public Platform {
 public:
    explicit PlatformTransport(bool isEncrypted) {
        auto& constants = mMachine.bundle().lists.begin()->second;
        constants["HttpProtocol"] = isEncrypted ? "https" : "http";
        constants["WebSocketProtocol"] = isEncrypted ? "wss" : "ws";
    }

    Application& application() override { return mMachine.application(); }
    ScreenCapture& screenCapture() override { return mMachine.screenCapture(); }
    TapRecognizerFactory& tapRecognizers() override { return mMachine.tapRecognizers(); }
    MainQueue& mainQueue() override { return mMainQueue; }
    WorkQueue& workQueue() override { return mWorkQueue; }
    TimerFactory& timers() override { return mTimers; }
    Clock& clock() override { return mClock; }
    Random& random() override { return mRandom; }
    HttpSession& httpSession() override { return mHttpSession; }
    WebSocketFactory& webSockets() override { return mWebSockets; }
    UserDefaults& userDefaults() override { return mMachine.userDefaults(); }
    Bundle& bundle() override { return mMachine.bundle(); }

 private:
    inmemory::PlatformInMemory mMachine;
    qt::MainQueueQt mMainQueue;
    qt::WorkQueueQt mWorkQueue;
    qt::NetworkThreadQt mNetworkThread;
    qt::HttpSessionQt mHttpSession{mNetworkThread};
    qt::WebSocketFactoryQt mWebSockets{mNetworkThread, mMainQueue};
    qt::TimerFactoryQt mTimers;
    qt::ClockQt mClock;
    qt::RandomQt mRandom;
};

}  // namespace merovanta::test
