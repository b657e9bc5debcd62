#pragma once

#include <QtCore/QString>
#include <optional>
#include <string>

namespace merovanta::qt {

/// Who made the application, as far as the application says so. Thread: main, with an application object.
[[nodiscard]] QString vendorName();

/// An upper-case UUID, the same for all of this vendor's applications on this device and not to be traced
/// back to the machine's own identifier. Absent if the machine has none and none can be stored. Thread: main,
/// with an application object.
[[nodiscard]] std::optional<std::string> identifierForVendor();

}  // namespace merovanta::qt
