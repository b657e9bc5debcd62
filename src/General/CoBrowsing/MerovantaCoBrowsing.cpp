#include <Merovanta/MerovantaCoBrowsing.h>

#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/Panoptra/Injection.h"

namespace merovanta {

namespace {

constexpr const char* noInstance = "Cannot get CoBrowsing instance";

}  // namespace

void MerovantaCoBrowsing::start() {
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) {
        coBrowsing->start(SessionStarter::host,
                          [](const std::optional<StringError>& error, bool /*isStarted*/) {
                              if (error)
                                  Log::error("Starting CoBrowsing failed: " + error->errorDescription());
                          });
    } else {
        Log::error(noInstance);
    }
}

void MerovantaCoBrowsing::stop() {
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) {
        coBrowsing->hide(SessionEnd::host);
    } else {
        Log::error(noInstance);
    }
}

void MerovantaCoBrowsing::startWith(std::function<void()> success,
                                    std::function<void(const std::string& error)> failure) {
    const auto coBrowsing = Injection::resolve<CoBrowsing>();
    if (!coBrowsing) {
        Log::error(std::string("Error while starting CoBrowsing: ") + noInstance);
        if (failure) failure(noInstance);
        return;
    }
    coBrowsing->start(SessionStarter::host, [success = std::move(success), failure = std::move(failure)](
                                                const std::optional<StringError>& error, bool isStarted) {
        if (error) Log::error("Starting CoBrowsing failed: " + error->errorDescription());
        if (isStarted) {
            if (success) success();
        } else if (failure) {
            failure(error ? error->errorDescription() : Panoptra::notWanted);
        }
    });
}

}  // namespace merovanta
