#include "Platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSettings>

#include "Platform/Platform.h"
#include "Qt/Foundation/UserDefaultsQt.h"

using merovanta::platform::current;

namespace {

TEST(UserDefaults, StoreInAGroupOfTheirOwn) {
    auto& defaults = current().userDefaults();
    EXPECT_EQ(defaults.string("cId"), std::nullopt);
    defaults.registerDefault("cId", "fallback");
    EXPECT_EQ(defaults.string("cId"), "fallback");
    defaults.set("cId", "Zoë @1, \"2\"");
    defaults.synchronize();
    EXPECT_EQ(merovanta::qt::UserDefaultsQt().string("cId"), "Zoë @1, \"2\"");
    EXPECT_EQ(QSettings().value("Merovanta/cId").toString(), QString("Zoë @1, \"2\""));
    defaults.remove("cId");
    EXPECT_EQ(defaults.string("cId"), "fallback");
}

TEST(Device, HasAStableIdentifierAndLanguages) {
    auto& application = current().application();
    const auto identifier = application.identifierForVendor();
    ASSERT_TRUE(identifier);
    const QRegularExpression uuid("^[0-9A-F]{8}-([0-9A-F]{4}-){3}[0-9A-F]{12}$");
    EXPECT_TRUE(uuid.match(QString::fromStdString(*identifier)).hasMatch()) << *identifier;
    EXPECT_EQ(application.identifierForVendor(), identifier);
    for (const auto& language : application.preferredLanguages())
        EXPECT_FALSE(language.empty());
}

}  // namespace
