#pragma once

#include <memory>
#include <string>
#include <vector>

#include "InMemory/NativeController.h"
#include "InMemory/ObserversInMemory.h"
#include "Platform/Application.h"

namespace merovanta::inmemory {

/// An application with one window, which holds what its owner puts in.
class ApplicationInMemory : public Application {
 public:
    [[nodiscard]] std::shared_ptr<ViewController> keyWindowRootViewController() override;
    [[nodiscard]] Screen mainScreen() override { return screen; }
    [[nodiscard]] std::vector<std::string> preferredLanguages() override { return languages; }
    [[nodiscard]] std::optional<std::string> identifierForVendor() override { return vendorIdentifier; }
    [[nodiscard]] std::vector<bool> classesExist(const std::vector<std::string>& names) override;

    [[nodiscard]] bool exists() override { return isMade; }
    [[nodiscard]] bool isActive() override { return mIsActive; }
    [[nodiscard]] std::unique_ptr<Observation> observeWillResignActive(
        std::function<void()> observer) override {
        return mResignObservers.add(std::move(observer));
    }
    [[nodiscard]] std::unique_ptr<Observation> observeDidBecomeActive(
        std::function<void()> observer) override {
        return mActiveObservers.add(std::move(observer));
    }

    /// The user turns to something else, and comes back.
    void resignActive() {
        mIsActive = false;
        mResignObservers.notify();
    }
    void becomeActive() {
        mIsActive = true;
        mActiveObservers.notify();
    }

    /// Tells that the window has shown what changed since the last time.
    void paint() { ++paintSerial; }

    /// Null without a window.
    std::shared_ptr<NativeController> root;
    Screen screen{.scale = 1, .bounds = {0, 0, 390, 844}};
    /// Whether the host has made its application object.
    bool isMade = true;
    std::vector<std::string> languages{"en"};
    std::optional<std::string> vendorIdentifier = "00000000-1111-2222-3333-444444444444";
    /// Classes that exist even if no view is of them.
    std::vector<std::string> classes;
    std::uint64_t paintSerial = 0;

 private:
    bool mIsActive = true;
    ObserversInMemory mResignObservers;
    ObserversInMemory mActiveObservers;
};

}  // namespace merovanta::inmemory
