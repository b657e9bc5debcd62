#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "Platform/MaskArea.h"

namespace merovanta {

/// What a view itself, without its subviews, has to show.
enum class ViewContent {
    /// Nothing, or one colour.
    plain,
    text,
    textInput,
    /// A text input that hides what is typed.
    hiddenInput,
    picture,
    /// A picture that was taken of some view of this application.
    copy,
    /// A page of texts, inputs and pictures, such as a web view.
    page,
    other,
};

/// What the rules of privacy need to know of a view.
struct ViewTraits {
    /// As View::tag().
    long tag = 0;
    /// The host's own mark on this very view; absent if it has none.
    std::optional<bool> masked;
    ViewContent content = ViewContent::other;
    /// What MaskJudge::classEntry() has said of all classes that the view is of; null for nothing.
    const std::vector<std::size_t>* classEntries = nullptr;
    /// Whether the view is one of the library's own, in which nothing is covered for its content.
    bool isOwn = false;
    /// Whether the walk has entered the view before, so that it is not to be counted twice.
    bool isAgain = false;
};

struct MaskVerdict {
    /// Whether the view's frame is painted as an area of kind fixed.
    bool paintsFixed = false;
    /// Why what the view paints is covered; absent if it is not.
    std::optional<MaskReason> reason;
    /// Whether the view is named itself, so that its bounds are covered even where it paints nothing.
    bool isNamed = false;
    /// The kind of area that covers it: cover or backdrop; or exempt, if it is an exception in something
    /// covered.
    MaskArea::Kind kind = MaskArea::Kind::cover;
};

/// Says which views are private, in one walk over a view tree.
///
/// A platform walks depth first, back to front, and calls enter() for each view and leave() when it has done
/// with the view's subviews. It may walk the tree's remote parts, shown only by an effect, afterwards: then
/// it enters their superviews first, from the root. Thread: that of the walk, while the main thread stands
/// still.
class MaskJudge {
 public:
    virtual ~MaskJudge() = default;

    /// Begins a walk; anyMarked tells whether the host has marked any view at all as private.
    virtual void begin(bool anyMarked) = 0;

    /// The entry of the class list that is this name; absent if there is none. Platforms ask once a class.
    [[nodiscard]] virtual std::optional<std::size_t> classEntry(std::string_view className) const = 0;

    [[nodiscard]] virtual MaskVerdict enter(const ViewTraits& view) = 0;
    virtual void leave() = 0;
};

}  // namespace merovanta
