#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "General/Panoptra/Network/Message/WireMessages.h"
#include "InMemory/HttpSessionInMemory.h"

namespace merovanta::testing {

/// The other side of the in-memory network: answers as the service does and decodes what it was sent.
class FakeService {
 public:
    explicit FakeService(inmemory::HttpSessionInMemory& network);

    /// What the initialisation answers; change it before the start.
    nlohmann::json initReply = {
        {"s", true},
        {"h", false},
        {"ip", "192.0.2.1"},
        {"x", false},
        {"ios", {{"blacklist", nlohmann::json::array()}, {"blacklistClasses", nlohmann::json::array()}}}};

    /// The agent's messages for the next POST of the stream, then for the one after it, …
    std::vector<nlohmann::json> agentMessages;

    /// Answers in place of the service, unless it gives nothing.
    std::function<std::optional<HttpReply>(const HttpRequest&)> override;

    [[nodiscard]] std::vector<HttpRequest> requests(const std::string& method, const std::string& path) const;

    /// All messages of the stream, in order.
    [[nodiscard]] std::vector<ProtoMessage> messages() const;
    [[nodiscard]] std::vector<std::string> screenshots() const;
    [[nodiscard]] std::vector<std::string> pageChanges() const;
    [[nodiscard]] std::vector<std::string> tags() const;
    [[nodiscard]] std::vector<ProtoClickEvent> taps() const;

    /// The path of a URL, without its leading slash.
    [[nodiscard]] static std::string path(const HttpRequest& request);

    /// The value of a header, or "(none)".
    [[nodiscard]] static std::string header(const HttpRequest& request, const std::string& name);

 private:
    HttpReply answer(const HttpRequest& request);
    std::string streamReply();

    inmemory::HttpSessionInMemory& mNetwork;
};

}  // namespace merovanta::testing
