#include "General/Panoptra/Privacy/PrivacyJudge.h"

#include <utility>

namespace merovanta {

PrivacyJudge::PrivacyJudge(std::shared_ptr<const PrivacyRules> rules) : mRules(std::move(rules)) {}

void PrivacyJudge::begin(bool anyMarked) {
    mScopes.clear();
    mAnyMarked = anyMarked;
    mTagCounts.assign(mRules->lists().blacklist.size(), 0);
    mClassCounts.assign(mRules->lists().blacklistClasses.size(), 0);
    mMarked = mByPolicy = mHiddenInputs = mCovered = 0;
}

std::optional<std::size_t> PrivacyJudge::classEntry(std::string_view className) const {
    return mRules->classEntry(className);
}

MaskVerdict PrivacyJudge::enter(const ViewTraits& view) {
    const Scope outer = mScopes.empty() ? Scope() : mScopes.back();
    Scope scope = outer;
    MaskVerdict verdict;
    const auto reason = named(view, verdict.paintsFixed);
    if (reason) scope.reason = reason;
    if (view.masked) scope.mark = view.masked;
    scope.isOwn |= view.isOwn;
    mScopes.push_back(scope);

    const std::size_t one = view.isAgain ? 0 : 1;
    const bool isMarked = view.masked.value_or(false);
    if (isMarked) mMarked += one;
    if (scope.reason) {
        verdict.reason = scope.reason;
    } else if (scope.mark.value_or(false)) {
        verdict.reason = MaskReason{.kind = MaskReason::Kind::mark};
        // Named once more in something covered: not just a ground for what is in front.
        const bool isGround = view.content == ViewContent::plain && !(isMarked && outer.mark.value_or(false));
        if (isGround) verdict.kind = MaskArea::Kind::backdrop;
    } else if (isCoveredByPolicy(view)) {
        verdict.reason = MaskReason{.kind = MaskReason::Kind::policy};
        mByPolicy += one;
        // What is in an input is a part of it, but what is in a picture is in front of it.
        if (view.content == ViewContent::textInput) mScopes.back().reason = verdict.reason;
    } else if (outer.mark.value_or(false)) {
        verdict.kind = MaskArea::Kind::exempt;
    }
    const bool isPolicy = verdict.reason && verdict.reason->kind == MaskReason::Kind::policy;
    verdict.isNamed = verdict.reason && (reason || isMarked || (isPolicy && !outer.reason));
    if (verdict.isNamed) mCovered += one;
    return verdict;
}

void PrivacyJudge::leave() {
    mScopes.pop_back();
}

std::optional<MaskReason> PrivacyJudge::named(const ViewTraits& view, bool& paintsFixed) {
    const std::size_t one = view.isAgain ? 0 : 1;
    std::optional<MaskReason> reason;
    if (view.content == ViewContent::hiddenInput) {
        reason = {.kind = MaskReason::Kind::hiddenInput};
        mHiddenInputs += one;
    }
    if (view.classEntries != nullptr) {
        for (const std::size_t entry : *view.classEntries) {
            reason = {.kind = MaskReason::Kind::className, .entry = entry};
            mClassCounts[entry] += one;
            // The rule speaks of the subviews of the root view.
            paintsFixed |= !mScopes.empty() && one != 0;
        }
    }
    if (const auto entry = mRules->tagEntry(view.tag)) {
        reason = {.kind = MaskReason::Kind::tag, .entry = *entry};
        // Only the first view with a tag.
        paintsFixed |= mTagCounts[*entry] == 0 && one != 0;
        mTagCounts[*entry] += one;
    }
    paintsFixed &= mRules->settings().paintsFixedRectangles;
    return reason;
}

bool PrivacyJudge::isCoveredByPolicy(const ViewTraits& view) const {
    const Scope& scope = mScopes.back();
    if (scope.mark || scope.isOwn) return false;
    const PrivacySettings& settings = mRules->settings();
    switch (view.content) {
        case ViewContent::text:
            return settings.masksTexts;
        case ViewContent::textInput:
            return settings.masksTexts || settings.masksTextInputs;
        case ViewContent::picture:
            return settings.masksPictures;
        case ViewContent::page:
            return settings.masksTexts || settings.masksTextInputs || settings.masksPictures;
        case ViewContent::copy:
            // Of what view it is a copy is not known.
            return mAnyMarked || mRules->nameAnything();
        case ViewContent::plain:
        case ViewContent::hiddenInput:
        case ViewContent::other:
            return false;
    }
    return true;
}

}  // namespace merovanta
