#include "Qt/Foundation/LimitedProcessQt.h"

#include <sys/resource.h>
#include <unistd.h>

#include <QtCore/QProcess>

#include "Qt/Foundation/ReadingTimeQt.h"

namespace merovanta::qt {

namespace {

constexpr rlim_t maximumMemory = rlim_t{1} << 30;
/// How soon a cancellation is noticed.
constexpr int pulse = 20;

/// Runs between fork and exec: async-signal-safe calls only.
void limitResources() {
    const rlimit memory{maximumMemory, maximumMemory};
    const rlimit seconds{ReadingTimeQt::maximumSeconds, ReadingTimeQt::maximumSeconds};
    const rlimit none{0, 0};
    if (setrlimit(RLIMIT_AS, &memory) != 0 || setrlimit(RLIMIT_CPU, &seconds) != 0 ||
        setrlimit(RLIMIT_CORE, &none) != 0) {
        _exit(1);
    }
}

}  // namespace

QByteArray LimitedProcessQt::run(const QString& program, const QStringList& arguments,
                                 qsizetype maximumOutput, const std::atomic<bool>& isCancelled) {
    QProcess process;
    process.setChildProcessModifier(&limitResources);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments, QProcess::ReadOnly);
    if (!process.waitForStarted()) return {};
    const ReadingTimeQt time(isCancelled);
    QByteArray output;
    while (process.state() != QProcess::NotRunning) {
        process.waitForReadyRead(pulse);
        output += process.readAllStandardOutput();
        if (time.isOver() || output.size() > maximumOutput) {
            process.kill();
            process.waitForFinished();
            return {};
        }
    }
    const bool isDone = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return isDone ? output : QByteArray();
}

}  // namespace merovanta::qt
