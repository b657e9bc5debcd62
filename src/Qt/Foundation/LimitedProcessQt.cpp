#include "Qt/Foundation/LimitedProcessQt.h"

#include <sys/resource.h>
#include <unistd.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QProcess>
#include <chrono>

#include "Qt/Foundation/ApplicationLifeQt.h"

namespace merovanta::qt {

namespace {

constexpr rlim_t maximumMemory = rlim_t{1} << 30;
/// Of processor time, and of waiting.
constexpr rlim_t maximumSeconds = 10;
/// How soon a cancellation is noticed.
constexpr int pulse = 20;

/// Runs between fork and exec: async-signal-safe calls only.
void limitResources() {
    const rlimit memory{maximumMemory, maximumMemory};
    const rlimit seconds{maximumSeconds, maximumSeconds};
    const rlimit none{0, 0};
    if (setrlimit(RLIMIT_AS, &memory) != 0 || setrlimit(RLIMIT_CPU, &seconds) != 0 ||
        setrlimit(RLIMIT_CORE, &none) != 0) {
        _exit(1);
    }
}

bool isApplicationEnding() {
    return ApplicationLifeQt::instance().phase() == ApplicationLifeQt::Phase::ended;
}

}  // namespace

QByteArray LimitedProcessQt::run(const QString& program, const QStringList& arguments,
                                 qsizetype maximumOutput, const std::atomic<bool>& isCancelled) {
    QProcess process;
    process.setChildProcessModifier(&limitResources);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments, QProcess::ReadOnly);
    if (!process.waitForStarted()) return {};
    const QDeadlineTimer deadline(std::chrono::seconds{maximumSeconds});
    QByteArray output;
    while (process.state() != QProcess::NotRunning) {
        process.waitForReadyRead(pulse);
        output += process.readAllStandardOutput();
        if (isCancelled || isApplicationEnding() || deadline.hasExpired() || output.size() > maximumOutput) {
            process.kill();
            process.waitForFinished();
            return {};
        }
    }
    const bool isDone = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return isDone ? output : QByteArray();
}

}  // namespace merovanta::qt
