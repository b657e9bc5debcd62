#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "General/Panoptra/Privacy/PrivacyRules.h"
#include "Platform/MaskJudge.h"

namespace merovanta {

/// Judges the views of one picture by the rules, and counts what it finds.
///
/// A view that the lists name is covered with all that is in it, as is a text input that hides what is typed.
/// The host's own mark holds for all that is in the view until the next mark. The host's settings cover every
/// view with such content that is not marked as an exception.
class PrivacyJudge final : public MaskJudge {
 public:
    explicit PrivacyJudge(std::shared_ptr<const PrivacyRules> rules);

    void begin(bool anyMarked) override;
    [[nodiscard]] std::optional<std::size_t> classEntry(std::string_view className) const override;
    [[nodiscard]] MaskVerdict enter(const ViewTraits& view) override;
    void leave() override;

    [[nodiscard]] const PrivacyRules& rules() const { return *mRules; }

    /// How many views were found, by the entries that name them; of equal entries the first counts for all.
    [[nodiscard]] const std::vector<std::size_t>& tagCounts() const { return mTagCounts; }
    [[nodiscard]] const std::vector<std::size_t>& classCounts() const { return mClassCounts; }
    [[nodiscard]] std::size_t marked() const { return mMarked; }
    [[nodiscard]] std::size_t byPolicy() const { return mByPolicy; }
    [[nodiscard]] std::size_t hiddenInputs() const { return mHiddenInputs; }
    /// How many views are covered in their own right.
    [[nodiscard]] std::size_t covered() const { return mCovered; }

 private:
    /// What holds in a view for its subviews.
    struct Scope {
        /// Why all that is in it is covered, whatever the marks in it say.
        std::optional<MaskReason> reason;
        std::optional<bool> mark;
        bool isOwn = false;
    };

    /// The reason why the lists name the view, or its content does, and whether its frame is painted.
    std::optional<MaskReason> named(const ViewTraits& view, bool& paintsFixed);
    [[nodiscard]] bool isCoveredByPolicy(const ViewTraits& view) const;

    std::shared_ptr<const PrivacyRules> mRules;
    std::vector<Scope> mScopes;
    bool mAnyMarked = false;
    std::vector<std::size_t> mTagCounts;
    std::vector<std::size_t> mClassCounts;
    std::size_t mMarked = 0;
    std::size_t mByPolicy = 0;
    std::size_t mHiddenInputs = 0;
    std::size_t mCovered = 0;
};

}  // namespace merovanta
