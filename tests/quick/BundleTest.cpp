#include "Platform/Bundle.h"

#include <gtest/gtest.h>

#include "Platform/Platform.h"

using merovanta::platform::current;

namespace {

TEST(Bundle, ReadsThePackedConfiguration) {
    const auto list = current().bundle().propertyList("com.merovanta.panoptra.Panoptra", "Config");
    ASSERT_TRUE(list);
    for (const auto* key : {"Hostname", "CdnHostname", "HttpProtocol", "WebSocketProtocol"}) {
        EXPECT_TRUE(list->contains(key) && (*list)[key].is_string()) << key;
    }
    EXPECT_FALSE(current().bundle().propertyList("com.merovanta.panoptra.Panoptra", "Other"));
    EXPECT_FALSE(current().bundle().propertyList("no.such.bundle", "Config"));
}

TEST(Bundle, ReadsEveryKindOfValue) {
    const auto expected = nlohmann::json::parse(R"({"text": "Grüße & more", "empty": "", "number": -12,
        "share": 0.4, "yes": true, "no": false, "list": ["a", {"b": 1}]})");
    EXPECT_EQ(current().bundle().propertyList("test.bundle", "Every"), expected);
}

TEST(Bundle, RefusesWhatIsNoDictionary) {
    for (const auto* name : {"Broken", "Array", "WrongKind", "KeyWithoutValue"}) {
        EXPECT_FALSE(current().bundle().propertyList("test.bundle", name)) << name;
    }
}

}  // namespace
