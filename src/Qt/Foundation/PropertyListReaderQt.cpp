#include "Qt/Foundation/PropertyListReaderQt.h"

namespace merovanta::qt {

namespace {

constexpr int maximumDepth = 32;

}  // namespace

std::optional<nlohmann::json> PropertyListReaderQt::dictionary() {
    if (!mXml.readNextStartElement() || mXml.name() != u"plist") return std::nullopt;
    if (!mXml.readNextStartElement() || mXml.name() != u"dict") return std::nullopt;
    nlohmann::json result = dict(0);
    if (mXml.readNextStartElement()) mXml.raiseError(QStringLiteral("More than one value"));
    while (!mXml.atEnd())
        mXml.readNext();
    if (mXml.hasError()) return std::nullopt;
    return result;
}

nlohmann::json PropertyListReaderQt::value(int depth) {
    const auto name = mXml.name();
    if (depth > maximumDepth) mXml.raiseError(QStringLiteral("Nested too deeply"));
    if (name == u"dict") return dict(depth);
    if (name == u"array") return array(depth);
    if (name == u"integer") return integer();
    if (name == u"real") return real();
    if (name == u"true" || name == u"false") {
        const bool answer = name == u"true";
        mXml.skipCurrentElement();
        return answer;
    }
    if (name == u"string" || name == u"date" || name == u"data") {
        return mXml.readElementText().toStdString();
    }
    mXml.raiseError(QStringLiteral("Unknown kind of value"));
    return nullptr;
}

nlohmann::json PropertyListReaderQt::array(int depth) {
    auto result = nlohmann::json::array();
    while (mXml.readNextStartElement())
        result.push_back(value(depth + 1));
    return result;
}

nlohmann::json PropertyListReaderQt::dict(int depth) {
    auto result = nlohmann::json::object();
    while (mXml.readNextStartElement()) {
        if (mXml.name() != u"key") mXml.raiseError(QStringLiteral("A key was expected"));
        const std::string key = mXml.readElementText().toStdString();
        if (!mXml.readNextStartElement()) mXml.raiseError(QStringLiteral("A key without a value"));
        if (mXml.hasError()) break;
        result[key] = value(depth + 1);
    }
    return result;
}

nlohmann::json PropertyListReaderQt::integer() {
    bool ok = false;
    const qlonglong number = mXml.readElementText().trimmed().toLongLong(&ok);
    if (!ok) mXml.raiseError(QStringLiteral("Not an integer"));
    return number;
}

nlohmann::json PropertyListReaderQt::real() {
    bool ok = false;
    const double number = mXml.readElementText().trimmed().toDouble(&ok);
    if (!ok) mXml.raiseError(QStringLiteral("Not a number"));
    return number;
}

}  // namespace merovanta::qt
