#pragma once

#include "localplatform/Wire.h"

#include "async/Task.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/steady_timer.hpp>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace palvera::local {

/// One connection from a client, plain or encrypted, with HTTP/1.1 on it. Its coroutines run on the strand of the
/// socket. A connection that fails or ends ends them with an exception.
class Connection {
public:
    using Socket = boost::asio::ip::tcp::socket;

    /// Encrypted when `tls` is given, which must then outlive the connection.
    Connection(Socket socket, boost::asio::ssl::context* tls);
    ~Connection();

    /// Before anything else.
    Task<void> handshake();

    /// The head of the next request; nothing when the client has closed.
    Task<std::optional<RequestHead>> readHead();
    /// The length of the body of the request whose head was read last.
    qint64 bodyLength() const { return m_bodyLength; }
    /// Whether the client sends more after this answer.
    bool keepsAlive() const { return m_keepsAlive; }

    /// At least one and at most `into.size()` bytes of the body.
    Task<std::size_t> readBody(std::span<char> into);
    /// Lets `count` bytes of the body pass unread. Of a plain connection they never leave the kernel.
    Task<void> skipBody(qint64 count);

    /// Sends the head of `reply`, announcing `length` bytes of body.
    Task<void> writeHead(const Reply& reply, qint64 length);
    Task<void> write(std::span<const char> bytes);
    /// Sends `reply` whole.
    Task<void> answer(const Reply& reply);

    Task<void> wait(std::chrono::milliseconds duration);
    /// Keeps still until the client gives up.
    Task<void> stall();
    /// Cuts the connection so that the client meets an error.
    void reset();
    /// Ends the connection in order, wherever the conversation is.
    void close();

private:
    struct Tls;

    Task<std::size_t> read(std::span<char> into);
    Task<void> waitFor(Socket::wait_type direction);
    std::size_t takeBuffered(std::span<char> into);

    Socket m_socket;
    boost::asio::steady_timer m_timer;
    std::unique_ptr<Tls> m_tls;
    std::vector<char> m_buffer; // what was read beyond a head
    std::size_t m_bufferFrom = 0;
    std::size_t m_bufferTo = 0;
    qint64 m_bodyLength = 0;
    bool m_keepsAlive = true;
};

} // namespace palvera::local
