#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "General/Panoptra/Network/RawValues.h"
#include "General/StringError.h"

namespace merovanta {

/// Reads the fields of one JSON object into a record, strictly by type. The first field that is missing or of
/// another type, or too large, is remembered as the error; the record is then not to be used.
class JsonFields {
 public:
    explicit JsonFields(const nlohmann::json& json) : mJson(json) {
        if (!json.is_object()) mError.emplace("Cannot decode reply: it is not an object");
    }

    template <typename Value>
    void required(const char* key, Value& value) {
        const nlohmann::json* const field = find(key);
        if (!field) {
            fail(key, "is missing");
        } else if (!read(*field, value)) {
            fail(key, "has the wrong type or is too long");
        }
    }

    /// A field that is missing or null leaves the value absent.
    template <typename Value>
    void optional(const char* key, std::optional<Value>& value) {
        const nlohmann::json* const field = find(key);
        if (!field) return;
        if (Value content{}; read(*field, content)) {
            value = std::move(content);
        } else {
            fail(key, "has the wrong type or is too long");
        }
    }

    /// Reads a nested record that has a decode(const nlohmann::json&) of its own.
    template <typename Record>
    void nested(const char* key, Record& record) {
        const nlohmann::json* const field = find(key);
        if (!field) {
            fail(key, "is missing");
            return;
        }
        auto decoded = Record::decode(*field);
        if (decoded) {
            record = std::move(decoded.value());
        } else if (!mError) {
            mError = decoded.error();
        }
    }

    [[nodiscard]] const std::optional<StringError>& error() const { return mError; }

 private:
    [[nodiscard]] const nlohmann::json* find(const char* key) const {
        if (!mJson.is_object()) return nullptr;
        const auto field = mJson.find(key);
        return field == mJson.end() || field->is_null() ? nullptr : &*field;
    }

    void fail(const char* key, const char* what) {
        if (!mError) mError.emplace(std::string("Cannot decode reply: \"") + key + "\" " + what);
    }

    static bool read(const nlohmann::json& field, bool& value) {
        if (!field.is_boolean()) return false;
        value = field.get<bool>();
        return true;
    }

    static bool read(const nlohmann::json& field, std::string& value) {
        if (!field.is_string() || field.get_ref<const std::string&>().size() > maximumText) return false;
        value = field.get<std::string>();
        return true;
    }

    template <typename Enumeration>
    requires std::is_enum_v<Enumeration>
    static bool read(const nlohmann::json& field, Enumeration& value) {
        const auto known =
            field.is_string() ? fromRawValue<Enumeration>(field.get_ref<const std::string&>()) : std::nullopt;
        if (known) value = *known;
        return known.has_value();
    }

    static bool read(const nlohmann::json& field, std::vector<std::string>& values) {
        if (!field.is_array() || field.size() > maximumElements) return false;
        for (const auto& element : field) {
            std::string value;
            if (!read(element, value)) return false;
            values.push_back(std::move(value));
        }
        return true;
    }

    // Whatever is larger is not what the service has to say.
    static constexpr std::size_t maximumText = std::size_t{1} << 20;
    static constexpr std::size_t maximumElements = 1000;

    const nlohmann::json& mJson;
    std::optional<StringError> mError;
};

}  // namespace merovanta
