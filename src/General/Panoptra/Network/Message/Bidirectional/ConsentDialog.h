#pragma once

#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/UIStrings.h"
#include "Platform/Alert.h"

namespace merovanta {

/// Asks the visitor, on the agent's behalf, whether to let the agent in. Thread: main.
class ConsentDialog : public std::enable_shared_from_this<ConsentDialog> {
 public:
    ConsentDialog(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                  std::shared_ptr<UIStrings> uiStrings);

    /// Loads the texts if need be, then presents the question; does nothing while it is asked already. The
    /// answer counts only for the session and the visitor that were asked; a question left over from another
    /// gives way.
    void ask();

    /// The message that asked has started a session as well: that is the one the question is about.
    void sessionStarted();

 private:
    /// What is shared, and by whom. A session keeps its share code when it returns from the background.
    struct Share {
        std::optional<std::string> code;
        std::optional<std::string> visitorId;

        bool operator==(const Share&) const = default;
    };

    void present();
    void answered(bool accepted);
    void finish();
    [[nodiscard]] Share share() const;
    [[nodiscard]] bool isStillAsked() const;

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<UIStrings> uiStrings;
    bool mIsAsking = false;
    unsigned mQuestion = 0;
    Share mAsked;
    std::unique_ptr<Alert> mAlert;
};

}  // namespace merovanta
