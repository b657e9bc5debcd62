#include "random/World.h"

#include <algorithm>
#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"

namespace merovanta::testing {

namespace {

using namespace std::chrono_literals;
using inmemory::HttpSessionInMemory;
using inmemory::WebSocketPeerInMemory;
using State = SessionState;

/// The value of a key in an address.
std::string valueOf(const std::string& url, const std::string& key) {
    auto at = url.find("?" + key + "=");
    if (at == std::string::npos) at = url.find("&" + key + "=");
    if (at == std::string::npos) return {};
    at += key.size() + 2;
    return url.substr(at, url.find('&', at) - at);
}

ApplicationConfig& config() {
    return Injection::resolve<ApplicationConfigWrapper>()->config;
}

/// Which states may follow which.
bool mayFollow(State before, State next) {
    switch (before) {
        case State::starting:
            return next == State::sharing || next == State::ended;
        case State::sharing:
            return next == State::suspended || next == State::reconnecting || next == State::ended;
        case State::suspended:
            return next == State::reconnecting || next == State::ended;
        case State::reconnecting:
            return next != State::starting;
        case State::idle:
        case State::ended:
            return next == State::starting;
    }
    return false;
}

}  // namespace

World::World(bool prefersWebSocket) {
    mRoot = inmemory::NativeController::make("HomePage", mScreen);
    mPlatform->app.root = mRoot;
    mPlatform->app.screen.bounds = {0, 0, 24, 36};
    mScreen->onTap = [this] { agentTapped(); };
    mService.override = [this](const HttpRequest& request) { return serve(request); };
    mPlatform->httpSession().replying = [this](const HttpRequest& request) { replying(request); };
    mPlatform->httpSession().latencyOf = [this](const HttpRequest& request) { return latencyOf(request); };
    CustomConfiguration custom("tenant", "token");
    custom.setServerUrl("service.example");
    Merovanta::initConfig(custom);
    Merovanta::panoptra().preferWebSocket(prefersWebSocket);
    mPanoptra = Injection::resolve<Panoptra>();
    mObservation =
        Merovanta::panoptra().observe([this](const SessionStatus& status) { stateChanged(status); });
}

World::~World() {
    mPanoptra.reset();
    inmemory::PlatformInMemory::uninstall();
}

void World::expect(bool holds, const std::string& what) {
    if (!holds && mViolation.empty()) mViolation = what;
}

void World::run(Step step) {
    act(step);
    checkTimers();
    checkWebSockets();
    checkConsent();
    checkFacts();
}

void World::wait(std::chrono::nanoseconds duration) {
    acceptWebSocket();
    mPlatform->time->advance(duration);
    checkWidget();
}

void World::act(const Step& step) {
    static constexpr std::array waits{0ms,    0ms,    10ms,   30ms,   100ms,  300ms,
                                      1000ms, 2500ms, 5000ms, 6000ms, 15000ms};
    const unsigned kind = step.kind;
    switch (step.action) {
        case Action::wait:
            wait(waits.at(kind % waits.size()));
            break;
        case Action::start:
            countedStart();
            break;
        case Action::stop:
            Merovanta::panoptra().stop();
            expect(!mPanoptra->isRunning(), "a stop does not stop");
            break;
        case Action::identify:
            identify({.id = "visitor" + std::to_string(++mVisitors)});
            break;
        case Action::identifyWithoutId:
            identify({.email = "a@b.example"});
            break;
        case Action::clear:
            Merovanta::user().clear();
            expect(!mPanoptra->isRunning(), "a session outlives its visitor");
            break;
        case Action::coBrowse:
            countedCoBrowsing();
            break;
        case Action::stopCoBrowsing:
            Merovanta::coBrowsing().stop();
            break;
        case Action::closeWidget:
            if (const auto widget = mPlatform->widgets().shown()) {
                const auto actions = widget->actions;
                actions.closeClicked();
            }
            break;
        case Action::resign:
            mIsActive = false;
            mAwaySince = mPlatform->time->now();
            mPlatform->app.resignActive();
            break;
        case Action::activate:
            mIsActive = true;
            mPlatform->app.becomeActive();
            break;
        case Action::invite:
            mIsInvited = true;
            break;
        case Action::agentMessage:
            agentSays(kind);
            break;
        case Action::agentTaps:
            handOver(std::vector<nlohmann::json>(1 + kind % 4, {{"x", 1}, {"y", 1}}));
            break;
        case Action::askForConsent:
            askForConsent(kind % 4 == 0);
            break;
        case Action::answer:
            answer(kind % 3 != 0);
            break;
        case Action::weather:
            setWeather(kind);
            break;
        case Action::initReply:
            setInitReply(kind);
            break;
        case Action::screen:
            changeScreen(kind);
            break;
        case Action::visitorActs:
            visitorActs(kind);
            break;
        case Action::preferWebSocket:
            Merovanta::panoptra().preferWebSocket(kind % 2 == 0);
            break;
        case Action::webSocket:
            webSocketActs(kind);
            break;
        case Action::interrupt:
            mInterruption = kind;
            break;
        case Action::actions:
            break;
    }
}

void World::countedStart() {
    int& completions = mCompletions.emplace_back(0);
    mPanoptra->start(false, std::nullopt, SessionStarter::host,
                     [&completions](const auto&) { ++completions; });
}

void World::countedCoBrowsing() {
    int& completions = mCompletions.emplace_back(0);
    Injection::resolve<CoBrowsing>()->start(SessionStarter::host,
                                            [&completions](const auto&, bool) { ++completions; });
}

void World::identify(const ActiveUser& user) {
    Merovanta::user().tag(user);
    expect(!hasConsent(), "a new visitor has consented already");
}

void World::setWeather(unsigned kind) {
    static constexpr std::array kinds{Weather::well,    Weather::slow,   Weather::verySlow,
                                      Weather::failing, Weather::silent, Weather::failingLate,
                                      Weather::refusing};
    const Weather weather = kinds.at(kind / 3 % kinds.size());
    if (kind % 3 == 0) {
        mWeather.fill(weather);
    } else {
        mWeather.at((kind % 3 == 1 ? 0 : 1) + kind / 12 * 2) = weather;
    }
}

void World::setInitReply(unsigned kind) {
    auto& reply = mService.initReply;
    reply["x"] = kind % 6 == 0;
    reply["s"] = kind % 6 != 1;
    reply["pnWS"] = kind % 6 == 2;
}

void World::changeScreen(unsigned kind) {
    switch (kind % 4) {
        case 0:
            mPlatform->app.root = nullptr;
            break;
        case 1:
            mPlatform->tapRecognizers().isBroken = true;
            break;
        default:
            mPlatform->app.root = mRoot;
            mPlatform->tapRecognizers().isBroken = false;
    }
}

/// What the visitor and the host do carries the number of the stream that was opened last; during a start, of
/// the one to come.
std::size_t World::streamNumber() const {
    const auto stream = mStreams.find(mLastOpened);
    const bool isOpen = stream != mStreams.end() && stream->second.isOpen;
    return mIds.size() + (state() == State::starting && !isOpen ? 1 : 0);
}

void World::visitorActs(unsigned kind) {
    switch (kind % 4) {
        case 0:
            mPlatform->tapRecognizers().tap({static_cast<double>(streamNumber()), 0});
            break;
        case 1:
            mRoot->className = mRoot->className == "HomePage" ? "AccountPage" : "HomePage";
            break;
        case 2:
            mScreen->color ^= 0x00FFFFU;
            mPlatform->app.paint();
            break;
        default:
            tag();
    }
}

void World::tag() {
    const std::string text = std::to_string(streamNumber()) + " " + std::to_string(++mTags);
    const auto stream = mStreams.find(mLastOpened);
    if (mPanoptra->isRunning() && stream != mStreams.end() && stream->second.isOpen) mMissing.push_back(text);
    Merovanta::panoptra().tag(text);
}

void World::agentSays(unsigned kind) {
    switch (kind % 5) {
        case 0:
            handOver({{{"a", "c"}}});
            break;
        case 1:
            handOver({{{"co", {{"s", true}}}}});
            break;
        case 2:
            handOver({{{"co", {{"b", true}}}}});
            break;
        case 3:
            handOver({{{"a", "c"}, {"co", {{"s", true}}}}});
            break;
        default:
            mService.agentMessages = {{{"x", 1}, {"y", 1}}};
    }
}

/// As a transport does with what it has just received.
void World::handOver(const std::vector<nlohmann::json>& messages) {
    const auto stream = mStreams.find(mLastOpened);
    if (!mPanoptra->isRunning() || stream == mStreams.end() || !stream->second.isOpen) return;
    const auto parser = Injection::resolve<BidirectionalMessageParser>();
    std::vector<BidirectionalMessage> read;
    for (const auto& message : messages) {
        if (message.contains("x")) ++mPendingTaps;
        read.push_back(parser->read(message));
    }
    parser->handOver(std::move(read));
}

void World::askForConsent(bool withStart) {
    const auto stream = mStreams.find(mLastOpened);
    if (!mPanoptra->isRunning() || stream == mStreams.end() || !stream->second.isOpen) return;
    // What waits comes first; then this is followed at once.
    mPlatform->time->advance(0s);
    if (!mPanoptra->isRunning()) return;
    if (withStart) {
        handOver({{{"a", "c"}, {"co", {{"opt", true}, {"s", true}}}}});
    } else {
        handOver({{{"co", {{"opt", true}}}}});
    }
    mQuestion = {mPanoptra->session(), config().visitConfig->visitorId};
}

/// The answer comes in a turn of its own, whatever happens until then; it is checked in the same turn.
void World::answer(bool accepted) {
    const auto& time = mPlatform->time;
    time->post([this] { mHadConsent = hasConsent(); });
    mPlatform->alerts().answer(accepted);
    time->post([this, accepted] {
        const bool isNew = hasConsent() && !mHadConsent;
        if (isNew) expect(accepted && isAsked(), "consent of somebody who was not asked");
        mHadConsent = hasConsent();
    });
}

bool World::hasConsent() {
    const auto& shared = Injection::resolve<ApplicationConfigWrapper>()->config.panoptraConfig;
    return shared->optIn.value_or(false);
}

/// The question is about the session that runs, and was put to the visitor who is there.
bool World::isAsked() const {
    const auto session = mPanoptra->session();
    return session && mQuestion && mQuestion->session.lock() == session &&
           mQuestion->visitorId == config().visitConfig->visitorId;
}

void World::webSocketActs(unsigned kind) {
    const auto& peers = mPlatform->webSockets().peers;
    if (kind % 4 == 3) mRefusesWebSockets = !mRefusesWebSockets;
    if (peers.empty()) return;
    switch (kind % 4) {
        case 0:
            peers.back()->fail({.code = 1006, .description = "lost"});
            break;
        case 1:
            if (peers.back()->state != WebSocketPeerInMemory::State::open) return;
            ++mPendingTaps;
            peers.back()->sendText(R"({"x":1,"y":1})");
            break;
        default:
            break;
    }
}

void World::acceptWebSocket() {
    const auto& peers = mPlatform->webSockets().peers;
    if (!mRefusesWebSockets && !peers.empty()) peers.back()->accept();
}

void World::replying(const HttpRequest& request) {
    const Endpoint endpoint = endpointOf(request);
    const bool setsSomethingGoing = endpoint == Endpoint::init || endpoint == Endpoint::stream;
    if (!mInterruption || !setsSomethingGoing) return;
    const unsigned kind = *std::exchange(mInterruption, std::nullopt);
    // Not at once: this is not the main thread.
    interrupt(kind, 1 + static_cast<int>(kind / 4 % 6));
}

/// In the middle of what a reply sets going, some turns after it has come.
void World::interrupt(unsigned kind, int turns) {
    if (mIsSettling) return;
    if (turns > 0) {
        mPlatform->time->post([this, kind, turns] { interrupt(kind, turns - 1); });
        return;
    }
    switch (kind % 4) {
        case 0:
            countedStart();
            break;
        case 1:
            mPlatform->app.resignActive();
            [[fallthrough]];
        case 2:
            mPlatform->app.becomeActive();
            mIsActive = true;
            break;
        default:
            Merovanta::panoptra().stop();
    }
}

World::Endpoint World::endpointOf(const HttpRequest& request) {
    const std::string path = FakeService::path(request);
    if (path == "api/in/im/c") return Endpoint::init;
    if (path == "api/ix/m") return Endpoint::stream;
    if (path == "api/ic/h") return Endpoint::health;
    if (path == "api/in/co") return Endpoint::channel;
    if (path == "api/in/i18n") return Endpoint::texts;
    return path == "api/in/io/l" ? Endpoint::log : Endpoint::tag;
}

World::Weather World::weatherAt(const HttpRequest& request) const {
    return mWeather.at(static_cast<std::size_t>(endpointOf(request)));
}

World::Milliseconds World::latencyOf(const HttpRequest& request) const {
    switch (weatherAt(request)) {
        case Weather::slow:
        case Weather::failingLate:
            return 1500ms;
        case Weather::verySlow:
            return 7s;
        case Weather::silent:
            return request.timeout;
        default:
            return 20ms;
    }
}

std::optional<HttpReply> World::serve(const HttpRequest& request) {
    const Endpoint endpoint = endpointOf(request);
    if (endpoint == Endpoint::init) {
        expect(mPanoptra->isRunning(), "an initialisation without a session");
        mAnnounced.insert(nlohmann::json::parse(request.body)["viId"].get<std::string>());
    }
    if (endpoint == Endpoint::stream) checkStreamRequest(request);
    if (endpoint == Endpoint::channel) mLastPoll = mPlatform->time->now();
    switch (weatherAt(request)) {
        case Weather::failing:
        case Weather::failingLate:
        case Weather::silent:
            return HttpSessionInMemory::failure("lost");
        case Weather::refusing:
            return HttpSessionInMemory::reply(500);
        default:
            break;
    }
    if (endpoint == Endpoint::channel && std::exchange(mIsInvited, false))
        return HttpSessionInMemory::reply(200, R"([{"c":"SCB","p":"{}"}])");
    if (endpoint == Endpoint::texts)
        return HttpSessionInMemory::reply(
            200,
            R"({"ui.confirm.accept":"Yes","ui.confirm.decline":"No","ui.mobile.confirm.title":"Share?"})");
    const bool isRound = endpoint == Endpoint::stream && request.method == "POST";
    if (isRound && !mService.agentMessages.empty()) ++mPendingTaps;
    return std::nullopt;
}

void World::checkStreamRequest(const HttpRequest& request) {
    const std::string id = valueOf(request.url, "id");
    expect(FakeService::header(request, "X-QD-SSID") == valueOf(request.url, "sId"),
           request.method + " of a stream with the header of another session");
    if (request.method == "DELETE") {
        // A connection may have opened for a start that failed after all.
        for (const auto& peer : mPlatform->webSockets().peers) {
            if (peer->state == WebSocketPeerInMemory::State::open && valueOf(peer->request.url, "id") == id)
                mStreams[id];
        }
        expect(mStreams.contains(id), "a stream is closed that never was");
        closed(id);
        return;
    }
    expect(mAnnounced.contains(id), "a stream under ids that were never announced");
    if (request.method == "GET") {
        expect(mPanoptra->isRunning(), "a stream is opened without a session");
        opened(id);
    } else {
        checkRound(request, mStreams[id], id);
    }
}

void World::checkRound(const HttpRequest& request, Stream& stream, const std::string& id) {
    if (!stream.isOpen) {
        ++stream.roundsAfterClose;
        expect(stream.roundsAfterClose == 1 && mPlatform->time->now() - stream.closedAt <= 100ms,
               "a round of a stream that is closed");
    }
    checkMessages(request.body, id);
}

void World::checkMessages(const std::string& body, const std::string& id) {
    ProtoMessageList list;
    expect(list.ParseFromString(body), "a round that is no list of messages");
    const auto isOf = [&](std::size_t number) {
        return number > 0 && number <= mIds.size() && mIds[number - 1] == id;
    };
    for (const auto& message : list.messages()) {
        if (message.has_tag()) checkTag(message.tag(), isOf(std::stoul(message.tag())));
        for (const auto& click : message.clickevent())
            expect(isOf(static_cast<std::size_t>(click.x())), "a tap of another stream");
    }
}

/// One that may not have arrived comes again.
void World::checkTag(const std::string& tag, bool isOfTheStream) {
    expect(isOfTheStream, "a tag of another stream");
    const auto missing = std::find(mMissing.begin(), mMissing.end(), tag);
    if (missing == mMissing.end()) return;
    expect(missing == mMissing.begin(), "a tag that overtakes another");
    mMissing.erase(missing);
}

void World::opened(const std::string& id) {
    if (mLastOpened != id) {
        const auto last = mStreams.find(mLastOpened);
        expect(last == mStreams.end() || !last->second.isOpen, "a stream is replaced without being closed");
        mIds.push_back(id);
    }
    mLastOpened = id;
    expect(mStreams[id].deletes == 0, "a stream that was closed is opened again");
    mStreams[id].isOpen = true;
}

void World::closed(const std::string& id) {
    Stream& stream = mStreams[id];
    if (stream.isOpen) stream.closedAt = mPlatform->time->now();
    stream.isOpen = false;
    ++stream.deletes;
    // What the agent has done before is not followed any more.
    if (id != mLastOpened) return;
    mPendingTaps = 0;
    mMissing.clear();
}

void World::agentTapped() {
    expect(mPendingTaps > 0, "a tap of an agent that has no more say");
    mPendingTaps = std::max(0, mPendingTaps - 1);
}

void World::stateChanged(const SessionStatus& status) {
    expect(mayFollow(mTold, status.state), "one state does not follow the other");
    const bool isGivenUp = mTold == State::suspended && status.state == State::ended;
    if (isGivenUp) expect(status.endReason != SessionEnd::failure, "a closed session ends by itself");
    mTold = status.state;
    if (mTold == State::starting) mAwaySince = mPlatform->time->now();
    const bool isOver = status != Merovanta::panoptra().status();
    if (mTold != State::sharing || isOver) return;
    // Unlike the polling's, its opening shows in no request.
    const std::string transport = mPanoptra->messageSender()->typeName();
    if (transport == "WebSocketMessageSender")
        opened(valueOf(mPlatform->webSockets().peers.back()->request.url, "id"));
}

void World::checkTimers() {
    const auto& timers = mPlatform->timers();
    const auto pictures = timers.pending(300ms, true);
    const auto seconds = timers.pending(1s, true);
    const auto rounds = timers.pending(100ms, false) + timers.pending(30ms, false);
    const auto patience = timers.repeating() - pictures - seconds;
    expect(pictures <= 1 && seconds <= 2 && rounds <= 1 && patience <= 1, "two timers of a kind");
    expect(timers.pending(5s, false) <= 3, "two timers of five seconds");
    const bool isWatching = state() == State::starting || state() == State::sharing;
    if (mPanoptra->isRunning() && isWatching) return;
    expect(pictures == 0 && seconds == 0, "it watches while there is nobody to see it");
    if (!mPanoptra->isRunning()) expect(patience == 0, "a request that nobody waits for");
}

/// Once the main queue is empty.
void World::checkWidget() {
    expect(mTold == state(), "the host was not told how things are");
    const auto widget = mPlatform->widgets().shown();
    if (!widget) return;
    // Of an application that is away nobody sees it.
    if (state() == State::suspended) return;
    const bool isConnecting = state() == State::starting || state() == State::reconnecting;
    if (widget->text == "CONNECTING") expect(isConnecting, "the widget says that it connects");
    const bool isCode =
        widget->text.size() == 5 && widget->text.find_first_not_of("0123456789") == std::string::npos;
    if (!isCode) return;
    expect(state() == State::sharing, "the widget shows a code without a session");
    expect(widget->text == Merovanta::panoptra().shareId(), "the widget shows another session's code");
}

void World::checkWebSockets() {
    for (const auto& peer : mPlatform->webSockets().peers) {
        const std::string id = valueOf(peer->request.url, "id");
        const bool isOpen = peer->state == WebSocketPeerInMemory::State::open;
        if (isOpen) expect(mPanoptra->isRunning(), "a connection without a session");
        for (const auto& frame : std::exchange(peer->received, {}))
            checkMessages(frame, id);
    }
}

void World::checkFacts() {
    expect(mPanoptra->isRunning() || !Merovanta::panoptra().status().isRunning(),
           "a session that has ended runs");
    const bool isLongAway = !mIsActive && mPlatform->time->now() - mAwaySince > 5s;
    if (isLongAway) expect(state() != State::sharing, "it shares the screen of an application that is away");
    for (const int completions : mCompletions)
        expect(completions <= 1, "a completion is called twice");
}

void World::checkConsent() {
    expect(!hasConsent() || mHadConsent, "consent without an answer");
    mHadConsent = hasConsent();
}

bool World::hasCome() const {
    const bool isPolled = mPlatform->time->now() - mLastPoll <= 6s;
    if (!mPanoptra->isRunning()) return isPolled;
    return isPolled && (state() == State::sharing || state() == State::ended);
}

void World::settle() {
    mIsSettling = true;
    mWeather.fill(Weather::well);
    mRefusesWebSockets = false;
    mService.initReply["x"] = false;
    mPlatform->app.root = mRoot;
    mPlatform->tapRecognizers().isBroken = false;
    if (!std::exchange(mIsActive, true)) mPlatform->app.becomeActive();
    // What is under way by now takes up to a minute, and most of it some seconds.
    for (int second = 0; second < 138 && (second < 8 || !hasCome()); ++second) {
        wait(1s);
        checkWebSockets();
    }
    expect(hasCome(), "it does not recover");
    const auto isWaiting = [this] { return state() == State::sharing && !mMissing.empty(); };
    for (int second = 0; second < 10 && (second == 0 || isWaiting()); ++second) {
        wait(1s);
        checkWebSockets();
    }
    expect(!isWaiting(), "a tag is lost");
    // Twice, as an invitation may be on its way.
    mIsInvited = false;
    for (int time = 0; time < 2; ++time) {
        Merovanta::coBrowsing().stop();
        Merovanta::panoptra().stop();
        expect(!mPanoptra->isRunning(), "a stop does not stop");
        wait(8s);
    }
    checkTimers();
    checkFacts();
    expect(mPlatform->timers().pending(100ms, false) + mPlatform->timers().pending(30ms, false) == 0,
           "a loop without a session");
    expect(mPlatform->widgets().shown() == nullptr, "a widget without a session");
    for (const int completions : mCompletions)
        expect(completions == 1, "a completion is not called");
    for (const auto& [id, stream] : mStreams)
        expect(stream.deletes > 0, "a stream is not closed");
}

}  // namespace merovanta::testing
