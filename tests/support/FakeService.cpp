#include "support/FakeService.h"

namespace merovanta::testing {

using inmemory::HttpSessionInMemory;

FakeService::FakeService(HttpSessionInMemory& network) : mNetwork(network) {
    mNetwork.server = [this](const HttpRequest& request) { return answer(request); };
}

HttpReply FakeService::answer(const HttpRequest& request) {
    if (override) {
        if (auto reply = override(request)) return *reply;
    }
    if (path(request) == "api/in/im/c") return HttpSessionInMemory::reply(200, initReply.dump());
    if (path(request) == "api/in/i18n")
        return HttpSessionInMemory::reply(200, R"({"ui.confirm.accept":"Yes"})");
    if (path(request) == "api/in/co") return HttpSessionInMemory::reply(200, "[]");
    if (path(request).starts_with("rest/v1/customerstatus/tag/")) return HttpSessionInMemory::reply(200);
    if (path(request) == "api/in/io/l" || path(request) == "api/ic/h") return HttpSessionInMemory::reply(200);
    if (path(request) != "api/ix/m") return HttpSessionInMemory::reply(404);
    return HttpSessionInMemory::reply(200, request.method == "POST" ? streamReply() : "");
}

std::string FakeService::streamReply() {
    if (agentMessages.empty()) return "[]";
    const auto message = agentMessages.front();
    agentMessages.erase(agentMessages.begin());
    return nlohmann::json::array({nlohmann::json::array({message}).dump()}).dump();
}

std::vector<HttpRequest> FakeService::requests(const std::string& method, const std::string& wanted) const {
    std::vector<HttpRequest> found;
    for (const auto& request : mNetwork.requests) {
        if (request.method == method && path(request) == wanted) found.push_back(request);
    }
    return found;
}

std::vector<ProtoMessage> FakeService::messages() const {
    std::vector<ProtoMessage> messages;
    for (const auto& request : requests("POST", "api/ix/m")) {
        ProtoMessageList list;
        if (!list.ParseFromString(request.body)) throw std::runtime_error("not a message list");
        messages.insert(messages.end(), list.messages().begin(), list.messages().end());
    }
    return messages;
}

std::vector<std::string> FakeService::screenshots() const {
    std::vector<std::string> pictures;
    for (const auto& message : messages()) {
        for (const auto& event : message.screenshotevent())
            pictures.push_back(event.image());
    }
    return pictures;
}

std::vector<std::string> FakeService::pageChanges() const {
    std::vector<std::string> pages;
    for (const auto& message : messages()) {
        if (message.has_pagechange()) pages.push_back(message.pagechange());
    }
    return pages;
}

std::vector<std::string> FakeService::tags() const {
    std::vector<std::string> tags;
    for (const auto& message : messages()) {
        if (message.has_tag()) tags.push_back(message.tag());
    }
    return tags;
}

std::vector<ProtoClickEvent> FakeService::taps() const {
    std::vector<ProtoClickEvent> taps;
    for (const auto& message : messages())
        taps.insert(taps.end(), message.clickevent().begin(), message.clickevent().end());
    return taps;
}

std::string FakeService::path(const HttpRequest& request) {
    const auto host = request.url.find("://") + 3;
    const auto begin = request.url.find('/', host) + 1;
    return request.url.substr(begin, request.url.find('?') - begin);
}

std::string FakeService::header(const HttpRequest& request, const std::string& name) {
    for (const auto& [key, value] : request.headers) {
        if (key == name) return value;
    }
    return "(none)";
}

}  // namespace merovanta::testing
