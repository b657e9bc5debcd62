#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace merovanta::testing {

/// Collects what the process writes to standard output from now until destruction; lines that are no log
/// lines of the library are passed on then.
class LogCapture {
 public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The library's log lines so far, without line feeds.
    [[nodiscard]] std::vector<std::string> lines() const;

    /// Those with this beginning.
    [[nodiscard]] std::vector<std::string> lines(const std::string& beginning) const;

    /// Whether this was written as a whole line, by the log or otherwise.
    [[nodiscard]] bool contains(const std::string& line) const;

 private:
    [[nodiscard]] std::vector<std::string> allLines() const;

    std::FILE* mFile;
    int mStandardOutput;
};

}  // namespace merovanta::testing
