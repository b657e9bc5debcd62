#pragma once

#include <Merovanta/Export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <atomic>

namespace merovanta::qt {

/// Runs programs over what came from outside: with bounded memory, time and output, and without the right to
/// outlive the application.
class MEROVANTA_INTERNAL LimitedProcessQt {
 public:
    /// What the program wrote to its standard output; empty if it cannot be started, fails, exceeds a limit,
    /// or is cancelled. The program is looked for in the search path. Blocks. Thread: any that may wait.
    [[nodiscard]] static QByteArray run(const QString& program, const QStringList& arguments,
                                        qsizetype maximumOutput, const std::atomic<bool>& isCancelled);
};

}  // namespace merovanta::qt
