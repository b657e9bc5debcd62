#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringView>
#include <QtNetwork/QNetworkRequest>
#include <array>
#include <string>
#include <variant>

#include "General/StringError.h"
#include "Platform/HttpSession.h"

namespace merovanta::qt {

/// The address and the headers of a request as Qt takes them, or why they cannot be sent.
[[nodiscard]] std::variant<QNetworkRequest, StringError> nativeRequest(
    const HttpRequest& request, const std::array<QStringView, 2>& schemes);

[[nodiscard]] QByteArray bytesOf(const std::string& text);

}  // namespace merovanta::qt
