// A host's own test: a session on the in-memory platform.
#include <InMemory/PlatformInMemory.h>
#include <Merovanta/Merovanta.h>

int main() {
    using merovanta::inmemory::PlatformInMemory;
    const auto platform = PlatformInMemory::installNew();
    platform->app.root = merovanta::inmemory::NativeController::make(
        "Page", merovanta::inmemory::NativeView::make({0, 0, 300, 600}, 0xFFFFFFFF));
    merovanta::Merovanta::initConfig("tenant", "token");
    merovanta::Merovanta::panoptra().start();
    platform->time->advance(std::chrono::seconds(1));
    const bool hasAsked = platform->httpSession().requests.size() == 1;
    PlatformInMemory::uninstall();
    return hasAsked ? 0 : 1;
}
