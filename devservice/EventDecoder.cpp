#include "EventDecoder.h"

#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/wire_format_lite.h>

#include <cstdint>
#include <limits>

namespace merovanta::devservice {
namespace {

using com::merovanta::panoptra::ProtoMessage;
using com::merovanta::panoptra::ProtoMessageList;
using google::protobuf::internal::WireFormatLite;
using google::protobuf::io::CodedInputStream;

constexpr int kMaxFields = 50'000;

enum class Level { List, Message, Event };

bool isNested(Level level, int field) {
    if (level == Level::List) return field == ProtoMessageList::kMessagesFieldNumber;
    return level == Level::Message &&
           (field == ProtoMessage::kScreenshotEventFieldNumber ||
            field == ProtoMessage::kClickEventFieldNumber || field == ProtoMessage::kUserTagFieldNumber);
}

bool isGroup(std::uint32_t tag) {
    const auto type = WireFormatLite::GetTagWireType(tag);
    return type == WireFormatLite::WIRETYPE_START_GROUP || type == WireFormatLite::WIRETYPE_END_GROUP;
}

// Counts the fields down to the events' own; false when malformed or more than `budget`.
bool withinBudget(CodedInputStream& input, Level level, int& budget) {
    while (const std::uint32_t tag = input.ReadTag()) {
        if (--budget < 0 || isGroup(tag)) return false;
        const bool delimited =
            WireFormatLite::GetTagWireType(tag) == WireFormatLite::WIRETYPE_LENGTH_DELIMITED;
        if (!delimited || !isNested(level, WireFormatLite::GetTagFieldNumber(tag))) {
            if (!WireFormatLite::SkipField(&input, tag)) return false;
            continue;
        }
        int length = 0;
        if (!input.ReadVarintSizeAsInt(&length)) return false;
        const CodedInputStream::Limit limit = input.PushLimit(length);
        if (!withinBudget(input, level == Level::List ? Level::Message : Level::Event, budget)) return false;
        if (input.BytesUntilLimit() != 0) return false;
        input.PopLimit(limit);
    }
    return input.ConsumedEntireMessage();
}

}  // namespace

std::optional<ProtoMessageList> decodeEvents(std::string_view body) {
    if (body.size() > std::numeric_limits<int>::max()) return std::nullopt;
    const int size = static_cast<int>(body.size());
    CodedInputStream input(reinterpret_cast<const std::uint8_t*>(body.data()), size);
    int budget = kMaxFields;
    ProtoMessageList list;
    if (!withinBudget(input, Level::List, budget) || !list.ParseFromArray(body.data(), size))
        return std::nullopt;
    return list;
}

}  // namespace merovanta::devservice
