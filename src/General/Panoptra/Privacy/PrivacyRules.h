#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "General/Panoptra/IOSConfig.h"
#include "General/Panoptra/Privacy/PrivacySettings.h"

namespace merovanta {

/// The service's lists and the host's settings, made ready to be asked about each view of a screen. Never
/// changes; any thread may read it.
class PrivacyRules {
 public:
    PrivacyRules(std::optional<IOSConfig> lists, PrivacySettings settings);
    PrivacyRules(const PrivacyRules&) = delete;
    PrivacyRules& operator=(const PrivacyRules&) = delete;

    /// Whether these are the rules made of this.
    [[nodiscard]] bool areOf(const std::optional<IOSConfig>& lists, const PrivacySettings& settings) const {
        return mLists == lists && mSettings == settings;
    }

    [[nodiscard]] const PrivacySettings& settings() const { return mSettings; }
    /// Both lists are empty if the service has sent none.
    [[nodiscard]] const IOSConfig& lists() const;

    /// The first entry of a list that names this.
    [[nodiscard]] std::optional<std::size_t> tagEntry(long tag) const;
    [[nodiscard]] std::optional<std::size_t> classEntry(std::string_view className) const;

    /// Whether this entry of the tag list is a number, and no earlier entry is the same.
    [[nodiscard]] bool isFirstOfTag(std::size_t entry) const { return mFirstTags[entry]; }

    /// Of the tag list, the entries that are no number.
    [[nodiscard]] std::size_t badTags() const { return mBadTags; }

    /// Whether the lists or the settings name anything at all.
    [[nodiscard]] bool nameAnything() const;

 private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    std::optional<IOSConfig> mLists;
    PrivacySettings mSettings;
    std::unordered_map<long, std::size_t> mTags;
    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> mClasses;
    std::vector<bool> mFirstTags;
    std::size_t mBadTags = 0;
};

}  // namespace merovanta
