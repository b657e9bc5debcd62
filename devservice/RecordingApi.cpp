#include "RecordingApi.h"

#include <charconv>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "JsonBody.h"
#include "Text.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr std::size_t kMaxAuthorBytes = 64;

// A number as the service writes it, such as stands in an address; 0 for anything else.
std::int64_t idOf(std::string_view text) {
    std::int64_t id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    return error == std::errc() && end == text.data() + text.size() && id > 0 ? id : 0;
}

Response unknown() {
    return Response::error(404, "no such recording");
}

}  // namespace

void RecordingApi::addRoutes(GuardedRoutes& routes) {
    routes.add("GET", "/console/api/recordings", [this](const Request& request) { return list(request); });
    routes.add("PUT", "/console/api/visitors/*/recording",
               [this](const Request& request) { return switchRecording(request); });
    add(routes, "GET", "", &RecordingApi::show);
    add(routes, "DELETE", "", &RecordingApi::remove);
    add(routes, "GET", "/contents", &RecordingApi::contents);
    add(routes, "GET", "/pictures/*", &RecordingApi::picture);
    add(routes, "PUT", "/labels", &RecordingApi::setLabels);
    add(routes, "POST", "/notes", &RecordingApi::addNote);
    add(routes, "DELETE", "/notes/*", &RecordingApi::removeNote);
}

// Only for a recording that there is.
void RecordingApi::add(GuardedRoutes& routes, const char* method, const std::string& rest, Handler handler) {
    routes.add(method, "/console/api/recordings/*" + rest, [this, handler](const Request& request) {
        const std::int64_t recording = idOf(request.wildcards.front());
        if (!store_.isOpen() || recording == 0) return unknown();
        const bool known = !catalog_.find(recording).is_null();
        return settled(known ? (this->*handler)(recording, request) : unknown(), request);
    });
}

Response RecordingApi::settled(Response response, const Request& request) {
    if (request.method != "GET" && response.status < 300) {
        if (!recorder_.settle(currentMoment())) return Response::error(503, *recorder_.problem());
    } else if (const auto problem = store_.index().takeProblem()) {
        return Response::error(503, *problem);
    }
    return response;
}

Response RecordingApi::list(const Request& request) {
    json reply = {{"total", 0}, {"recordings", json::array()}};
    json storage = {{"enabled", recorder_.isEnabled()}, {"problem", nullptr}};
    if (recorder_.problem()) storage["problem"] = *recorder_.problem();
    if (store_.isOpen()) {
        reply = catalog_.list(RecordingQuery::parse(request.target));
        storage.update({{"bytes", store_.bytes()},
                        {"maxBytes", store_.limits().bytes},
                        {"maxDays", store_.limits().age.count()}});
    }
    reply["storage"] = std::move(storage);
    return settled(Response::json(reply), request);
}

Response RecordingApi::show(std::int64_t recording, const Request&) {
    return Response::json(catalog_.find(recording));
}

Response RecordingApi::contents(std::int64_t recording, const Request&) {
    return {200, "application/json", catalog_.contents(recording), {}};
}

Response RecordingApi::picture(std::int64_t recording, const Request& request) {
    auto picture = catalog_.picture(recording, idOf(request.wildcards.back()));
    if (!picture) return Response::error(404, "no such picture");
    return {200, "image/jpeg", std::move(*picture), {{"Cross-Origin-Resource-Policy", "same-origin"}}};
}

Response RecordingApi::setLabels(std::int64_t recording, const Request& request) {
    const json body = parseObject(request.body);
    const auto given = body.is_discarded() ? json() : body.value("labels", json());
    if (!given.is_array() || given.size() > RecordingCatalog::kMaxLabels)
        return Response::error(400, "\"labels\" must be a list of at most 20 texts");
    std::vector<std::string> labels;
    for (const json& label : given) {
        if (!label.is_string()) return Response::error(400, "a tag must be a text");
        labels.push_back(boundedText(label.get<std::string>(), RecordingCatalog::kMaxLabelBytes));
    }
    catalog_.setLabels(recording, labels);
    return Response::json({{"labels", labels}});
}

Response RecordingApi::addNote(std::int64_t recording, const Request& request) {
    const json body = parseObject(request.body);
    const std::string text = body.is_discarded() ? std::string() : textMember(body, "text");
    if (text.find_first_not_of(" \t\r\n") == std::string::npos ||
        text.size() > RecordingCatalog::kMaxNoteBytes)
        return Response::error(400, "a note has between 1 and 2000 bytes of text");
    const json at = body.value("at", json());
    const auto moment = at.is_number_unsigned() ? std::optional(at.get<std::int64_t>()) : std::nullopt;
    std::string author = boundedText(textMember(body, "author"), kMaxAuthorBytes);
    if (author.empty()) author = agents_.identityOf(request).name;
    if (!catalog_.addNote(recording, author, boundedText(text, text.size()), moment, currentMoment()))
        return Response::error(409, "the recording has as many notes as it may");
    return Response::json(catalog_.find(recording), 201);
}

Response RecordingApi::removeNote(std::int64_t recording, const Request& request) {
    if (!catalog_.removeNote(recording, idOf(request.wildcards.back())))
        return Response::error(404, "no such note");
    return Response::json(catalog_.find(recording));
}

Response RecordingApi::remove(std::int64_t recording, const Request&) {
    recorder_.letGo(recording);
    store_.remove(recording);
    return Response::json({{"deleted", true}});
}

Response RecordingApi::switchRecording(const Request& request) {
    Visitor* const visitor = visitors_.find(request.wildcards.front());
    if (visitor == nullptr) return Response::error(404, "no such visitor");
    if (!recorder_.isEnabled()) return Response::error(409, "the service records nothing");
    const json body = parseObject(request.body);
    const json on = body.is_discarded() ? json() : body.value("on", json());
    if (!on.is_boolean()) return Response::error(400, "\"on\" must be true or false");
    recorder_.switchOff(*visitor, !on.get<bool>(), agents_.identityOf(request), currentMoment());
    return settled(Response::json(visitor->summary(currentMoment())["recording"]), request);
}

}  // namespace merovanta::devservice
