#pragma once

#include <memory>

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
    /// answer counts only for the session and the visitor that were asked.
    void ask();

 private:
    void present();
    void answered(bool accepted);
    void finish();
    [[nodiscard]] bool isStillAsked() const;

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<UIStrings> uiStrings;
    bool mIsAsking = false;
    VisitConfig mAsked;
    std::unique_ptr<Alert> mAlert;
};

}  // namespace merovanta
