#pragma once

#include <Merovanta/Export.h>

class QWindow;

namespace merovanta::quick {

/// Whether the visitor is choosing files in a window. What the dialog shows, the names of files, is nobody
/// else's business, and the choice nobody else's. Thread: main.
class MEROVANTA_INTERNAL FileChoiceQuick {
 public:
    FileChoiceQuick() = delete;

    static void begin(QWindow& window);
    /// The choice counts for another second: the dialog fades out, and pictures of it may be under way.
    static void end(QWindow& window);
    [[nodiscard]] static bool isOpen(const QWindow& window);
};

}  // namespace merovanta::quick
