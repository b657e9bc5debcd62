#include <gtest/gtest.h>

#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <limits>
#include <vector>

#include "EventDecoder.h"
#include "Service.h"

namespace merovanta::devservice::test {
namespace {

using nlohmann::json;

TEST(Misbehaviour, BadBodiesAreRefusedAndNoted) {
    Service service;
    service.startSession();
    EXPECT_EQ(service.post("garbage").status, 400U);
    EXPECT_EQ(service.post(std::string(9U << 20U, 'x')).status, 413U);
    EXPECT_EQ(service.request("POST", "/api/in/im/c", "{\"sId\":").status, 400U);
    EXPECT_EQ(service.request("POST", "/api/in/im/c", "[]").status, 400U);
    EXPECT_EQ(service.request("POST", "/api/in/im/c", std::string(1U << 20U, ' ')).status, 413U);
    EXPECT_EQ(service.request("POST", "/api/in/io/l", "7").status, 400U);
    EXPECT_EQ(service.request("POST", "/api/ix/m", "").status, 400U) << "names no session";
    EXPECT_EQ(service.timeline("warning").size(), 1U);
    EXPECT_EQ(service.visitor()["counters"]["posts"], 0);
    EXPECT_EQ(service.post(ProtoMessageList()).status, 200U);
}

TEST(Misbehaviour, MalformedHttpEndsOnlyItsConnection) {
    Service service;
    EXPECT_EQ(service.exchange("nonsense\r\n\r\n").find("HTTP/1.1 400"), 0U);
    EXPECT_EQ(service.exchange("GET /" + std::string(20'000, 'a')).find("HTTP/1.1 431"), 0U);
    const std::string chunked =
        "POST /api/ix/m?sId=S HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n";
    EXPECT_EQ(service.exchange(chunked).find("HTTP/1.1 400"), 0U);
    const std::string endless =
        "POST /api/in/im/c HTTP/1.1\r\nHost: x\r\nContent-Length: 99999999999999999999\r\n\r\n";
    EXPECT_EQ(service.exchange(endless).find("HTTP/1.1 400"), 0U);
    EXPECT_EQ(service.request("GET", "/nowhere").status, 404U);
    const Reply wrongMethod = service.request("PUT", "/api/ix/m");
    EXPECT_EQ(wrongMethod.status, 405U);
    EXPECT_EQ(wrongMethod.headers.at("Allow"), "GET, POST, DELETE");
}

TEST(Misbehaviour, SlowClientsAreClosed) {
    Options options;
    options.timeouts.head = options.timeouts.body = std::chrono::milliseconds(50);
    Service service(options);
    EXPECT_EQ(service.exchange("GET /api/ic/h HT"), "");
    EXPECT_EQ(service.exchange("POST /api/ix/m?sId=S HTTP/1.1\r\nHost: x\r\nContent-Length: 9\r\n\r\nhalf"),
              "");
    EXPECT_EQ(service.request("GET", "/api/ic/h").status, 200U);
}

TEST(Misbehaviour, ConnectionsAreBounded) {
    Service service;
    std::vector<boost::asio::ip::tcp::socket> open;
    for (std::size_t i = 0; i < Server::kMaxConnections; ++i)
        open.push_back(service.connect());
    auto beyond = service.connect();
    char byte = 0;
    boost::system::error_code error;
    boost::asio::read(beyond, boost::asio::buffer(&byte, 1), error);
    EXPECT_TRUE(error == boost::asio::error::eof || error == boost::asio::error::connection_reset)
        << error.message();

    const std::string health = "GET /api/ic/h HTTP/1.1\r\nHost: x\r\n\r\n";
    boost::asio::write(open.front(), boost::asio::buffer(health));
    EXPECT_EQ(boost::asio::read(open.front(), boost::asio::buffer(&byte, 1)), 1U)
        << "those inside are served";
}

TEST(Misbehaviour, WhatIsNoPictureIsNotShown) {
    Service service;
    service.startSession();
    ProtoMessageList list;
    const std::string whole = jpeg(390, 844);
    for (const std::string& image :
         {std::string(), std::string("GIF89a"), whole.substr(0, whole.size() - 1),
          std::string("\xFF\xD8\xFF\xD9"), jpeg(0, 844), jpeg(30'000, 30'000), jpeg(390, 844, 3U << 20U)}) {
        list.add_messages()->add_screenshotevent()->set_image(image);
    }
    EXPECT_EQ(service.post(list).status, 200U);
    EXPECT_EQ(service.visitor()["counters"]["frames"], 0);
    EXPECT_EQ(service.visitor()["counters"]["invalidFrames"], 7);
    EXPECT_EQ(service.request("GET", "/console/api/visitors/1/frame.jpg").status, 404U);
}

TEST(Misbehaviour, HostileTextsAndNumbersStayHarmless) {
    Service service;
    service.startSession();
    ProtoMessageList list;
    list.add_messages()->set_pagechange(std::string(100'000, 'p') + "\xFF");
    list.add_messages()->set_tag("\xC3(");
    list.mutable_messages(1)->set_time(std::numeric_limits<std::uint64_t>::max());
    auto* tap = list.add_messages()->add_clickevent();
    tap->set_x(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(service.post(list).status, 200U);
    EXPECT_LE(service.visitor()["page"].get<std::string>().size(), 512U);
    EXPECT_EQ(service.timeline("tag"), std::vector<std::string>{"\xEF\xBF\xBD("});
    EXPECT_TRUE(service.timeline("tap").empty());
}

// Two bytes each on the wire, a hundred and more in memory.
TEST(Misbehaviour, SmallBodiesCannotUnfoldIntoMillionsOfObjects) {
    std::string messages;
    for (int i = 0; i < 60'000; ++i)
        messages += std::string("\x0A\x00", 2);
    EXPECT_FALSE(decodeEvents(messages));
    std::string labels;
    for (int i = 0; i < 60'000; ++i)
        labels += std::string("\x2A\x00", 2);
    ProtoMessageList list;
    ASSERT_TRUE(list.add_messages()->add_usertag()->ParseFromString(labels));
    EXPECT_FALSE(decodeEvents(list.SerializeAsString()));
    list.mutable_messages(0)->mutable_usertag(0)->mutable_label()->DeleteSubrange(0, 20'000);
    EXPECT_TRUE(decodeEvents(list.SerializeAsString()));
    EXPECT_TRUE(decodeEvents(""));
}

}  // namespace
}  // namespace merovanta::devservice::test
