#include "Service.h"

#include <gtest/gtest.h>

#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

namespace merovanta::devservice::test {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;

std::string jpeg(int width, int height, std::size_t bytes) {
    const auto high = [](int value) { return static_cast<char>(value >> 8); };
    const auto low = [](int value) { return static_cast<char>(value & 0xFF); };
    std::string result("\xFF\xD8\xFF\xC0\x00\x0B\x08", 7);
    result += {high(height), low(height), high(width), low(width)};
    result += std::string("\x01\x01\x11\x00\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00", 14);
    result.resize(std::max(result.size(), bytes), '\x55');
    return result + "\xFF\xD9";
}

namespace {
Options onFreePort(Options options) {
    options.port = 0;
    return options;
}
}  // namespace

Service::Service(Options options) : server_(onFreePort(std::move(options)), log_) {
    const auto problem = server_.open();
    EXPECT_FALSE(problem) << *problem;
    thread_ = std::thread([this] { server_.run(); });
}

Service::~Service() {
    server_.stop();
    thread_.join();
}

tcp::socket Service::connect() {
    tcp::socket socket(client_);
    socket.connect({asio::ip::address_v4::loopback(), port()});
    return socket;
}

Reply Service::request(const std::string& method, const std::string& target, const std::string& body,
                       const Headers& headers) {
    tcp::socket socket = connect();
    http::request<http::string_body> message;
    message.method_string(method);
    message.target(target);
    message.set(http::field::host, "127.0.0.1:" + std::to_string(port()));
    for (const auto& [name, value] : headers)
        message.set(name, value);
    message.body() = body;
    message.prepare_payload();
    boost::system::error_code ignored;  // the service may refuse before it has read everything
    http::write(socket, message, ignored);
    boost::beast::flat_buffer buffer;
    http::response<http::string_body> response;
    http::read(socket, buffer, response);
    Reply reply{response.result_int(), response.body(), {}};
    for (const auto& field : response)
        reply.headers[std::string(field.name_string())] = std::string(field.value());
    return reply;
}

std::string Service::exchange(const std::string& bytes) {
    tcp::socket socket = connect();
    asio::write(socket, asio::buffer(bytes));
    std::string received;
    boost::system::error_code end;
    asio::read(socket, asio::dynamic_buffer(received), end);
    return received;
}

void Service::startSession() {
    const nlohmann::json record = {
        {"shId", "48213"},    {"qdu", ""},
        {"url", "LoginPage"}, {"start", 1000},
        {"init", false},      {"page", {{"width", 390}, {"height", 844}, {"docHeight", 0}, {"docWidth", 0}}},
        {"vId", "V"},         {"sId", "S"},
        {"viId", "VISIT"},    {"tId", "T"},
        {"optin", false}};
    EXPECT_EQ(request("POST", "/api/in/im/c", record.dump(), {{"X-QD-SSID", "S"}}).status, 200U);
    EXPECT_EQ(request("GET", kStream, {}, {{"X-QD-SSID", "S"}}).status, 200U);
}

Reply Service::post(const ProtoMessageList& events) {
    return post(events.SerializeAsString());
}

Reply Service::post(const std::string& body) {
    return request("POST", kStream, body, {{"X-QD-SSID", "S"}});
}

std::vector<std::string> Service::timeline(const std::string& kind) {
    std::vector<std::string> texts;
    const nlohmann::json entries = request("GET", "/console/api/visitors/1/timeline").json();
    for (const auto& entry : entries) {
        if (entry["kind"] == kind) texts.push_back(entry["text"]);
    }
    return texts;
}

}  // namespace merovanta::devservice::test
