#pragma once

#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/UIStrings.h"
#include "Platform/Alert.h"
#include "Platform/Timer.h"

namespace merovanta {

class Session;

/// Asks the visitor, on the agent's behalf, whether to let the agent in. Thread: main.
class ConsentDialog : public std::enable_shared_from_this<ConsentDialog> {
 public:
    ConsentDialog(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                  std::shared_ptr<UIStrings> uiStrings);

    /// Loads the texts if need be, then presents the question; does nothing while it is asked already, nor
    /// for a while after it was declined. The answer counts only for the session and the visitor that were
    /// asked; a question left over from another gives way.
    void ask();

    /// The visitor has done something that makes up for an earlier refusal.
    void mayAskAgain() { mPause.reset(); }

    /// Takes the question away, or does not come to present it.
    void sessionEnded() { mQuestion.reset(); }

    /// Whether there is a session for which consent can be asked.
    [[nodiscard]] static bool isSharing();

    /// The message that asked has started a session as well: that is the one the question is about.
    void sessionStarted();

 private:
    /// One question, about what is shared and to whom it was put. What is still on its way for it holds it
    /// weakly.
    struct Question {
        /// The same when it returns from the background.
        std::weak_ptr<Session> session;
        std::optional<std::string> visitorId;
        std::unique_ptr<Alert> alert;
    };

    void present();
    void pause();
    void answered(bool accepted);
    [[nodiscard]] static std::shared_ptr<Session> session();
    [[nodiscard]] std::optional<std::string> visitorId() const;
    [[nodiscard]] bool isCurrent(const Question& question) const;

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<UIStrings> uiStrings;
    std::shared_ptr<Question> mQuestion;
    // As long as it waits, nothing is asked.
    std::unique_ptr<Timer> mPause;
};

}  // namespace merovanta
