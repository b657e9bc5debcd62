#include "Harness.h"
#include "InMemory/PlatformInMemory.h"

namespace merovanta::conformance {

namespace {

using inmemory::HttpSessionInMemory;
using inmemory::NativeController;
using inmemory::NativeView;

class HarnessInMemory : public Harness {
 public:
    HarnessInMemory() {
        mPlatform.app.screen = {.scale = 3, .bounds = {0, 0, 300, 400}};
        mPlatform.screenCapture().delay = 5ms;
    }

    Platform& platform() override { return mPlatform; }

    bool passUntil(const std::function<bool()>& condition) override {
        for (int step = 0; step < 10'000 && !condition(); ++step)
            pass(1ms);
        return condition();
    }
    void pass(std::chrono::milliseconds duration) override {
        for (const auto& peer : mPlatform.webSockets().peers)
            peer->accept();
        mPlatform.time->advance(duration);
    }
    std::chrono::nanoseconds now() const override { return mPlatform.time->now(); }
    void stall(std::chrono::milliseconds /*duration*/) override {}

    void show(Page page) override {
        const auto content = NativeView::make({0, 0, 300, 400}, white);
        const auto main = NativeController::make("Main", content);
        const auto home = NativeController::make("HomePage", content);
        const auto detail = NativeController::make("DetailPage", content);
        if (page == Page::views) addViews(*content);
        content->onTap = [] {};
        if (page == Page::presenting) main->presented = NativeController::make("PinDialog", content);
        if (page == Page::navigation) main->entries = {home, detail};
        if (page == Page::tabs) main->selected = detail;
        mPlatform.app.root = main;
        paint();
    }
    void move(long tag, const Point& origin) override {
        auto& frame = find(mPlatform.app.root->view, tag)->frame;
        frame = {origin.x, origin.y, frame.width, frame.height};
    }
    void paint() override { mPlatform.app.paint(); }
    void destroy(long tag) override {
        const auto view = find(mPlatform.app.root->view, tag);
        std::erase(view->superview.lock()->subviews, view);
    }
    void hide() override { mHidden = std::exchange(mPlatform.app.root, nullptr); }
    void close() override { mPlatform.app.root = nullptr; }
    void tap(const Point& point) override { mPlatform.tapRecognizers().tap(point); }
    std::optional<int> hostTaps() override { return std::nullopt; }

    std::string serve(int status, const std::string& body) override {
        mPlatform.httpSession().server = [=](const HttpRequest&) {
            return HttpSessionInMemory::reply(status, body);
        };
        return "http://peer.example";
    }
    std::vector<HttpRequest> received() override { return mPlatform.httpSession().requests; }
    std::string deadUrl() override { return "http://nobody.example"; }

    std::string serveSockets() override { return "ws://peer.example"; }
    void sendText(const std::string& text) override { socketPeer().sendText(text); }
    void sendData(const std::string& data) override { socketPeer().sendData(data); }
    void endSocket(std::optional<int> closeCode) override {
        socketPeer().fail({.code = closeCode, .description = "ended"});
    }
    HttpRequest socketRequest() override { return socketPeer().request; }
    std::vector<std::string> socketReceived() override { return socketPeer().received; }
    std::optional<int> socketCloseCode() override { return socketPeer().closeCode; }

    void becomeActive() override { mPlatform.app.becomeActive(); }
    void resignActive() override { mPlatform.app.resignActive(); }

    std::string savedDefaults() override {
        std::string all;
        for (const auto& [key, value] : mPlatform.userDefaults().synchronized())
            all.append(key).append("=").append(value).append("\n");
        return all;
    }

 private:
    static void addViews(NativeView& content) {
        const auto card = content.add(NativeView::make({20, 40, 200, 200}, blue, {"Card", "View"}));
        card->tag = 1;
        const std::vector<std::string> secretClasses{"SecretField", "Field", "View"};
        card->add(NativeView::make({10, 20, 60, 30}, red, secretClasses))->tag = 2;
        card->add(NativeView::make({40, 30, 60, 30}, green, {"Field", "View"}))->tag = 3;
        content.add(NativeView::make({20, 300, 100, 50}, grey, {"HostButton", "View"}));
    }

    static std::shared_ptr<NativeView> find(const std::shared_ptr<NativeView>& in, long tag) {
        if (in->tag == tag) return in;
        for (const auto& child : in->subviews) {
            if (auto found = find(child, tag)) return found;
        }
        return nullptr;
    }

    inmemory::WebSocketPeerInMemory& socketPeer() { return *mPlatform.webSockets().peers.back(); }

    inmemory::PlatformInMemory mPlatform;
    std::shared_ptr<NativeController> mHidden;
};

}  // namespace

std::unique_ptr<Harness> makeHarness() {
    return std::make_unique<HarnessInMemory>();
}

}  // namespace merovanta::conformance
