#include "General/Panoptra/Util/PrivacyUtils.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "General/ControlCharacters.h"
#include "General/Log.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr std::uint32_t opaqueBlack = 0xFF000000;
constexpr std::size_t longestName = 60;
constexpr std::size_t mostNames = 20;

/// The entries that are the first of their name and have matched so many views as the condition wants.
template <typename Condition, typename IsFirst>
std::vector<std::size_t> entriesThat(const std::vector<std::size_t>& counts, Condition condition,
                                     IsFirst isFirst) {
    std::vector<std::size_t> entries;
    for (std::size_t entry = 0; entry < counts.size(); ++entry) {
        if (condition(counts[entry]) && isFirst(entry)) entries.push_back(entry);
    }
    return entries;
}

/// The text as it may stand in the log: short, and without what could forge a line.
std::string printable(std::string_view text) {
    std::string clean;
    while (!text.empty() && clean.size() < longestName) {
        const std::size_t control = controlCharacterSize(text);
        clean += control == 0 ? text[0] : '?';
        text.remove_prefix(std::max<std::size_t>(control, 1));
    }
    return text.empty() ? clean : clean + "…";
}

/// A list of things, up to a bounded number.
class Enumeration {
 public:
    void add(const std::string& thing) {
        if (++mCount > mostNames) return;
        if (mCount > 1) mText += ", ";
        mText += thing;
    }
    void addCount(const char* what, std::size_t count) {
        if (count > 0) add(std::string(what) + ": " + std::to_string(count));
    }
    [[nodiscard]] std::string text() const {
        return mCount > mostNames ? mText + ", and " + std::to_string(mCount - mostNames) + " more" : mText;
    }

 private:
    std::string mText;
    std::size_t mCount = 0;
};

/// The class entries of which no view was found.
std::vector<std::string> unmatchedClasses(const PrivacyJudge& judge) {
    const auto& names = judge.rules().lists().blacklistClasses;
    std::vector<std::string> unmatched;
    for (std::size_t entry = 0; entry < names.size(); ++entry) {
        const auto first = judge.rules().classEntry(names[entry]);
        if (judge.classCounts()[first.value_or(entry)] == 0) unmatched.push_back(names[entry]);
    }
    return unmatched;
}

/// The pixels [first, last) to be covered for an area between these two positions, in pixels. An edge that
/// falls between pixels covers one more: renderers round to either side of it.
std::pair<std::size_t, std::size_t> coveredPixels(double start, double end, std::size_t limit) {
    const auto bound = static_cast<double>(limit);
    // Positions that are no number mask the whole span: rather too much than too little.
    const double first = std::isnan(start) ? 0 : std::ceil(start) - (start == std::ceil(start) ? 0 : 2);
    const double last = std::isnan(end) ? bound : std::floor(end) + (end == std::floor(end) ? 0 : 2);
    return {static_cast<std::size_t>(std::clamp(first, 0.0, bound)),
            static_cast<std::size_t>(std::clamp(last, 0.0, bound))};
}

}  // namespace

void PrivacyUtils::logBadEntries(const PrivacyJudge& judge) {
    for (std::size_t count = 0; count < judge.rules().badTags(); ++count)
        Log::warning("Cannot convert tag to integer");
    const auto unmatched = unmatchedClasses(judge);
    if (unmatched.empty()) return;
    const auto exist = platform::current().application().classesExist(unmatched);
    const auto unknown = std::count(exist.begin(), exist.end(), false);
    for (std::ptrdiff_t count = 0; count < unknown; ++count)
        Log::warning("Cannot convert class name to class");
}

std::string PrivacyUtils::summary(const PrivacyJudge& judge) {
    const PrivacyRules& rules = judge.rules();
    const auto& tags = rules.lists().blacklist;
    const auto& classes = rules.lists().blacklistClasses;
    const auto isFirstClass = [&](std::size_t entry) { return rules.classEntry(classes[entry]) == entry; };
    const auto isFirstTag = [&](std::size_t entry) { return rules.isFirstOfTag(entry); };
    const auto isMatched = [](std::size_t count) { return count > 0; };
    const auto isUnmatched = [](std::size_t count) { return count == 0; };
    Enumeration found;
    for (const std::size_t entry : entriesThat(judge.tagCounts(), isMatched, isFirstTag))
        found.addCount(("tag " + printable(tags[entry])).c_str(), judge.tagCounts()[entry]);
    for (const std::size_t entry : entriesThat(judge.classCounts(), isMatched, isFirstClass))
        found.addCount(("class " + printable(classes[entry])).c_str(), judge.classCounts()[entry]);
    found.addCount("marks", judge.marked());
    found.addCount("policy", judge.byPolicy());
    found.addCount("hidden inputs", judge.hiddenInputs());
    Enumeration missing;
    for (const std::size_t entry : entriesThat(judge.tagCounts(), isUnmatched, isFirstTag))
        missing.add("tag " + printable(tags[entry]));
    for (const std::size_t entry : entriesThat(judge.classCounts(), isUnmatched, isFirstClass))
        missing.add("class " + printable(classes[entry]));
    std::string text = "Covered views: " + std::to_string(judge.covered());
    if (!found.text().empty()) text += " (" + found.text() + ")";
    if (!missing.text().empty()) text += "; matched nothing: " + missing.text();
    return text;
}

void PrivacyUtils::drawBlackRectangle(const Rect& area, double scale, PixelBuffer& picture) {
    // In pixels: the origin divided by the scale and multiplied by it again, the size only multiplied.
    const auto [left, right] = coveredPixels(area.x, area.x + area.width * scale, picture.width());
    const auto [top, bottom] = coveredPixels(area.y, area.y + area.height * scale, picture.height());
    if (left >= right) return;
    for (std::size_t y = top; y < bottom; ++y) {
        std::fill(picture.row(y) + left, picture.row(y) + right, opaqueBlack);
    }
}

}  // namespace merovanta
