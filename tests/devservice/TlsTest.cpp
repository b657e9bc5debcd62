#include <gtest/gtest.h>

#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/host_name_verification.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>
#include <boost/beast/websocket.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <cstdlib>
#include <filesystem>

#include "Service.h"

namespace merovanta::devservice::test {
namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;
namespace ssl = boost::asio::ssl;
using boost::asio::ip::tcp;
using TlsStream = beast::ssl_stream<tcp::socket>;

// Options with a fresh certificate for 127.0.0.1.
Options encrypted() {
    const std::filesystem::path directory = testing::TempDir();
    Options options;
    options.tlsCertificate = directory / "devservice-cert.pem";
    options.tlsKey = directory / "devservice-key.pem";
    const std::string command =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 1 -subj /CN=test "
        "-addext subjectAltName=IP:127.0.0.1 -keyout " +
        options.tlsKey.string() + " -out " + options.tlsCertificate.string() + " 2>/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return options;
}

ssl::context trusting(const Options& options) {
    ssl::context context(ssl::context::tls_client);
    context.load_verify_file(options.tlsCertificate.string());
    context.set_verify_mode(ssl::verify_peer);
    context.set_verify_callback(ssl::host_name_verification("127.0.0.1"));
    return context;
}

TEST(Tls, RequestsAndSocketsAreServedEncrypted) {
    const Options options = encrypted();
    Service service(options);
    ssl::context context = trusting(options);

    beast::websocket::stream<TlsStream> visitor(service.connect(), context);
    visitor.next_layer().handshake(ssl::stream_base::client);
    visitor.handshake("127.0.0.1", "/api/in/imws?tId=T&sId=S&vId=V&t=&id=&shrId=1&vsId=S&url=Secret&fsTy=l");

    TlsStream stream(service.connect(), context);
    stream.handshake(ssl::stream_base::client);
    http::request<http::string_body> request(http::verb::get, "/console/api/visitors/1", 11);
    request.set(http::field::host, "127.0.0.1");
    request.set(http::field::origin, "https://127.0.0.1");
    request.keep_alive(false);
    http::write(stream, request);
    beast::flat_buffer buffer;
    http::response<http::string_body> response;
    http::read(stream, buffer, response);
    EXPECT_EQ(nlohmann::json::parse(response.body())["page"], "Secret");
    beast::error_code end;
    stream.shutdown(end);
    EXPECT_FALSE(end) << "the service says goodbye: " << end.message();

    // A large frame takes many records; the close is a whole handshake.
    const std::string picture(3U << 20U, '\0');
    visitor.binary(true);
    visitor.write(boost::asio::buffer(picture));
    visitor.close(beast::websocket::close_code::normal, end);
    EXPECT_FALSE(end) << end.message();
}

TEST(Tls, PlainAndMistrustfulClientsAndBadFilesAreTurnedAway) {
    Options options = encrypted();
    Service service(options);
    EXPECT_EQ(service.exchange("GET /api/ic/h HTTP/1.1\r\nHost: x\r\n\r\n").find("HTTP"), std::string::npos);
    ssl::context strict(ssl::context::tls_client);
    strict.set_verify_mode(ssl::verify_peer);
    TlsStream stream(service.connect(), strict);
    beast::error_code refused;
    stream.handshake(ssl::stream_base::client, refused);
    EXPECT_TRUE(refused);

    options.port = 0;
    options.tlsKey = "nowhere.pem";
    std::ostringstream log;
    const auto problem = Server(options, log).open();
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->find("cannot use key nowhere.pem"), 0U);
}

}  // namespace
}  // namespace merovanta::devservice::test
