#include "Fault.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace merovanta::devservice {
namespace {

constexpr std::size_t kMaxCount = 1'000'000;

struct KindTraits {
    Fault::Kind kind;
    std::string_view name;
    std::size_t least, usual, most;
};

constexpr std::array<KindTraits, 7> kKinds{{
    {Fault::Kind::Delay, "delay", 1, 1000, 600'000},
    {Fault::Kind::Drop, "drop", 0, 0, 0},
    {Fault::Kind::Truncate, "truncate", 0, 0, 0},
    {Fault::Kind::Status, "status", 200, 503, 599},
    {Fault::Kind::Empty, "empty", 0, 0, 0},
    {Fault::Kind::Garbage, "garbage", 0, 0, 0},
    {Fault::Kind::Large, "large", 1, 17U << 20U, 1U << 30U},
}};

}  // namespace

std::optional<Fault> Fault::make(std::string_view kind, std::optional<std::size_t> value,
                                 std::optional<std::size_t> count) {
    const auto* const traits =
        std::find_if(kKinds.begin(), kKinds.end(), [&](const KindTraits& item) { return item.name == kind; });
    if (traits == kKinds.end() || (count && (*count < 1 || *count > kMaxCount))) return std::nullopt;
    const std::size_t checked = value.value_or(traits->usual);
    if (checked < traits->least || checked > traits->most) return std::nullopt;
    return Fault{traits->kind, checked, count};
}

Fault::Distortion Fault::distort(Response& response) const {
    // Only the body is at fault, also where the service has nothing to reply.
    response.status = 200;
    std::string& body = response.body;
    switch (kind) {
        case Kind::Empty:
            body.clear();
            return {};
        case Kind::Garbage:
            body = "\xFF\xFE{\"garbage\":[\x01\x80";
            return {};
        case Kind::Truncate: {
            const std::size_t missing = std::max<std::size_t>(1, body.size() - body.size() / 2);
            body.resize(body.size() / 2);
            return {.missing = missing};
        }
        case Kind::Large:
            return {.padding = value - std::min(value, body.size())};
        case Kind::Delay:
        case Kind::Drop:
        case Kind::Status:
            break;
    }
    return {};
}

nlohmann::json Fault::toJson() const {
    const KindTraits& traits = *std::find_if(kKinds.begin(), kKinds.end(),
                                             [&](const KindTraits& item) { return item.kind == kind; });
    return {{"kind", traits.name},
            {"value", traits.most == 0 ? nlohmann::json() : nlohmann::json(value)},
            {"count", count ? nlohmann::json(*count) : nlohmann::json()}};
}

}  // namespace merovanta::devservice
