#include "General/Panoptra/Privacy/PrivacyRules.h"

#include <charconv>
#include <utility>

namespace merovanta {

namespace {

std::optional<long> parseTag(std::string_view text) {
    // A plus sign is part of a decimal number, but from_chars does not take it.
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    long tag = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), tag);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return tag;
}

template <typename Map, typename Key>
std::optional<std::size_t> entryIn(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found == map.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

PrivacyRules::PrivacyRules(std::optional<IOSConfig> lists, PrivacySettings settings)
    : mLists(std::move(lists)), mSettings(settings) {
    const IOSConfig& both = this->lists();
    mFirstTags.resize(both.blacklist.size());
    for (std::size_t entry = 0; entry < both.blacklist.size(); ++entry) {
        if (const auto tag = parseTag(both.blacklist[entry])) {
            mFirstTags[entry] = mTags.try_emplace(*tag, entry).second;
        } else {
            ++mBadTags;
        }
    }
    for (std::size_t entry = 0; entry < both.blacklistClasses.size(); ++entry)
        mClasses.try_emplace(both.blacklistClasses[entry], entry);
}

const IOSConfig& PrivacyRules::lists() const {
    static const auto* const none = new IOSConfig();
    return mLists ? *mLists : *none;
}

std::optional<std::size_t> PrivacyRules::tagEntry(long tag) const {
    return entryIn(mTags, tag);
}

std::optional<std::size_t> PrivacyRules::classEntry(std::string_view className) const {
    return entryIn(mClasses, className);
}

bool PrivacyRules::nameAnything() const {
    return !mTags.empty() || !mClasses.empty() || mSettings.masksTextInputs || mSettings.masksTexts ||
           mSettings.masksPictures;
}

}  // namespace merovanta
