#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/InitSender.h"
#include "General/StringError.h"

namespace merovanta {

/// One initialisation on its way: finds out which page is in front, tells the service, and hands its answer
/// on. Letting go of it calls it off: nothing is heard of it any more. Thread: main.
class Initialisation : public std::enable_shared_from_this<Initialisation> {
 public:
    /// The page that the service was told of, and its answer. Called once, on the main thread, and never
    /// inside begin().
    using Done = std::function<void(const std::string& pageName, const InitSender::Reply& reply)>;

    [[nodiscard]] static std::shared_ptr<Initialisation> begin(
        std::shared_ptr<InitSender> initSender, std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
        bool force, Done done);

    /// The ids that the service was told; none before that.
    [[nodiscard]] const std::optional<VisitConfig>& visit() const { return mVisit; }

    /// Why there is no page to begin with.
    [[nodiscard]] static StringError noControllerName();

 private:
    Initialisation(std::shared_ptr<InitSender> initSender,
                   std::shared_ptr<ApplicationConfigWrapper> applicationConfig, bool force, Done done);

    void findPage();
    void send(const std::string& pageName);
    void replied(const std::string& pageName, const InitSender::Reply& reply) const;

    std::shared_ptr<InitSender> mInitSender;
    std::shared_ptr<ApplicationConfigWrapper> mApplicationConfig;
    bool mForce;
    Done mDone;
    std::optional<VisitConfig> mVisit;
};

}  // namespace merovanta
