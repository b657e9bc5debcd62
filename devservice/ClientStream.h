#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/error.hpp>
#include <boost/beast/core/role.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <boost/beast/websocket/teardown.hpp>
#include <utility>
#include <variant>

namespace merovanta::devservice {

/// A client's connection, encrypted or not, as one type for what runs over it. Its time limits are those of
/// `tcp()`, whose completion handlers this class uses throughout.
class ClientStream {
 public:
    using executor_type = boost::beast::tcp_stream::executor_type;
    using ErrorCode = boost::beast::error_code;

    /// Encrypted unless `tls` is null; it must outlive the stream.
    ClientStream(boost::asio::ip::tcp::socket socket, boost::asio::ssl::context* tls)
        : layer_(tls == nullptr ? Layer(std::in_place_type<Plain>, std::move(socket))
                                : Layer(std::in_place_type<Encrypted>, std::move(socket), *tls)) {}

    executor_type get_executor() { return tcp().get_executor(); }

    bool isEncrypted() const { return std::holds_alternative<Encrypted>(layer_); }

    boost::beast::tcp_stream& tcp() {
        auto* const encrypted = std::get_if<Encrypted>(&layer_);
        return encrypted == nullptr ? std::get<Plain>(layer_) : encrypted->next_layer();
    }

    // The names below are those that the stream concepts want.

    boost::beast::tcp_stream& next_layer() { return tcp(); }

    template <class Buffers, class Handler>
    void async_read_some(const Buffers& buffers, Handler&& handler) {
        std::visit([&](auto& layer) { layer.async_read_some(buffers, std::forward<Handler>(handler)); },
                   layer_);
    }

    template <class Buffers, class Handler>
    void async_write_some(const Buffers& buffers, Handler&& handler) {
        std::visit([&](auto& layer) { layer.async_write_some(buffers, std::forward<Handler>(handler)); },
                   layer_);
    }

    /// Agrees on the encryption, if there is any; the first thing to be done.
    template <class Handler>
    void open(Handler&& handler) {
        auto* const encrypted = std::get_if<Encrypted>(&layer_);
        if (encrypted == nullptr) return std::forward<Handler>(handler)(ErrorCode());
        encrypted->async_handshake(boost::asio::ssl::stream_base::server, std::forward<Handler>(handler));
    }

    /// Tells the client that nothing more comes; the last thing to be done.
    template <class Handler>
    void finish(Handler&& handler) {
        if (auto* const encrypted = std::get_if<Encrypted>(&layer_)) {
            return encrypted->async_shutdown(std::forward<Handler>(handler));
        }
        ErrorCode error;
        tcp().socket().shutdown(boost::asio::ip::tcp::socket::shutdown_send, error);
        std::forward<Handler>(handler)(error);
    }

    /// Ends the connection under a WebSocket.
    template <class Handler>
    friend void async_teardown(boost::beast::role_type role, ClientStream& stream, Handler&& handler) {
        using boost::beast::websocket::async_teardown;
        std::visit([&](auto& layer) { async_teardown(role, layer, std::forward<Handler>(handler)); },
                   stream.layer_);
    }

 private:
    using Plain = boost::beast::tcp_stream;
    using Encrypted = boost::asio::ssl::stream<boost::beast::tcp_stream>;
    using Layer = std::variant<Plain, Encrypted>;

    Layer layer_;
};

}  // namespace merovanta::devservice
