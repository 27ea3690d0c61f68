#include "support/LoopbackServer.h"

#include <openssl/err.h>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace palvera {

namespace {

void require(bool holds, const char* what)
{
    if (!holds)
        throw std::runtime_error(what);
}

} // namespace

TestCertificate::TestCertificate(Named named)
{
    const std::string name = named == Named::properly ? "/CN=loopback -addext subjectAltName=IP:127.0.0.1"
                                                      : "/CN=127.0.0.1 -addext subjectAltName=email:a@b.test";
    const std::string make = "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 1 -subj " +
                             name + " 2>/dev/null -keyout - -out - >";
    require(std::system((make + file().toStdString()).c_str()) == 0, "certificate");
}

LoopbackServer::LoopbackServer(Script script, const TestCertificate* certificate, int receiveBuffer)
    : m_script(std::move(script))
{
    if (certificate) {
        m_tls.reset(SSL_CTX_new(TLS_server_method()));
        const auto file = certificate->file().toLocal8Bit();
        require(SSL_CTX_use_certificate_file(m_tls.get(), file, SSL_FILETYPE_PEM) == 1 &&
                    SSL_CTX_use_PrivateKey_file(m_tls.get(), file, SSL_FILETYPE_PEM) == 1,
                "key");
    }
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (receiveBuffer > 0)
        ::setsockopt(m_listener, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    sockaddr_in address{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
    socklen_t length = sizeof address;
    auto* where = reinterpret_cast<sockaddr*>(&address);
    require(::bind(m_listener, where, length) == 0 && ::listen(m_listener, SOMAXCONN) == 0, "listen");
    ::getsockname(m_listener, where, &length);
    m_port = ntohs(address.sin_port);
    m_acceptor = std::thread([this] { acceptAll(); });
}

LoopbackServer::~LoopbackServer()
{
    ::shutdown(m_listener, SHUT_RDWR); // ends the accept
    m_acceptor.join();
    {
        std::lock_guard guard(m_lock);
        for (int socket : m_open)
            ::shutdown(socket, SHUT_RDWR);
    }
    for (auto& thread : m_threads)
        thread.join();
    ::close(m_listener);
}

QByteArray LoopbackServer::url(const QByteArray& pathAndQuery) const
{
    return (m_tls ? "https://127.0.0.1:" : "http://127.0.0.1:") + QByteArray::number(m_port) + pathAndQuery;
}

void LoopbackServer::acceptAll()
{
    // A write to a client that has gone must not end the tests; the client under test gets no such help.
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    for (;;) {
        int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0 && errno == EMFILE) { // a test has used up the descriptors; the client stays in the queue
            ::poll(nullptr, 0, 1);
            continue;
        }
        if (socket < 0)
            return;
        ++m_connections;
        {
            std::lock_guard guard(m_lock);
            m_open.push_back(socket);
        }
        m_threads.emplace_back([this, socket] { serve(socket); });
    }
}

void LoopbackServer::serve(int socket)
{
    int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    std::unique_ptr<SSL, decltype(&SSL_free)> tls(m_tls ? SSL_new(m_tls.get()) : nullptr, &SSL_free);
    if (tls)
        SSL_set_fd(tls.get(), socket);
    Connection connection(socket, tls.get());
    if (!tls || SSL_accept(tls.get()) == 1)
        m_script(connection);
    ERR_clear_error();
    std::lock_guard guard(m_lock);
    std::erase(m_open, socket);
    ::close(socket);
}

QByteArray LoopbackServer::Request::header(const QByteArray& name) const
{
    for (const auto& line : head.split('\n'))
        if (line.first(std::max<qsizetype>(line.indexOf(':'), 0)).compare(name, Qt::CaseInsensitive) == 0)
            return line.sliced(line.indexOf(':') + 1).trimmed();
    return {};
}

bool LoopbackServer::Connection::receive()
{
    char bytes[16 << 10];
    const auto count = m_tls ? SSL_read(m_tls, bytes, sizeof bytes) : ::recv(m_socket, bytes, sizeof bytes, 0);
    m_ahead.append(bytes, std::max<qsizetype>(count, 0));
    return count > 0;
}

QByteArray LoopbackServer::Connection::take(qsizetype count)
{
    const auto taken = m_ahead.first(std::min(count, m_ahead.size()));
    m_ahead.remove(0, taken.size());
    return taken;
}

LoopbackServer::Request LoopbackServer::Connection::readHead()
{
    while (!m_ahead.contains("\r\n\r\n"))
        if (!receive())
            return {};
    return {.head = take(m_ahead.indexOf("\r\n\r\n") + 4)};
}

LoopbackServer::Request LoopbackServer::Connection::read()
{
    auto request = readHead();
    const auto length = request.length();
    while (m_ahead.size() < length)
        if (!receive())
            return {};
    request.body = take(length);
    return request;
}

bool LoopbackServer::Connection::discard(qint64 count)
{
    while (count > 0) {
        if (m_ahead.isEmpty() && !receive())
            return false;
        count -= take(count).size();
    }
    return true;
}

void LoopbackServer::Connection::write(const QByteArray& bytes)
{
    // Both block until all of it is out or the client has gone.
    m_tls ? SSL_write(m_tls, bytes.constData(), int(bytes.size()))
          : int(::send(m_socket, bytes.constData(), std::size_t(bytes.size()), 0));
}

short LoopbackServer::Connection::lookFor(int milliseconds)
{
    pollfd gone{.fd = m_socket, .events = POLLRDHUP, .revents = 0};
    ::poll(&gone, 1, milliseconds);
    return gone.revents;
}

LoopbackServer::Script answering(std::function<QByteArray(const LoopbackServer::Request&)> reply)
{
    return [reply = std::move(reply)](LoopbackServer::Connection& connection) {
        for (auto request = connection.read(); !request.head.isEmpty(); request = connection.read())
            connection.write(reply(request));
    };
}

LoopbackServer::Script answering(const QByteArray& reply)
{
    return answering([reply](const LoopbackServer::Request&) { return reply; });
}

QByteArray answer(const QByteArray& statusAndReason, const QByteArray& body, const QByteArray& headers)
{
    return "HTTP/1.1 " + statusAndReason + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) +
           "\r\n\r\n" + body;
}

} // namespace palvera
