#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"

#include <string_view>
#include <utility>

#include "General/Panoptra/Util/Base64.h"

namespace merovanta {

namespace {

const nlohmann::json* find(const nlohmann::json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

std::optional<bool> readBoolean(const nlohmann::json& object, const char* key) {
    const auto* const value = find(object, key);
    return value && value->is_boolean() ? std::optional(value->get<bool>()) : std::nullopt;
}

/// Absent too for numbers that no coordinate can hold.
std::optional<std::int64_t> readInteger(const nlohmann::json& object, const char* key) {
    const auto* const value = find(object, key);
    if (!value || !value->is_number()) return std::nullopt;
    const double number = value->get<double>();
    constexpr double limit = 9007199254740992.0;  // 2^53: above it, a double is no exact integer
    if (!(number > -limit && number < limit)) return std::nullopt;
    return static_cast<std::int64_t>(number);
}

/// Texts that are longer are no drawing of a screen, even of the largest one and hard to pack.
constexpr std::size_t maximumDrawingText = std::size_t{32} * 1024 * 1024;

std::string without(std::string_view text, std::string_view part) {
    std::string rest;
    rest.reserve(text.size());
    for (std::size_t end = text.find(part); end != std::string_view::npos; end = text.find(part)) {
        rest.append(text.substr(0, end));
        text.remove_prefix(end + part.size());
    }
    return rest.append(text);
}

}  // namespace

BidirectionalMessageParser::BidirectionalMessageParser(std::shared_ptr<BidirectionalMessageHandler> handler)
    : bidirectionalMessageHandler(std::move(handler)) {}

BidirectionalMessage BidirectionalMessageParser::read(const nlohmann::json& dictionary) const {
    BidirectionalMessage message;
    readDrawing(dictionary, message);
    readConfiguration(dictionary, message);
    readAction(dictionary, message);
    readClick(dictionary, message);
    return message;
}

void BidirectionalMessageParser::handOver(std::vector<BidirectionalMessage> messages) const {
    bidirectionalMessageHandler->handle(std::move(messages));
}

void BidirectionalMessageParser::discardWaiting() const {
    bidirectionalMessageHandler->discardWaiting();
}

void BidirectionalMessageParser::readDrawing(const nlohmann::json& dictionary,
                                             BidirectionalMessage& message) const {
    const auto* const value = find(dictionary, drawing);
    const auto* const text = value && value->is_object() ? find(*value, drawingUrl) : nullptr;
    if (!text || !text->is_string()) return;
    const auto& url = text->get_ref<const std::string&>();
    if (url.size() <= maximumDrawingText) message.drawing = decodeBase64(without(url, base64Prefix));
}

void BidirectionalMessageParser::readConfiguration(const nlohmann::json& dictionary,
                                                   BidirectionalMessage& message) const {
    const auto* const values = find(dictionary, configuration);
    if (!values || !values->is_object()) return;
    message.start = readBoolean(*values, configurationStart);
    message.bidirectional = readBoolean(*values, configurationBidirectional);
    message.optIn = readBoolean(*values, configurationOptIn);
}

void BidirectionalMessageParser::readAction(const nlohmann::json& dictionary,
                                            BidirectionalMessage& message) const {
    const auto* const value = find(dictionary, action);
    if (value && value->is_string()) message.stop = value->get_ref<const std::string&>() == actionClose;
}

void BidirectionalMessageParser::readClick(const nlohmann::json& dictionary,
                                           BidirectionalMessage& message) const {
    const auto x = readInteger(dictionary, clickX);
    const auto y = readInteger(dictionary, clickY);
    if (x && y) message.click = Click{*x, *y};
}

}  // namespace merovanta
