#include "Options.h"

#include <gtest/gtest.h>

#include <vector>

namespace merovanta::devservice::test {
namespace {

std::variant<Options, Options::Exit> parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "merovanta-devservice");
    return Options::parse(static_cast<int>(arguments.size()), arguments.data());
}

int exitCode(std::vector<const char*> arguments) {
    const auto result = parse(std::move(arguments));
    const auto* exit = std::get_if<Options::Exit>(&result);
    return exit == nullptr ? -1 : exit->code;
}

TEST(Options, ListenOnLoopbackAndStartUnaskedByDefault) {
    const Options options = std::get<Options>(parse({}));
    EXPECT_EQ(options.host, "127.0.0.1");
    EXPECT_TRUE(options.initReply.startMonitoring);
    EXPECT_EQ(options.initReply.startType, "u");
    EXPECT_EQ(options.initReply.storageType, "l");
    EXPECT_FALSE(options.initReply.ignoreVisitor);
    EXPECT_FALSE(options.initReply.chatActivated);
}

TEST(Options, AreReadInBothForms) {
    const Options options =
        std::get<Options>(parse({"--port", "0", "--reply-s=false", "--reply-st", "none", "--reply-x", "true",
                                 "--reply-fsty=", "--reply-ca", "false", "--reply-pnws=none",
                                 "--reply-mask-tags", "1,,2", "--reply-mask-classes=A", "--log-requests"}));
    EXPECT_EQ(options.port, 0);
    EXPECT_FALSE(options.initReply.startMonitoring);
    EXPECT_FALSE(options.initReply.startType);
    EXPECT_TRUE(options.initReply.ignoreVisitor);
    EXPECT_EQ(options.initReply.storageType, "");
    EXPECT_EQ(options.initReply.chatActivated, false);
    EXPECT_FALSE(options.initReply.disableWebSocket);
    EXPECT_EQ(options.initReply.maskedTags, (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(options.initReply.maskedClasses, std::vector<std::string>{"A"});
    EXPECT_TRUE(options.logRequests);
}

TEST(Options, MistakesEndTheProgram) {
    EXPECT_EQ(exitCode({"--help"}), 0);
    for (const auto& mistake : std::vector<std::vector<const char*>>{{"--prot", "1"},
                                                                     {"--port"},
                                                                     {"--port", "65536"},
                                                                     {"--port", "12x"},
                                                                     {"--reply-s", "yes"},
                                                                     {"--reply-ca", ""},
                                                                     {"--host", ""},
                                                                     {"stray"}}) {
        EXPECT_EQ(exitCode(mistake), 2) << mistake.front();
    }
}

}  // namespace
}  // namespace merovanta::devservice::test
