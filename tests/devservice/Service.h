#pragma once

#include <panoptra.pb.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "Server.h"

namespace merovanta::devservice::test {

using com::merovanta::panoptra::ProtoMessageList;

/// A JPEG of this size as far as its markers tell, padded to `bytes`.
std::string jpeg(int width, int height, std::size_t bytes = 0);

struct Reply {
    unsigned status = 0;
    std::string body;
    std::map<std::string, std::string> headers;
    nlohmann::json json() const { return nlohmann::json::parse(body, nullptr, false); }
};

/// The service on a free loopback port, and a client for it.
class Service {
 public:
    explicit Service(Options options = {});
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    using Headers = std::map<std::string, std::string>;
    Reply request(const std::string& method, const std::string& target, const std::string& body = {},
                  const Headers& headers = {});

    /// Sends bytes as they are and reads until the service closes.
    std::string exchange(const std::string& bytes);

    /// A connected socket.
    boost::asio::ip::tcp::socket connect();

    /// Initialises and opens the session "S" of the tenant "T".
    void startSession();
    Reply post(const ProtoMessageList& events);
    Reply post(const std::string& body);
    nlohmann::json visitor() { return request("GET", "/console/api/visitors/1").json(); }
    /// The texts of the timeline's entries of one kind.
    std::vector<std::string> timeline(const std::string& kind);

    std::uint16_t port() const { return server_.port(); }
    std::string log() const { return log_.str(); }
    boost::asio::io_context& client() { return client_; }

    static constexpr const char* kStream = "/api/ix/m?id=VISIT&sId=S&tId=T&vId=V&url=LoginPage&fsTy=l";

 private:
    std::ostringstream log_;
    Server server_;
    std::thread thread_;
    boost::asio::io_context client_;
};

}  // namespace merovanta::devservice::test
