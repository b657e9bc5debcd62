#include <gtest/gtest.h>

#include <utility>

#include "JpegHeader.h"
#include "OriginPolicy.h"
#include "Service.h"
#include "Target.h"
#include "Text.h"

namespace merovanta::devservice::test {
namespace {

TEST(Target, TakesValuesAsTheyCome) {
    const Target target = Target::parse("/a%2Fb?x=1&x=2&url=50%&y=%zz%4&empty=&flag&q=a=b");
    EXPECT_EQ(target.path, "/a/b");
    EXPECT_EQ(target.value("x"), "1");
    EXPECT_EQ(target.value("url"), "50%");
    EXPECT_EQ(target.value("y"), "%zz%4");
    EXPECT_EQ(target.value("absent"), "");
}

TEST(Target, RepairsOnlyWhatHttpForbids) {
    EXPECT_FALSE(repairRequestHead("GET /a%20b?c=+ HTTP/1.1\r\nHost: x y\r\n\r\n"));
    EXPECT_EQ(repairRequestHead("GET /a b?c=\xC3\xA9 HTTP/1.1\r\nHost: x\r\n\r\n"),
              "GET /a%20b?c=%C3%A9 HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_FALSE(repairRequestHead("GET\r\n\r\n"));
    EXPECT_FALSE(repairRequestHead(""));
}

TEST(Text, CutsBetweenCharactersAndMendsBrokenOnes) {
    EXPECT_EQ(boundedText("\xC3\xA9\xC3\xA9\xC3\xA9", 6), "\xC3\xA9\xC3\xA9\xC3\xA9");
    EXPECT_EQ(boundedText("\xC3\xA9\xC3\xA9\xC3\xA9", 5), "\xC3\xA9\xE2\x80\xA6");
    for (const char* broken : {"\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82"}) {
        EXPECT_EQ(boundedText(broken, 100).find("\xEF\xBF\xBD"), 0U) << broken;
    }
    EXPECT_EQ(singleLine("a\r\nb\x7F"), "a\\x0D\\x0Ab\\x7F");
}

TEST(JpegHeader, ReadsTheSizeAndSurvivesEveryTruncation) {
    const std::string picture = jpeg(390, 844);
    EXPECT_EQ(jpegSize(picture), (PictureSize{390, 844}));
    for (std::size_t length = 0; length < picture.size(); ++length) {
        EXPECT_FALSE(jpegSize(picture.substr(0, length))) << length;
    }
    EXPECT_FALSE(jpegSize(picture.substr(0, 2) + picture.substr(15))) << "a scan without a frame header";
    EXPECT_FALSE(jpegSize(picture.substr(0, 15) + "\xFF\xD9")) << "a frame header without a scan";
    std::string endless("\xFF\xD8", 2);
    for (int i = 0; i < 1000; ++i)
        endless += std::string("\xFF\xE0\x00\x02", 4);
    EXPECT_FALSE(jpegSize(endless + picture.substr(2)));
}

TEST(OriginPolicy, AnswersOnlyItsOwnPage) {
    const OriginPolicy policy("console.test");
    const auto allows = [&](const std::string& host, const std::string& origin) {
        Request request;
        request.host = host;
        request.origin = origin;
        return policy.allows(request);
    };
    for (const auto& [host, origin] :
         {std::pair{"127.0.0.1:8480", ""}, {"[::1]:8480", "http://[::1]:8480"}, {"console.test", ""}}) {
        EXPECT_TRUE(allows(host, origin)) << host << " from " << origin;
    }
    for (const auto& [host, origin] : {std::pair{"rebound.example:8480", ""},
                                       {"127.0.0.1.example", ""},
                                       {"", ""},
                                       {"127.0.0.1:8480", "http://127.0.0.1:9999"},
                                       {"127.0.0.1:8480", "https://127.0.0.1:8480"},
                                       {"127.0.0.1:8480", "null"}}) {
        EXPECT_FALSE(allows(host, origin)) << host << " from " << origin;
    }
}

}  // namespace
}  // namespace merovanta::devservice::test
