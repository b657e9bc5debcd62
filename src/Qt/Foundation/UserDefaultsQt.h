#pragma once

#include <QtCore/QSettings>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "Platform/UserDefaults.h"
#include "Qt/Foundation/ApplicationLifeQt.h"

namespace merovanta::qt {

/// A group of the library's own in the application's settings. The settings are known by the application's
/// name: without an application object nothing is stored and only the defaults answer.
class UserDefaultsQt final : public UserDefaults, private ApplicationLifeQt::Observer {
 public:
    UserDefaultsQt();
    ~UserDefaultsQt() override;

    [[nodiscard]] std::optional<std::string> string(std::string_view key) override;
    void set(std::string_view key, std::string_view value) override;
    void remove(std::string_view key) override;
    void registerDefault(std::string_view key, std::string_view value) override;
    void synchronize() override;

 private:
    void applicationStarted() override {}
    void applicationEnding() override;

    /// Opened on first use, when the application has given itself a name. Null without an application.
    QSettings* settings();

    std::unique_ptr<QSettings> mSettings;
    std::map<std::string, std::string, std::less<>> mDefaults;
};

}  // namespace merovanta::qt
