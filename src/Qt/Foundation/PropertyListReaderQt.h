#pragma once

#include <QtCore/QIODevice>
#include <QtCore/QXmlStreamReader>
#include <nlohmann/json.hpp>
#include <optional>

namespace merovanta::qt {

/// Reads one property list in XML form. Dates and data come out as their text.
class PropertyListReaderQt {
 public:
    /// The device must be open and outlive the reader.
    explicit PropertyListReaderQt(QIODevice& device) : mXml(&device) {}

    /// The list's dictionary; absent if the list is malformed or something else. Call it once.
    [[nodiscard]] std::optional<nlohmann::json> dictionary();

 private:
    nlohmann::json value(int depth);
    nlohmann::json array(int depth);
    nlohmann::json dict(int depth);
    nlohmann::json integer();
    nlohmann::json real();

    QXmlStreamReader mXml;
};

}  // namespace merovanta::qt
