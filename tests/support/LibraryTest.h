#pragma once

#include <Merovanta/Merovanta.h>
#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "InMemory/PlatformInMemory.h"
#include "support/FakeService.h"
#include "support/LogCapture.h"

namespace merovanta::testing {

using namespace std::chrono_literals;

/// The library on the in-memory platform, configured, with one screen in the window and a service that
/// answers; no client is registered on a channel. A test fails if the library logs an error that it did not
/// expect.
class LibraryTest : public ::testing::Test {
 protected:
    LibraryTest();
    ~LibraryTest() override;

    void TearDown() override;

    /// Starts a session and lets the first second pass.
    void startSession();

    void advance(std::chrono::nanoseconds duration) { platform->time->advance(duration); }

    // Round, ping, pictures, page check.
    static constexpr std::size_t timersOfASession = 4;

    /// The timers that are waiting, but for the one of the channels' polling, which ticks for ever.
    [[nodiscard]] std::size_t timers() const { return platform->time->pendingTimers() - 1; }

    /// Changes the screen's look and lets the window paint it.
    void paint(std::uint32_t color);

    [[nodiscard]] ApplicationConfig& config();

    /// The line must come so many times.
    void expectError(const std::string& line, std::size_t times = 1) {
        mExpectedErrors.insert(mExpectedErrors.end(), times, line);
    }

    std::shared_ptr<inmemory::PlatformInMemory> platform = inmemory::PlatformInMemory::installNew();
    FakeService service{platform->httpSession()};
    std::shared_ptr<inmemory::NativeView> screen =
        inmemory::NativeView::make({0, 0, 390, 844}, 0xFFFFFFFF, {"Screen"});
    LogCapture log;

 private:
    std::vector<std::string> mExpectedErrors;
};

}  // namespace merovanta::testing
