#include "Options.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
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

TEST(Options, ListenOnLoopbackByDefaultAndReadBothForms) {
    EXPECT_EQ(std::get<Options>(parse({})).host, "127.0.0.1");
    const Options options = std::get<Options>(parse({"--port", "0", "--reply-s=false", "--reply-st", "none",
                                                     "--reply-mask-tags", "1,,2", "--fault=co=drop"}));
    EXPECT_EQ(options.faults.toJson()["co"]["kind"], "drop");
    EXPECT_EQ(options.port, 0);
    EXPECT_FALSE(options.initReply.startMonitoring);
    EXPECT_FALSE(options.initReply.startType);
    EXPECT_EQ(options.initReply.maskedTags, (std::vector<std::string>{"1", "2"}));
}

TEST(Options, MistakesEndTheProgram) {
    EXPECT_EQ(exitCode({"--help"}), 0);
    using Arguments = std::vector<const char*>;
    for (const auto& mistake : std::vector<Arguments>{{"--prot", "1"},
                                                      {"--port"},
                                                      {"--port", "65536"},
                                                      {"--port", "12x"},
                                                      {"--reply-s", "yes"},
                                                      {"--fault", "co=boom"},
                                                      {"--tls-cert", "x.pem"}}) {
        EXPECT_EQ(exitCode(mistake), 2) << mistake.front();
    }
}

}  // namespace
}  // namespace merovanta::devservice::test
