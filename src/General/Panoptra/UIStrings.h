#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/Network/MerovantaAPI.h"
#include "General/StringError.h"

namespace merovanta {

/// The interface texts that the service translates for the visitor. Thread: main.
class UIStrings : public std::enable_shared_from_this<UIStrings> {
 public:
    /// Receives nothing on success.
    using Completion = std::function<void(const std::optional<StringError>&)>;

    explicit UIStrings(std::shared_ptr<MerovantaAPI> merovantaAPI);

    /// Loads the tenant's texts in the device's first language unless texts are loaded, then completes on the
    /// main thread: at once if nothing was to be loaded. After a failure the next call tries again.
    void load(const std::string& tenantId, Completion completion);

    /// The text under this key; absent if it is not loaded or not there.
    [[nodiscard]] std::optional<std::string> text(const std::string& key) const;

 private:
    const std::string defaultLanguageCode = "en";
    std::shared_ptr<MerovantaAPI> merovantaAPI;
    std::optional<std::map<std::string, std::string>> strings;
};

}  // namespace merovanta
