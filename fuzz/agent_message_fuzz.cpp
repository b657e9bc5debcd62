// The agent's messages, from the text of one to what it does in an application.
#include <Merovanta/Merovanta.h>

#include <cstdint>
#include <cstdio>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"
#include "InMemory/PlatformInMemory.h"

namespace {

using namespace merovanta;

std::shared_ptr<inmemory::PlatformInMemory> makePlatform() {
    // The log would drown the fuzzer's own words, which are on standard error.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) __builtin_trap();
    auto platform = inmemory::PlatformInMemory::installNew();
    auto screen = inmemory::NativeView::make({0, 0, 390, 844}, 0xFFFFFFFF);
    screen->onTap = [] {};
    platform->app.root = inmemory::NativeController::make("HomePage", screen);
    Merovanta::initConfig("tenant", "token");
    return platform;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto platform = makePlatform();
    const auto message = parseJson({reinterpret_cast<const char*>(data), size});
    if (!message || !message->is_object()) return 0;
    Injection::resolve<BidirectionalMessageParser>()->parse(*message);
    platform->time->advance(std::chrono::seconds(6));
    platform->httpSession().requests.clear();
    if (!platform->app.root->view->subviews.empty()) __builtin_trap();
    return 0;
}
