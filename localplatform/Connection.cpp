#include "localplatform/Connection.h"

#include <boost/asio/use_awaitable.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/status.hpp>

#include <openssl/err.h>
#include <openssl/ssl.h>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace palvera::local {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using Wait = Connection::Socket::wait_type;

namespace {

constexpr std::size_t headLimit = 64 << 10;
constexpr std::size_t tlsRecord = 16 << 10; // the most that one read of an encrypted connection gives
constexpr std::size_t tlsReadAhead = 64 << 10;
constexpr qint64 skipAtOnce = 4 << 20;

[[noreturn]] void fail(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

[[noreturn]] void ended()
{
    throw std::runtime_error("the client went away");
}

bool wouldBlock()
{
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

QByteArray bytesOf(boost::beast::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

QByteArray headText(const Reply& reply, qint64 length)
{
    auto reason = http::obsolete_reason(static_cast<http::status>(reply.status));
    QByteArray text = "HTTP/1.1 " + QByteArray::number(reply.status) + ' ' + bytesOf(reason) + "\r\n";
    for (const auto& [name, value] : reply.headers)
        text += name + ": " + value + "\r\n";
    return text + "Content-Length: " + QByteArray::number(length) + "\r\n\r\n";
}

} // namespace

/// OpenSSL on the socket itself: large records come in with few calls and no copy beside its own.
struct Connection::Tls {
    Tls(asio::ssl::context& context, int socket) : stream(SSL_new(context.native_handle()), &SSL_free)
    {
        SSL_set_fd(stream.get(), socket);
        SSL_set_read_ahead(stream.get(), 1);
        SSL_set_default_read_buffer_len(stream.get(), tlsReadAhead);
        SSL_set_mode(stream.get(), SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
        SSL_set_accept_state(stream.get());
    }

    /// What the socket must do before the call that gave `result` can go on.
    Wait waitsFor(int result) const
    {
        switch (SSL_get_error(stream.get(), result)) {
        case SSL_ERROR_WANT_READ:
            return Wait::wait_read;
        case SSL_ERROR_WANT_WRITE:
            return Wait::wait_write;
        case SSL_ERROR_ZERO_RETURN:
            ended();
        default:
            throw std::runtime_error("the encrypted connection failed");
        }
    }

    std::unique_ptr<SSL, decltype(&SSL_free)> stream;
};

Connection::Connection(Socket socket, asio::ssl::context* tls)
    : m_socket(std::move(socket)), m_timer(m_socket.get_executor()), m_buffer(headLimit)
{
    m_socket.native_non_blocking(true);
    m_socket.set_option(asio::ip::tcp::no_delay(true));
    if (tls)
        m_tls = std::make_unique<Tls>(*tls, m_socket.native_handle());
}

Connection::~Connection() = default;

Task<void> Connection::handshake()
{
    if (!m_tls)
        co_return;
    for (;;) {
        ERR_clear_error();
        int result = SSL_do_handshake(m_tls->stream.get());
        if (result == 1)
            co_return;
        co_await waitFor(m_tls->waitsFor(result));
    }
}

Task<void> Connection::waitFor(Wait direction)
{
    co_await m_socket.async_wait(direction, asio::use_awaitable);
}

/// Zero bytes mean that the client has closed.
Task<std::size_t> Connection::read(std::span<char> into)
{
    for (;;) {
        auto direction = Wait::wait_read;
        if (m_tls) {
            ERR_clear_error();
            std::size_t count = 0;
            int result = SSL_read_ex(m_tls->stream.get(), into.data(), into.size(), &count);
            if (result == 1)
                co_return count;
            direction = m_tls->waitsFor(result);
        } else {
            auto count = ::recv(m_socket.native_handle(), into.data(), into.size(), 0);
            if (count >= 0)
                co_return static_cast<std::size_t>(count);
            if (!wouldBlock())
                fail("receiving");
        }
        co_await waitFor(direction);
    }
}

Task<std::optional<RequestHead>> Connection::readHead()
{
    http::request_parser<http::empty_body> parser;
    parser.header_limit(headLimit);
    parser.body_limit(boost::none);
    while (!parser.is_header_done()) {
        boost::system::error_code problem;
        asio::const_buffer unread(m_buffer.data() + m_bufferFrom, m_bufferTo - m_bufferFrom);
        if (unread.size() > 0)
            m_bufferFrom += parser.put(unread, problem);
        if (problem && problem != http::error::need_more)
            throw boost::system::system_error(problem);
        if (parser.is_header_done())
            break;
        std::copy(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_bufferFrom),
                  m_buffer.begin() + static_cast<std::ptrdiff_t>(m_bufferTo), m_buffer.begin());
        m_bufferTo -= std::exchange(m_bufferFrom, 0);
        auto count = co_await read(std::span(m_buffer).subspan(m_bufferTo));
        if (count == 0)
            co_return std::nullopt;
        m_bufferTo += count;
    }
    const auto& message = parser.get();
    m_bodyLength = static_cast<qint64>(parser.content_length().value_or(0));
    m_keepsAlive = message.keep_alive();
    RequestHead head{.method = bytesOf(message.method_string()), .target = bytesOf(message.target())};
    for (const auto& field : message)
        head.headers.emplaceBack(bytesOf(field.name_string()), bytesOf(field.value()));
    co_return head;
}

std::size_t Connection::takeBuffered(std::span<char> into)
{
    auto count = std::min(into.size(), m_bufferTo - m_bufferFrom);
    std::copy_n(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_bufferFrom), count, into.begin());
    m_bufferFrom += count;
    return count;
}

Task<std::size_t> Connection::readBody(std::span<char> into)
{
    if (auto count = takeBuffered(into); count > 0)
        co_return count;
    auto count = co_await read(into);
    if (count == 0)
        ended();
    co_return count;
}

Task<void> Connection::skipBody(qint64 count)
{
    auto buffered = std::min(count, static_cast<qint64>(m_bufferTo - m_bufferFrom));
    m_bufferFrom += static_cast<std::size_t>(buffered);
    count -= buffered;
    std::vector<char> scrap(m_tls && count > 0 ? tlsRecord : 0);
    while (m_tls && count > 0) {
        auto most = std::min(scrap.size(), static_cast<std::size_t>(count));
        auto got = co_await read(std::span(scrap).first(most));
        if (got == 0)
            ended();
        count -= static_cast<qint64>(got);
    }
    while (count > 0) {
        auto most = static_cast<std::size_t>(std::min(count, skipAtOnce));
        auto got = ::recv(m_socket.native_handle(), nullptr, most, MSG_TRUNC); // dropped in the kernel, never copied
        if (got == 0)
            ended();
        if (got < 0 && !wouldBlock())
            fail("receiving");
        if (got < 0)
            co_await waitFor(Wait::wait_read);
        else
            count -= got;
    }
}

Task<void> Connection::write(std::span<const char> bytes)
{
    while (!bytes.empty()) {
        auto direction = Wait::wait_write;
        if (m_tls) {
            ERR_clear_error();
            std::size_t count = 0;
            int result = SSL_write_ex(m_tls->stream.get(), bytes.data(), bytes.size(), &count);
            bytes = bytes.subspan(count);
            if (result == 1)
                continue;
            direction = m_tls->waitsFor(result);
        } else {
            auto count = ::send(m_socket.native_handle(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count < 0 && !wouldBlock())
                fail("sending");
            bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
            if (count >= 0)
                continue;
        }
        co_await waitFor(direction);
    }
}

Task<void> Connection::writeHead(const Reply& reply, qint64 length)
{
    auto text = headText(reply, length);
    co_await write({text.data(), static_cast<std::size_t>(text.size())});
}

Task<void> Connection::answer(const Reply& reply)
{
    auto text = headText(reply, reply.body.size()) + reply.body;
    co_await write({text.data(), static_cast<std::size_t>(text.size())});
}

Task<void> Connection::wait(std::chrono::milliseconds duration)
{
    if (duration.count() <= 0)
        co_return;
    m_timer.expires_after(duration);
    co_await m_timer.async_wait(asio::use_awaitable);
}

Task<void> Connection::stall()
{
    for (;;) {
        tcp_info state{};
        socklen_t size = sizeof state;
        if (::getsockopt(m_socket.native_handle(), IPPROTO_TCP, TCP_INFO, &state, &size) != 0 ||
            state.tcpi_state != TCP_ESTABLISHED)
            ended();
        co_await wait(std::chrono::milliseconds(100));
    }
}

void Connection::reset()
{
    boost::system::error_code ignored; // the client may have gone first
    m_socket.set_option(asio::socket_base::linger(true, 0), ignored);
    m_socket.close(ignored);
}

void Connection::close()
{
    boost::system::error_code ignored; // the client may have gone first
    m_socket.shutdown(Socket::shutdown_send, ignored);
    m_socket.close(ignored);
}

} // namespace palvera::local
