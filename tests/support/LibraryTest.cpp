#include "support/LibraryTest.h"

#include <algorithm>

#include "General/Panoptra/Injection.h"

namespace merovanta::testing {

LibraryTest::LibraryTest() {
    platform->app.root = inmemory::NativeController::make("HomePage", screen);
    CustomConfiguration custom("tenant", "token");
    custom.setServerUrl("service.example");
    Merovanta::initConfig(custom);
}

LibraryTest::~LibraryTest() {
    inmemory::PlatformInMemory::uninstall();
}

void LibraryTest::TearDown() {
    for (const auto& line : log.lines("[ERROR] ")) {
        EXPECT_TRUE(std::find(mExpectedErrors.begin(), mExpectedErrors.end(), line) != mExpectedErrors.end())
            << "unexpected: " << line;
    }
    for (const auto& line : mExpectedErrors)
        EXPECT_TRUE(log.contains(line)) << "missing: " << line;
}

void LibraryTest::startSession() {
    Merovanta::panoptra().start();
    advance(1s);
}

void LibraryTest::paint(std::uint32_t color) {
    screen->color = color;
    platform->app.paint();
}

ApplicationConfig& LibraryTest::config() {
    return Injection::resolve<ApplicationConfigWrapper>()->config;
}

}  // namespace merovanta::testing
