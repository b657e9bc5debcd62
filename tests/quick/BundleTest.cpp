#include "Platform/Bundle.h"

#include <gtest/gtest.h>

#include "Platform/Platform.h"

using merovanta::platform::current;

namespace {

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
