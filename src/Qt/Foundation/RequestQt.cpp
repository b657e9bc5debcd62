#include "Qt/Foundation/RequestQt.h"

#include <QtCore/QUrl>
#include <algorithm>

namespace merovanta::qt {

namespace {

/// A line break in a header would smuggle in others, or a second request.
bool isHeaderSafe(const std::string& text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

}  // namespace

std::variant<QNetworkRequest, StringError> nativeRequest(const HttpRequest& request,
                                                         const std::array<QStringView, 2>& schemes) {
    const QUrl url = QUrl::fromEncoded(bytesOf(request.url), QUrl::StrictMode);
    const bool isSupported = std::find(schemes.begin(), schemes.end(), url.scheme()) != schemes.end();
    if (!url.isValid() || !isSupported || url.host().isEmpty()) return StringError("Unsupported URL");
    QNetworkRequest native(url);
    for (const auto& [name, value] : request.headers) {
        if (name.empty() || !isHeaderSafe(name) || !isHeaderSafe(value)) {
            return StringError("Malformed header");
        }
        native.setRawHeader(bytesOf(name), bytesOf(value));
    }
    return native;
}

QByteArray bytesOf(const std::string& text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

}  // namespace merovanta::qt
