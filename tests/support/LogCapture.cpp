#include "support/LogCapture.h"

#include <unistd.h>

#include <algorithm>

namespace merovanta::testing {

namespace {

bool isLogLine(const std::string& line) {
    return line.starts_with("[DEBUG] ") || line.starts_with("[WARNING] ") || line.starts_with("[ERROR] ");
}

}  // namespace

LogCapture::LogCapture() : mFile(std::tmpfile()) {
    std::fflush(stdout);
    mStandardOutput = dup(STDOUT_FILENO);
    dup2(fileno(mFile), STDOUT_FILENO);
}

LogCapture::~LogCapture() {
    std::fflush(stdout);
    dup2(mStandardOutput, STDOUT_FILENO);
    close(mStandardOutput);
    for (const auto& line : allLines()) {
        if (!isLogLine(line)) std::puts(line.c_str());
    }
    std::fclose(mFile);
}

std::vector<std::string> LogCapture::allLines() const {
    std::fflush(stdout);
    std::vector<std::string> lines(1);
    char chunk[4096];
    off_t at = 0;
    for (ssize_t size; (size = pread(fileno(mFile), chunk, sizeof chunk, at)) > 0; at += size) {
        for (const char character : std::string(chunk, static_cast<std::size_t>(size))) {
            if (character == '\n') {
                lines.emplace_back();
            } else {
                lines.back() += character;
            }
        }
    }
    lines.pop_back();
    return lines;
}

std::vector<std::string> LogCapture::lines() const {
    return lines("");
}

std::vector<std::string> LogCapture::lines(const std::string& beginning) const {
    auto found = allLines();
    std::erase_if(found,
                  [&](const std::string& line) { return !isLogLine(line) || !line.starts_with(beginning); });
    return found;
}

bool LogCapture::contains(const std::string& line) const {
    const auto all = allLines();
    return std::find(all.begin(), all.end(), line) != all.end();
}

}  // namespace merovanta::testing
