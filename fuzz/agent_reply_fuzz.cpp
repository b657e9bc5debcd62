// Replies of the polled stream, and the agent's messages in them.
#include <cstdint>

#include "General/Panoptra/Network/Message/Xhr/AgentReply.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Reading needs nobody who follows.
    static const merovanta::BidirectionalMessageParser parser(nullptr);
    const auto reply =
        merovanta::AgentReply::parse(std::string(reinterpret_cast<const char*>(data), size), parser);
    if (reply.messages.size() > merovanta::AgentReply::maximumMessages) __builtin_trap();
    return 0;
}
