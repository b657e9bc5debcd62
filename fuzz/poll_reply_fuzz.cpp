// The service's reply to a poll of the channels.
#include <cstdint>

#include "General/Panoptra/Communication/PollReply.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto messages = merovanta::parsePollReply({reinterpret_cast<const char*>(data), size});
    for (const auto& message : messages.value_or(std::vector<merovanta::CommunicationMessage>())) {
        const auto again = merovanta::CommunicationMessage::decode(message.toJson());
        if (!again || again.value().channel != message.channel) __builtin_trap();
    }
    return 0;
}
