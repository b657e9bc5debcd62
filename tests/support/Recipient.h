#pragma once

#include <functional>
#include <optional>
#include <string>

#include "General/Panoptra/Network/Message/MessageSender.h"

namespace merovanta::test {

/// The service's end of a monitor's messages, without a transport between.
class Recipient final : public MessageSender {
 public:
    Recipient() : MessageSender(nullptr, nullptr, nullptr) {}

    void connect(const std::string& /*url*/, std::function<void()> /*successCallback*/,
                 std::function<void()> /*errorCallback*/) override {}
    void reconnect() override {}
    [[nodiscard]] bool reconnectsByItself() const override { return false; }
    [[nodiscard]] bool reportsConnection() const override { return false; }
    [[nodiscard]] const char* typeName() const override { return "Recipient"; }
    void send(ProtoMessage message, const Callback& callback) override {
        for (const auto& event : message.screenshotevent())
            jpeg = event.image();
        clicks += message.clickevent_size();
        if (callback) callback(std::nullopt);
    }

    /// The last picture.
    std::optional<std::string> jpeg;
    int clicks = 0;
};

}  // namespace merovanta::test
