// The agent's messages, from the text of one to what it does in an application.
#include <Merovanta/Merovanta.h>

#include <cstdint>
#include <cstdio>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"
#include "General/Panoptra/Panoptra.h"
#include "InMemory/PlatformInMemory.h"

namespace {

using namespace merovanta;

std::string reply(const std::string& url) {
    if (url.find("/api/in/im/c") != std::string::npos)
        return R"({"s":true,"h":false,"ip":"","x":false,"cA":true,"ios":{"blacklist":[],"blacklistClasses":[]}})";
    if (url.find("/api/in/i18n") != std::string::npos)
        return R"({"ui.mobile.confirm.title":"?","ui.confirm.accept":"Yes"})";
    return "[]";
}

std::shared_ptr<inmemory::PlatformInMemory> makePlatform() {
    // The log would drown the fuzzer's own words, which are on standard error.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) __builtin_trap();
    auto platform = inmemory::PlatformInMemory::installNew();
    auto screen = inmemory::NativeView::make({0, 0, 390, 844}, 0xFFFFFFFF);
    screen->onTap = [] {};
    platform->httpSession().server = [](const HttpRequest& request) {
        return inmemory::HttpSessionInMemory::reply(200, reply(request.url));
    };
    platform->app.root = inmemory::NativeController::make("HomePage", screen);
    Merovanta::initConfig("tenant", "token");
    return platform;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto platform = makePlatform();
    const auto message = parseJson({reinterpret_cast<const char*>(data), size});
    if (!message || !message->is_object()) return 0;
    if (!Injection::resolve<Panoptra>()->isRunning()) Merovanta::coBrowsing().start();
    const auto parser = Injection::resolve<BidirectionalMessageParser>();
    parser->handOver({parser->read(*message)});
    platform->time->advance(std::chrono::seconds(1));
    platform->alerts().answer(size % 2 == 0);
    platform->time->advance(std::chrono::seconds(6));
    platform->httpSession().requests.clear();
    // All that is left is the widget, if a session runs.
    if (platform->app.root->view->subviews.size() > 1) __builtin_trap();
    return 0;
}
