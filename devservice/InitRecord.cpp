#include "InitRecord.h"

#include <cstdint>
#include <nlohmann/json.hpp>

namespace merovanta::devservice {
namespace {

using nlohmann::json;

class Reader {
 public:
    Reader(const json& object, std::vector<std::string>& problems) : object_(object), problems_(problems) {}

    void read(const char* key, std::string& target) {
        if (const json* value = find(key, json::value_t::string)) target = value->get<std::string>();
    }
    void read(const char* key, bool& target) {
        if (const json* value = find(key, json::value_t::boolean)) target = value->get<bool>();
    }
    void read(const char* key, std::int64_t& target) {
        if (const json* value = find(key, json::value_t::number_integer)) target = value->get<std::int64_t>();
    }
    void read(const char* key, int& target) {
        constexpr std::int64_t maxPoints = 100'000;
        std::int64_t wide = 0;
        read(key, wide);
        if (wide >= 0 && wide <= maxPoints) target = static_cast<int>(wide);
    }

 private:
    const json* find(const char* key, json::value_t type) {
        const auto found = object_.is_object() ? object_.find(key) : object_.end();
        const bool matches =
            found != object_.end() &&
            (type == json::value_t::number_integer ? found->is_number_integer() : found->type() == type);
        if (!matches) problems_.emplace_back(key);
        return matches ? &*found : nullptr;
    }

    const json& object_;
    std::vector<std::string>& problems_;
};

}  // namespace

InitRecord InitRecord::parse(const json& object) {
    InitRecord record;
    Reader reader(object, record.problems);
    reader.read("shId", record.shareId);
    reader.read("qdu", record.redirectId);
    reader.read("url", record.url);
    reader.read("start", record.start);
    reader.read("init", record.initialize);
    reader.read("vId", record.visitorId);
    reader.read("sId", record.sessionId);
    reader.read("viId", record.visitId);
    reader.read("tId", record.tenantId);
    reader.read("optin", record.optIn);
    const auto page = object.find("page");
    const json none = json::object();
    Reader pageReader(page == object.end() ? none : *page, record.problems);
    int documentSide = 0;
    pageReader.read("width", record.width);
    pageReader.read("height", record.height);
    pageReader.read("docHeight", documentSide);
    pageReader.read("docWidth", documentSide);
    return record;
}

}  // namespace merovanta::devservice
