// A host's own test: a session on the in-memory platform.
#include <InMemory/PlatformInMemory.h>
#include <Merovanta/Merovanta.h>

#include <algorithm>

int main() {
    using merovanta::inmemory::PlatformInMemory;
    const auto platform = PlatformInMemory::installNew();
    platform->app.root = merovanta::inmemory::NativeController::make(
        "Page", merovanta::inmemory::NativeView::make({0, 0, 300, 600}, 0xFFFFFFFF));
    merovanta::Merovanta::initConfig("tenant", "token");
    merovanta::Merovanta::panoptra().start();
    platform->time->advance(std::chrono::seconds(1));
    const auto& requests = platform->httpSession().requests;
    const bool hasAsked = std::any_of(requests.begin(), requests.end(), [](const auto& request) {
        return request.url == "https://service.example/api/in/im/c";
    });
    PlatformInMemory::uninstall();
    return hasAsked ? 0 : 1;
}
