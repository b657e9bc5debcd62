#include "support/LibraryTest.h"

#include "General/Panoptra/Communication/ClientRegistry.h"
#include "General/Panoptra/Injection.h"

namespace merovanta::testing {

LibraryTest::LibraryTest() {
    platform->app.root = inmemory::NativeController::make("HomePage", screen);
    CustomConfiguration custom("tenant", "token");
    custom.setServerUrl("service.example");
    Merovanta::initConfig(custom);
    ClientRegistry::clients().clear();
}

LibraryTest::~LibraryTest() {
    inmemory::PlatformInMemory::uninstall();
}

void LibraryTest::TearDown() {
    EXPECT_THAT(log.lines("[ERROR] "), ::testing::UnorderedElementsAreArray(mExpectedErrors));
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
