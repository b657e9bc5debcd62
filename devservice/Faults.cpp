#include "Faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <nlohmann/json.hpp>
#include <utility>

#include "Text.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr std::string_view kAny = "*";

struct Endpoint {
    std::string_view name;
    /// One that ends in "/" stands for all below it.
    std::string_view path;
    /// Any when empty.
    std::string_view method;
};

constexpr std::array<Endpoint, 15> kEndpoints{{
    {"im/c", "/api/in/im/c", ""},
    {"ix/m:get", "/api/ix/m", "GET"},
    {"ix/m:post", "/api/ix/m", "POST"},
    {"ix/m:delete", "/api/ix/m", "DELETE"},
    {"imws", "/api/in/imws", ""},
    {"io/l", "/api/in/io/l", ""},
    {"co", "/api/in/co", ""},
    {"i18n", "/api/in/i18n", ""},
    {"ic/h", "/api/ic/h", ""},
    {"tag", "/rest/v1/customerstatus/tag/byVisitor/", ""},
    {"wc/c", "/api/in/wc/c/", ""},
    {"chat", "/cdn/chat/", ""},
    {"wc/ws", "/api/in/wc/ws", ""},
    {"wc/d", "/api/in/wc/d/", ""},
    {kAny, "", ""},
}};

bool isEndpoint(std::string_view name) {
    return std::any_of(kEndpoints.begin(), kEndpoints.end(),
                       [&](const Endpoint& endpoint) { return endpoint.name == name; });
}

bool isAt(const std::string& path, std::string_view endpoint) {
    return endpoint.ends_with('/') ? path.starts_with(endpoint) : path == endpoint;
}

std::string_view endpointOf(const Request& request) {
    const auto* const found =
        std::find_if(kEndpoints.begin(), kEndpoints.end(), [&](const Endpoint& endpoint) {
            return isAt(request.target.path, endpoint.path) &&
                   (endpoint.method.empty() || endpoint.method == request.method);
        });
    return found == kEndpoints.end() ? kAny : found->name;
}

bool isConsole(const std::string& path) {
    return path == "/" || path.starts_with("/console/");
}

// Cuts what follows the mark off the text; false when that is no number.
bool cutNumber(std::string_view& text, char mark, std::optional<std::size_t>& number) {
    const std::size_t at = text.find(mark);
    if (at == std::string_view::npos) return true;
    const std::string_view digits = text.substr(at + 1);
    text = text.substr(0, at);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number.emplace());
    return error == std::errc() && end == digits.data() + digits.size();
}

// An optional number of a JSON object; false when it is something else.
bool readNumber(const json& object, const char* key, std::optional<std::size_t>& number) {
    const auto found = object.find(key);
    if (found == object.end() || found->is_null()) return true;
    if (!found->is_number_unsigned()) return false;
    number = found->get<std::size_t>();
    return true;
}

std::optional<Fault> read(const json& description) {
    if (!description.is_object()) return std::nullopt;
    std::optional<std::size_t> value, count;
    if (!readNumber(description, "value", value) || !readNumber(description, "count", count))
        return std::nullopt;
    const auto kind = description.find("kind");
    if (kind == description.end() || !kind->is_string()) return std::nullopt;
    return Fault::make(kind->get_ref<const std::string&>(), value, count);
}

}  // namespace

bool Faults::set(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || !isEndpoint(text.substr(0, equals))) return false;
    std::string_view kind = text.substr(equals + 1);
    std::optional<std::size_t> value, count;
    if (!cutNumber(kind, ',', count) || !cutNumber(kind, ':', value)) return false;
    const auto fault = Fault::make(kind, value, count);
    if (fault) faults_.insert_or_assign(std::string(text.substr(0, equals)), *fault);
    return fault.has_value();
}

std::optional<std::string> Faults::apply(const json& changes) {
    if (!changes.is_object()) return "the faults must be a JSON object";
    auto next = faults_;
    for (const auto& [endpoint, description] : changes.items()) {
        const auto fault = read(description);
        if (!isEndpoint(endpoint) || (!fault && !description.is_null())) {
            return "unknown endpoint or no such fault: " + singleLine(boundedText(endpoint, 64));
        }
        next.erase(endpoint);
        if (fault) next.emplace(endpoint, *fault);
    }
    faults_ = std::move(next);
    changed();
    return std::nullopt;
}

void Faults::clear() {
    faults_.clear();
    changed();
}

std::optional<Fault> Faults::take(const Request& request) {
    if (faults_.empty() || isConsole(request.target.path)) return std::nullopt;
    auto found = faults_.find(endpointOf(request));
    if (found == faults_.end()) found = faults_.find(kAny);
    if (found == faults_.end()) return std::nullopt;
    Fault fault = found->second;
    if (auto& left = found->second.count) {
        if (--*left == 0) faults_.erase(found);
        changed();
    }
    return fault;
}

json Faults::toJson() const {
    json result = json::object();
    for (const Endpoint& endpoint : kEndpoints) {
        const auto found = faults_.find(endpoint.name);
        result[std::string(endpoint.name)] = found == faults_.end() ? json() : found->second.toJson();
    }
    return result;
}

void Faults::changed() const {
    if (observer_) observer_();
}

}  // namespace merovanta::devservice
