#pragma once

#include <utility>
#include <variant>

#include "General/StringError.h"

namespace merovanta {

/// Either a value or the error that prevented it.
template <typename T>
class Result {
 public:
    Result(T value) : mContent(std::in_place_index<0>, std::move(value)) {}
    Result(StringError error) : mContent(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool ok() const { return mContent.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// Only when ok().
    [[nodiscard]] T& value() { return std::get<0>(mContent); }
    [[nodiscard]] const T& value() const { return std::get<0>(mContent); }
    /// Only when not ok().
    [[nodiscard]] const StringError& error() const { return std::get<1>(mContent); }

 private:
    std::variant<T, StringError> mContent;
};

}  // namespace merovanta
