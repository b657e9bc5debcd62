#include <atomic>
#include <filesystem>
#include <fstream>

#include "Harness.h"

namespace merovanta::conformance {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

class Http : public ConformanceTest {
 protected:
    HttpReply execute(const HttpRequest& request) {
        std::atomic<int> completions{0};
        HttpReply answer;
        start(request, [&](HttpReply reply) {
            answer = std::move(reply);
            ++completions;
        });
        EXPECT_TRUE(passUntil([&] { return completions > 0; }));
        EXPECT_EQ(completions, 1);
        return answer;
    }

    void start(const HttpRequest& request, HttpSession::Completion completion) {
        static thread_local bool isStarting = false;
        isStarting = true;
        platform().httpSession().execute(request,
                                         [this, completion = std::move(completion)](HttpReply reply) {
                                             EXPECT_FALSE(isStarting) << "never inside the call";
                                             EXPECT_FALSE(isOnMain());
                                             completion(std::move(reply));
                                         });
        isStarting = false;
    }

    static void expectError(const HttpReply& reply) {
        ASSERT_TRUE(reply.error);
        EXPECT_FALSE(reply.error->mMsg.empty());
        EXPECT_FALSE(reply.data);
        EXPECT_FALSE(reply.response);
    }
};

TEST_F(Http, SendsTheRequestAsItStands) {
    const std::string body("{\"a\":1}\0\xFF\r\n", 11);
    const std::string url = harness->serve(200, std::string("\0yes", 4)) + "/api/in?q=a%20b";
    for (const std::string method : {"POST", "GET", "DELETE"}) {
        const auto sent = method == "POST" ? body : std::string();
        const auto reply = execute({.method = method,
                                    .url = url,
                                    .headers = {{"X-QD-SSID", "abc"}, {"Content-Type", "application/json"}},
                                    .body = sent});
        EXPECT_FALSE(reply.error);
        EXPECT_EQ(reply.data, std::string("\0yes", 4));
        ASSERT_TRUE(reply.response);
        EXPECT_EQ(reply.response->status, 200);
        const HttpRequest received = harness->received().back();
        EXPECT_EQ(received.method, method);
        EXPECT_TRUE(received.url.ends_with("/api/in?q=a%20b")) << received.url;
        EXPECT_THAT(received.headers, Contains(Pair("X-QD-SSID", "abc")));
        EXPECT_THAT(received.headers, Contains(Pair("Content-Type", "application/json")));
        EXPECT_EQ(received.body, sent);
    }
    EXPECT_EQ(harness->received().size(), 3);
}

TEST_F(Http, AnyStatusIsAResponse) {
    for (const int status : {201, 400, 401, 403, 404, 405, 409, 410, 422, 429, 500, 501, 503}) {
        const auto reply = execute({.url = harness->serve(status, "why")});
        EXPECT_FALSE(reply.error) << status;
        EXPECT_EQ(reply.data, "why") << status;
        ASSERT_TRUE(reply.response) << status;
        EXPECT_EQ(reply.response->status, status);
    }
    const auto empty = execute({.url = harness->serve(500, "")});
    EXPECT_FALSE(empty.error);
    EXPECT_FALSE(empty.data) << "no byte, no data";
    EXPECT_TRUE(empty.response);
}

TEST_F(Http, FailuresAreErrors) {
    expectError(execute({.url = harness->deadUrl()}));
    expectError(execute({.url = harness->serve(200, std::string(HttpSession::maximumReplyBytes + 1, 'x'))}));
    const auto reply =
        execute({.url = harness->serve(200, std::string(HttpSession::maximumReplyBytes, 'x'))});
    EXPECT_EQ(reply.data.value_or("").size(), HttpSession::maximumReplyBytes);
}

TEST_F(Http, MayBeAskedOnAnyThreadAndSideBySide) {
    const auto url = harness->serve(200, "yes");
    std::atomic<int> replies{0};
    for (int index = 0; index < 8; ++index) {
        const auto ask = [this, url, &replies] {
            start({.url = url}, [&replies](const HttpReply& reply) { replies += reply.data == "yes"; });
        };
        if (index % 2 == 0) {
            ask();
        } else {
            platform().workQueue().async(ask);
        }
    }
    EXPECT_TRUE(passUntil([&] { return replies == 8; })) << replies;
}

class Defaults : public ConformanceTest {
 protected:
    UserDefaults& defaults = platform().userDefaults();
};

TEST_F(Defaults, AnswerWithTheStoredElseTheDefaultElseNothing) {
    EXPECT_EQ(defaults.string("one"), std::nullopt);
    defaults.registerDefault("one", "fallback");
    EXPECT_EQ(defaults.string("one"), "fallback");
    for (const auto* text : {"stored", "", "Zo\xC3\xAB, \"1\"; 2\\\n@x"}) {
        defaults.set("one", text);
        EXPECT_EQ(defaults.string("one"), text);
    }
    defaults.registerDefault("one", "other");
    EXPECT_NE(defaults.string("one"), "other");
    defaults.remove("one");
    EXPECT_EQ(defaults.string("one"), "other");
}

TEST_F(Defaults, KeysAreIndependentWhateverTheirCharacters) {
    const std::vector<std::string> keys{"a", "a/b", "a\\b", "a.b", "/a", "a b", "A"};
    for (const auto& key : keys)
        defaults.set(key, "of " + key);
    for (const auto& key : keys)
        EXPECT_EQ(defaults.string(key), "of " + key);
    defaults.remove("a");
    EXPECT_EQ(defaults.string("a"), std::nullopt);
    EXPECT_EQ(defaults.string("a/b"), "of a/b");
}

TEST_F(Defaults, AreOnTheDiskOnceSynchronized) {
    defaults.registerDefault("unset", "never-saved");
    defaults.set("saved", "marker-1");
    defaults.synchronize();
    EXPECT_THAT(harness->savedDefaults(), HasSubstr("saved=marker-1"));
    EXPECT_THAT(harness->savedDefaults(), Not(HasSubstr("never-saved")));
    defaults.remove("saved");
    defaults.synchronize();
    EXPECT_THAT(harness->savedDefaults(), Not(HasSubstr("marker-1")));
}

class Files : public ConformanceTest {};

TEST_F(Files, HaveADirectoryThatIsMadeAgainWhenItIsGone) {
    for (int time = 0; time < 2; ++time) {
        const std::filesystem::path path = platform().fileManager().temporaryDirectory();
        EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms::owner_all);
        EXPECT_EQ(platform().fileManager().temporaryDirectory(), path);
        std::ofstream(path / "file") << "text";
        EXPECT_TRUE(std::filesystem::exists(path / "file"));
        std::filesystem::remove_all(path);
    }
}

class Bundles : public ConformanceTest {};

TEST_F(Bundles, HoldTheConfigurationAndNothingElse) {
    constexpr auto own = "com.merovanta.panoptra.Panoptra";
    auto& bundle = platform().bundle();
    const auto list = bundle.propertyList(own, "Config");
    ASSERT_TRUE(list);
    for (const auto* key : {"Hostname", "CdnHostname", "HttpProtocol", "WebSocketProtocol"}) {
        ASSERT_TRUE(list->contains(key) && list->at(key).is_string()) << key;
        EXPECT_NE(list->at(key), "") << key;
    }
    EXPECT_FALSE(bundle.propertyList(own, "Other"));
    EXPECT_FALSE(bundle.propertyList("no.such.bundle", "Config"));
}

}  // namespace
}  // namespace merovanta::conformance
