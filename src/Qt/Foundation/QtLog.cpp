#include <Merovanta/Merovanta.h>
#include <Merovanta/QtLog.h>

#include <QtCore/QLoggingCategory>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace merovanta::qt {

namespace {

/// Made as the sources come up, and kept: Qt holds on to their names.
class Categories {
 public:
    const QLoggingCategory& of(std::string_view source) {
        const std::lock_guard lock(mMutex);
        const auto known = mCategories.find(source);
        if (known != mCategories.end()) return known->second->category;
        auto made = std::make_unique<Named>("merovanta." + std::string(source));
        return mCategories.emplace(source, std::move(made)).first->second->category;
    }

 private:
    struct Named {
        explicit Named(std::string text) : name(std::move(text)), category(name.c_str()) {}
        const std::string name;
        const QLoggingCategory category;
    };

    std::mutex mMutex;
    std::map<std::string, std::unique_ptr<Named>, std::less<>> mCategories;
};

void log(const LogLine& line) {
    // Never destroyed: other threads may log while the process ends.
    static auto* const categories = new Categories();
    const QLoggingCategory& category = categories->of(line.source);
    const QMessageLogger logger(nullptr, 0, nullptr, category.categoryName());
    const std::string text(line.text);
    if (line.level == LogLevel::debug) {
        if (category.isDebugEnabled()) logger.debug("%s", text.c_str());
    } else if (line.level == LogLevel::warning) {
        if (category.isWarningEnabled()) logger.warning("%s", text.c_str());
    } else if (category.isCriticalEnabled()) {
        logger.critical("%s", text.c_str());
    }
}

}  // namespace

void logToCategories(MerovantaLog::StandardOutput standardOutput) {
    Merovanta::log().setSink(&log, standardOutput);
}

}  // namespace merovanta::qt
