#pragma once

#include <Merovanta/Merovanta.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "InMemory/PlatformInMemory.h"
#include "random/Step.h"
#include "support/FakeService.h"

namespace merovanta::testing {

/// The library with all that is around it (host, visitor, agent, service, network), in which anything may
/// happen at any time, and in which some things must hold all the same.
class World {
 public:
    explicit World(bool prefersWebSocket);
    ~World();

    void run(Step step);

    /// Everything is well from now on: what is not given up must come right, then end without a trace.
    void settle();

    /// What did not hold, first thing first; empty if all did.
    [[nodiscard]] const std::string& violation() const { return mViolation; }

 private:
    enum class Endpoint : std::size_t { init, stream, health, tag, channel, texts, log, endpoints };
    enum class Weather { well, slow, verySlow, failing, failingLate, refusing, silent };

    /// A stream as the service sees it, by the id of its visit.
    struct Stream {
        bool isOpen = false;
        std::chrono::nanoseconds closedAt{};
        int roundsAfterClose = 0;
        int deletes = 0;
    };

    using Milliseconds = std::chrono::milliseconds;

    void expect(bool holds, const std::string& what);
    void wait(std::chrono::nanoseconds duration);
    void act(const Step& step);
    void countedStart();
    void countedCoBrowsing();
    void identify(const ActiveUser& user);
    void setWeather(unsigned kind);
    void setInitReply(unsigned kind);
    void changeScreen(unsigned kind);
    void visitorActs(unsigned kind);
    [[nodiscard]] std::size_t streamNumber() const;
    void tag();
    void agentSays(unsigned kind);
    void handOver(const std::vector<nlohmann::json>& messages);
    void askForConsent(bool withStart);
    void answer(bool accepted);
    void webSocketActs(unsigned kind);
    void acceptWebSocket();
    void replying(const HttpRequest& request);
    void interrupt(unsigned kind, int turns);

    [[nodiscard]] static Endpoint endpointOf(const HttpRequest& request);
    [[nodiscard]] Weather weatherAt(const HttpRequest& request) const;
    std::optional<HttpReply> serve(const HttpRequest& request);
    [[nodiscard]] Milliseconds latencyOf(const HttpRequest& request) const;
    void checkStreamRequest(const HttpRequest& request);
    void checkRound(const HttpRequest& request, Stream& stream, const std::string& id);
    void checkTag(const std::string& tag, bool isOfTheStream);
    void checkMessages(const std::string& body, const std::string& id);
    void opened(const std::string& id);
    void closed(const std::string& id);
    void agentTapped();

    void stateChanged(const SessionStatus& status);
    [[nodiscard]] static SessionState state() { return Merovanta::panoptra().status().state; }
    void checkTimers();
    void checkWidget();
    void checkWebSockets();
    void checkFacts();
    void checkConsent();
    [[nodiscard]] static bool hasConsent();
    [[nodiscard]] bool isAsked() const;
    [[nodiscard]] bool hasCome() const;

    std::shared_ptr<inmemory::PlatformInMemory> mPlatform = inmemory::PlatformInMemory::installNew();
    FakeService mService{mPlatform->httpSession()};
    std::shared_ptr<inmemory::NativeView> mScreen =
        inmemory::NativeView::make({0, 0, 24, 36}, 0xFFFFFFFF, {"Screen"});
    std::shared_ptr<inmemory::NativeController> mRoot;
    std::shared_ptr<Panoptra> mPanoptra;
    std::string mViolation;

    std::array<Weather, static_cast<std::size_t>(Endpoint::endpoints)> mWeather{};
    std::set<std::string> mAnnounced;
    std::map<std::string, Stream> mStreams;
    std::vector<std::string> mIds;
    std::string mLastOpened;
    bool mIsInvited = false;
    bool mRefusesWebSockets = false;
    std::optional<unsigned> mInterruption;
    bool mIsSettling = false;
    bool mIsActive = true;
    std::chrono::nanoseconds mLastPoll{};
    int mPendingTaps = 0;
    int mVisitors = 0;
    std::chrono::nanoseconds mAwaySince{};
    int mTags = 0;
    // Those that have not reached the service, of the stream that is open.
    std::deque<std::string> mMissing;

    // What the host was told last.
    SessionState mTold = SessionState::idle;
    std::unique_ptr<Observation> mObservation;
    // How often each start has been completed.
    std::deque<int> mCompletions;

    // To whom the question under way was put.
    struct Question {
        std::weak_ptr<Session> session;
        std::optional<std::string> visitorId;
    };
    std::optional<Question> mQuestion;
    bool mHadConsent = false;
};

}  // namespace merovanta::testing
