#include "SocketClient.h"

#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket.hpp>

namespace merovanta::devservice::test {

namespace websocket = boost::beast::websocket;
using boost::asio::ip::tcp;

SocketClient::SocketClient(Service& service, const std::string& target, const Service::Headers& headers)
    : socket_(service.client()) {
    tcp::socket& tcp = socket_.next_layer();
    tcp.open(tcp::v4());
    // Small, so that a client that does not read is soon one that cannot keep up.
    tcp.set_option(tcp::socket::receive_buffer_size(64 * 1024));
    tcp.connect({boost::asio::ip::address_v4::loopback(), service.port()});
    socket_.read_message_max(0);
    socket_.set_option(websocket::stream_base::decorator([headers](websocket::request_type& request) {
        for (const auto& [name, value] : headers)
            request.set(name, value);
    }));
    websocket::response_type response;
    socket_.handshake(response, "127.0.0.1:" + std::to_string(service.port()), target, error_);
    status_ = response.result_int();
}

void SocketClient::send(const std::string& bytes, bool binary) {
    socket_.binary(binary);
    boost::beast::error_code ignored;  // the service may close before it has read everything
    socket_.write(boost::asio::buffer(bytes), ignored);
}

std::string SocketClient::read() {
    boost::beast::flat_buffer buffer;
    socket_.read(buffer, error_);
    return boost::beast::buffers_to_string(buffer.data());
}

nlohmann::json SocketClient::next(const std::function<bool(const nlohmann::json&)>& fits) {
    while (!error_) {
        const std::string message = read();
        if (error_ || gotBinary()) continue;
        nlohmann::json parsed = nlohmann::json::parse(message);
        if (fits(parsed)) return parsed;
    }
    return nlohmann::json(nlohmann::json::value_t::discarded);
}

unsigned SocketClient::closeCode() {
    while (!error_)
        read();
    // The answer to the service's close frame may find the connection gone; the frame has come all the same.
    return socket_.reason().code;
}

void SocketClient::disconnect() {
    socket_.close(websocket::close_code::normal, error_);
}

}  // namespace merovanta::devservice::test
