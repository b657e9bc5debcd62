#include "Recorder.h"

#include <limits>
#include <nlohmann/json.hpp>

#include "JpegHeader.h"
#include "Text.h"
#include "UserTagJson.h"
#include "Visitor.h"

namespace merovanta::devservice {

using com::merovanta::panoptra::ProtoMessage;
using com::merovanta::panoptra::ProtoMessageList;
using nlohmann::json;

std::optional<std::string> Recorder::open(const std::filesystem::path& directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) return "cannot create " + directory.string() + ": " + error.message();
    lines_.open(directory / "events.jsonl", std::ios::trunc | std::ios::binary);
    if (!lines_) return "cannot write to " + (directory / "events.jsonl").string();
    directory_ = directory;
    return std::nullopt;
}

void Recorder::record(const Visitor& visitor, std::string_view kind, std::string_view body, Moment now) {
    if (lines_.is_open()) writeLine(visitor, {{"kind", kind}, {"body", body}}, now);
}

void Recorder::record(const Visitor& visitor, const ProtoMessageList& events, Moment now) {
    if (!lines_.is_open()) return;
    for (const ProtoMessage& event : events.messages())
        writeEvent(visitor, event, now);
}

void Recorder::writeEvent(const Visitor& visitor, const ProtoMessage& event, Moment now) {
    bool ping = true;
    const auto write = [&](const char* kind, json line) {
        line["kind"] = kind;
        if (event.has_time()) line["time"] = event.time();
        writeLine(visitor, std::move(line), now);
        ping = false;
    };
    if (event.has_pagechange()) write("page", {{"page", event.pagechange()}});
    for (const auto& picture : event.screenshotevent()) {
        write("screenshot", writePicture(visitor, picture.image()));
    }
    for (const auto& tap : event.clickevent())
        write("tap", {{"x", tap.x()}, {"y", tap.y()}});
    if (event.has_tag()) write("tag", {{"tag", event.tag()}});
    for (const auto& tag : event.usertag()) {
        write("userTag", {{"userTag", userTagJson(tag, std::string::npos, std::numeric_limits<int>::max())}});
    }
    if (ping) write("ping", json::object());
}

json Recorder::writePicture(const Visitor& visitor, const std::string& image) {
    const auto size = jpegSize(image);
    std::string number = std::to_string(++pictures_);
    number.insert(0, number.size() < 6 ? 6 - number.size() : 0, '0');
    const std::string file = std::to_string(visitor.number()) + "-" + number + (size ? ".jpg" : ".bin");
    std::ofstream(directory_ / file, std::ios::binary) << image;
    json line = {{"file", file}, {"bytes", image.size()}};
    if (size) line.update({{"width", size->width}, {"height", size->height}});
    return line;
}

void Recorder::writeLine(const Visitor& visitor, json line, Moment now) {
    line["visitor"] = std::to_string(visitor.number());
    line["sId"] = visitor.sessionId();
    line["at"] = now.time_since_epoch().count();
    lines_ << toText(line) << std::endl;
}

}  // namespace merovanta::devservice
