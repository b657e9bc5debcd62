#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

inline void PrintTo(const Point& point, std::ostream* out) {
    *out << '(' << point.x << ", " << point.y << ')';
}

inline void PrintTo(const Rect& rect, std::ostream* out) {
    *out << '(' << rect.x << ", " << rect.y << ", " << rect.width << ", " << rect.height << ')';
}

}  // namespace merovanta

namespace merovanta::conformance {

using namespace std::chrono_literals;

/// What a window shows. All windows are 300 by 400 points.
enum class Page {
    /// On white, back to front:
    /// - a "Card" with tag 1, blue, at (20, 40, 200, 200), and in it, back to front:
    ///   - a "SecretField", which is a "Field", with tag 2, red, at (10, 20, 60, 30);
    ///   - a "Field" with tag 3, green, at (40, 30, 60, 30), over a part of it;
    /// - a grey "HostButton" without a tag at (20, 300, 100, 50).
    views,
    /// A "PinDialog" over the window.
    presenting,
    /// A navigation controller with a "HomePage" and, over it, a "DetailPage".
    navigation,
    /// A tab bar controller whose second page, a "DetailPage", is selected.
    tabs,
};

constexpr std::uint32_t white = 0xffffffffU;
constexpr std::uint32_t blue = 0xff0000ffU;
constexpr std::uint32_t red = 0xffff0000U;
constexpr std::uint32_t green = 0xff008000U;
constexpr std::uint32_t grey = 0xff808080U;

/// One platform with the means to play its user, its host application and the network's other side. An
/// adapter that is to be tested writes one of these.
class Harness {
 public:
    virtual ~Harness() = default;

    [[nodiscard]] virtual Platform& platform() = 0;

    /// Lets time pass until the condition holds; false if it does not within a generous while.
    [[nodiscard]] virtual bool passUntil(const std::function<bool()>& condition) = 0;
    virtual void pass(std::chrono::milliseconds duration) = 0;
    /// The time that passes, from any beginning; never jumps.
    [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;
    /// Keeps the main thread busy; does nothing where a task takes no time.
    virtual void stall(std::chrono::milliseconds duration) = 0;

    /// Shows a window as the key window and waits until it is painted.
    virtual void show(Page page) = 0;
    virtual void move(long tag, const Point& origin) = 0;
    /// Waits until what changed is on the screen.
    virtual void paint() = 0;
    virtual void destroy(long tag) = 0;
    virtual void hide() = 0;
    virtual void close() = 0;
    virtual void tap(const Point& point) = 0;
    /// How many taps the "HostButton" got; absent if the toolkit has no controls of its own.
    [[nodiscard]] virtual std::optional<int> hostTaps() = 0;

    /// Starts a peer that answers each request so; its URL.
    [[nodiscard]] virtual std::string serve(int status, const std::string& body) = 0;
    /// The requests that reached it; of the URL at least the path.
    [[nodiscard]] virtual std::vector<HttpRequest> received() = 0;
    /// A URL where nobody listens.
    [[nodiscard]] virtual std::string deadUrl() = 0;

    /// Starts a peer for sockets that takes every connection; its URL, without a path.
    [[nodiscard]] virtual std::string serveSockets() = 0;
    // What the peer does on its newest connection; without a code that one breaks.
    virtual void sendText(const std::string& text) = 0;
    virtual void sendData(const std::string& data) = 0;
    virtual void endSocket(std::optional<int> closeCode) = 0;
    /// The newest connection's request; of the URL at least the path.
    [[nodiscard]] virtual HttpRequest socketRequest() = 0;
    [[nodiscard]] virtual std::vector<std::string> socketReceived() = 0;
    /// The code with which the newest connection was closed from here.
    [[nodiscard]] virtual std::optional<int> socketCloseCode() = 0;

    /// The user turns to the application, and to something else.
    virtual void becomeActive() = 0;
    virtual void resignActive() = 0;

    /// All that the user defaults have on the disk, in any form.
    [[nodiscard]] virtual std::string savedDefaults() = 0;
};

/// The harness of the platform that this suite is linked with.
[[nodiscard]] std::unique_ptr<Harness> makeHarness();

/// A test that runs on every platform.
class ConformanceTest : public ::testing::Test {
 protected:
    [[nodiscard]] Platform& platform() { return harness->platform(); }
    [[nodiscard]] bool passUntil(const std::function<bool()>& condition) {
        return harness->passUntil(condition);
    }
    [[nodiscard]] bool isOnMain() { return platform().mainQueue().isCurrent(); }

    [[nodiscard]] std::shared_ptr<ViewController> controller() {
        return platform().application().keyWindowRootViewController();
    }
    [[nodiscard]] std::shared_ptr<View> root() { return controller()->view(); }
    /// A view that must be there.
    [[nodiscard]] std::shared_ptr<View> view(long tag) {
        auto found = ViewUtils::viewWithTag(root(), tag);
        if (!found) throw std::runtime_error("no view with tag " + std::to_string(tag));
        return found;
    }

    std::unique_ptr<Harness> harness = makeHarness();
};

}  // namespace merovanta::conformance
