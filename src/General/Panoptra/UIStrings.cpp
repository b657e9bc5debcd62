#include "General/Panoptra/UIStrings.h"

#include <algorithm>
#include <utility>

#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

/// What a system names that was given no language.
bool isLanguage(const std::string& code) {
    return !code.empty() && code != "C" && code != "POSIX";
}

}  // namespace

UIStrings::UIStrings(std::shared_ptr<MerovantaAPI> api) : merovantaAPI(std::move(api)) {}

void UIStrings::load(const std::string& tenantId, Completion completion) {
    if (strings) {
        completion(std::nullopt);
        return;
    }
    const auto languages = platform::current().application().preferredLanguages();
    const auto language = std::find_if(languages.begin(), languages.end(), isLanguage);
    merovantaAPI->getTranslations(
        tenantId, language == languages.end() ? defaultLanguageCode : *language,
        [weak = weak_from_this(),
         completion = std::move(completion)](MerovantaAPI::TranslationsResult result) {
            ViewUtils::runOnMainQueue([weak, completion, result = std::move(result)] {
                const auto self = weak.lock();
                if (!self) return;
                if (result) self->strings = result.value();
                completion(result ? std::nullopt : std::optional(result.error()));
            });
        });
}

std::optional<std::string> UIStrings::text(const std::string& key) const {
    if (!strings) return std::nullopt;
    const auto found = strings->find(key);
    return found == strings->end() ? std::nullopt : std::optional(found->second);
}

}  // namespace merovanta
