#include "General/Panoptra/UIStrings.h"

#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::ElementsAre;
using ::testing::SizeIs;

class UIStringsTest : public LibraryTest {
 protected:
    /// Loads the texts; what came of it, empty for success.
    std::string load() {
        std::string outcome = "(not called)";
        strings->load("a tenant",
                      [&](const auto& error) { outcome = error ? error->errorDescription() : ""; });
        advance(1s);
        return outcome;
    }

    std::string loadFrom(const HttpReply& reply) {
        service.override = [reply](const HttpRequest&) { return reply; };
        return load();
    }

    std::shared_ptr<UIStrings> strings = Injection::resolve<UIStrings>();
};

TEST_F(UIStringsTest, AreLoadedOnceInTheFirstPreferredLanguage) {
    platform->app.languages = {"de-CH", "en"};
    EXPECT_EQ(load(), "");
    EXPECT_EQ(load(), "");
    ASSERT_THAT(service.requests("GET", "api/in/i18n"), SizeIs(1));
    EXPECT_EQ(service.requests("GET", "api/in/i18n").front().url,
              "https://service.example/api/in/i18n?lang=de-CH&tId=a%20tenant");
    EXPECT_EQ(strings->text("ui.confirm.accept"), "Yes");
    EXPECT_FALSE(strings->text("ui.confirm.decline"));
}

TEST_F(UIStringsTest, AreAskedForAgainAfterAFailure) {
    platform->app.languages.clear();
    EXPECT_EQ(loadFrom(HttpSessionInMemory::reply(200)), "data is nil");
    EXPECT_EQ(loadFrom(HttpSessionInMemory::reply(200, "{")), "Cannot parse JSON");
    EXPECT_EQ(loadFrom(HttpSessionInMemory::reply(200, "[]")), "Cannot use response as dictionary");
    EXPECT_EQ(loadFrom(HttpSessionInMemory::failure("No route to host")), "No route to host");
    EXPECT_EQ(loadFrom(HttpSessionInMemory::reply(503, R"({"error":"busy"})")), "HTTP status 503");
    EXPECT_EQ(loadFrom(HttpSessionInMemory::reply(200, R"({"a":1,"b":"two"})")), "");
    EXPECT_FALSE(strings->text("a"));
    EXPECT_EQ(strings->text("b"), "two");
    EXPECT_EQ(service.requests("GET", "api/in/i18n").back().url,
              "https://service.example/api/in/i18n?lang=en&tId=a%20tenant");
}

TEST_F(UIStringsTest, AreNotAskedForInWhatIsNoLanguage) {
    platform->app.languages = {"C", "POSIX", "", "fr"};
    load();
    platform->app.languages = {"C"};
    strings = std::make_shared<UIStrings>(Injection::resolve<MerovantaAPI>());
    load();
    std::vector<std::string> asked;
    for (const auto& request : service.requests("GET", "api/in/i18n"))
        asked.push_back(request.url.substr(request.url.find('?'), 8));
    EXPECT_THAT(asked, ElementsAre("?lang=fr", "?lang=en"));
}

}  // namespace
}  // namespace merovanta::testing
