#include "General/Panoptra/Privacy/PrivacyPreview.h"

#include <Merovanta/Merovanta.h>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Privacy/PrivacyJudge.h"

namespace merovanta {

namespace {

constexpr std::size_t longestName = 40;

std::string nameOf(const MaskReason& reason, const IOSConfig& lists) {
    const auto entry = [&reason](const std::vector<std::string>& list) {
        return reason.entry < list.size() ? list[reason.entry].substr(0, longestName) : std::string();
    };
    switch (reason.kind) {
        case MaskReason::Kind::tag:
            return "tag " + entry(lists.blacklist);
        case MaskReason::Kind::className:
            return "class " + entry(lists.blacklistClasses);
        case MaskReason::Kind::mark:
            return "mark";
        case MaskReason::Kind::policy:
            return "policy";
        case MaskReason::Kind::hiddenInput:
            return "hidden input";
    }
    return {};
}

}  // namespace

MaskPreviewSource PrivacyPreview::source() {
    return [rules = std::shared_ptr<const PrivacyRules>()]() mutable {
        const auto wrapper = Injection::resolve<ApplicationConfigWrapper>();
        const auto& session = wrapper->config.panoptraConfig;
        const auto lists = session ? session->iosConfig : std::nullopt;
        const PrivacySettings& settings = Merovanta::privacy().settings();
        if (!rules || !rules->areOf(lists, settings)) rules = std::make_shared<PrivacyRules>(lists, settings);
        return MaskPreview{std::make_shared<PrivacyJudge>(rules),
                           [rules](const MaskReason& reason) { return nameOf(reason, rules->lists()); }};
    };
}

}  // namespace merovanta
