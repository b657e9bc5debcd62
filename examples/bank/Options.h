#pragma once

#include <QString>
#include <chrono>
#include <optional>

class QCoreApplication;

// What the command line asked for.
struct Options {
    std::optional<QString> server;  // HOST[:PORT]; absent: the library's own default
    QString tenant;
    QString token;
    bool webSocket = false;
    bool start = false;
    bool tour = false;
    bool sentinel = false;
    bool dark = false;
    bool control = false;
    std::optional<std::chrono::milliseconds> exitAfter;
    std::optional<QString> screenshotDir;

    // Ends the process for --help, --version and a command line that makes no sense.
    static Options parse(const QCoreApplication& app);
};
