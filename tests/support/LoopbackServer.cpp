#include "support/LoopbackServer.h"

#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <stdexcept>

namespace palvera {

namespace {

void require(bool holds, const char* what)
{
    if (!holds)
        throw std::runtime_error(what);
}

void addExtension(X509* certificate, int kind, const char* value)
{
    X509V3_CTX context;
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    auto* extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value);
    require(extension && X509_add_ext(certificate, extension, -1) == 1, "certificate extension");
    X509_EXTENSION_free(extension);
}

template <class Write>
void writePem(const QString& path, Write write)
{
    auto* file = std::fopen(path.toLocal8Bit().constData(), "w");
    require(file && write(file) == 1, "pem file");
    std::fclose(file);
}

} // namespace

void Gate::open()
{
    std::lock_guard guard(m_lock);
    m_open = true;
    m_changed.notify_all();
}

bool Gate::wait()
{
    std::unique_lock guard(m_lock);
    return m_changed.wait_for(guard, std::chrono::seconds(10), [this] { return m_open; });
}

TestCertificate::TestCertificate()
{
    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_EC_gen("P-256"), &EVP_PKEY_free);
    std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), &X509_free);
    require(key && certificate && m_folder.isValid(), "certificate");
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 86'400);
    X509_set_pubkey(certificate.get(), key.get());
    auto* name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("loopback"), -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    addExtension(certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
    addExtension(certificate.get(), NID_subject_alt_name, "IP:127.0.0.1,DNS:localhost");
    require(X509_sign(certificate.get(), key.get(), EVP_sha256()) > 0, "certificate signature");
    writePem(certificateFile(), [&](FILE* file) { return PEM_write_X509(file, certificate.get()); });
    writePem(keyFile(),
             [&](FILE* file) { return PEM_write_PrivateKey(file, key.get(), nullptr, nullptr, 0, nullptr, nullptr); });
}

LoopbackServer::LoopbackServer(Script script, Options options) : m_script(std::move(script))
{
    if (options.certificate) {
        m_tls.reset(SSL_CTX_new(TLS_server_method()));
        auto file = options.certificate->certificateFile().toLocal8Bit();
        auto key = options.certificate->keyFile().toLocal8Bit();
        require(SSL_CTX_use_certificate_file(m_tls.get(), file.constData(), SSL_FILETYPE_PEM) == 1, "certificate");
        require(SSL_CTX_use_PrivateKey_file(m_tls.get(), key.constData(), SSL_FILETYPE_PEM) == 1, "key");
    }
    listen(options);
    m_acceptor = std::thread([this] { acceptAll(); });
}

void LoopbackServer::listen(const Options& options)
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (options.receiveBuffer > 0)
        ::setsockopt(m_listener, SOL_SOCKET, SO_RCVBUF, &options.receiveBuffer, sizeof options.receiveBuffer);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    require(::bind(m_listener, reinterpret_cast<sockaddr*>(&address), length) == 0 &&
                ::listen(m_listener, SOMAXCONN) == 0,
            "listen");
    ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &length);
    m_port = ntohs(address.sin_port);
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

int LoopbackServer::connections() const
{
    std::lock_guard guard(m_lock);
    return m_connections;
}

void LoopbackServer::acceptAll()
{
    for (;;) {
        int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0 && errno == EMFILE) { // a test has used up the descriptors; the client stays in the queue
            ::poll(nullptr, 0, 1);
            continue;
        }
        if (socket < 0)
            return;
        {
            std::lock_guard guard(m_lock);
            ++m_connections;
            m_open.push_back(socket);
        }
        m_threads.emplace_back([this, socket] { serve(socket); });
    }
}

void LoopbackServer::serve(int socket)
{
    // A write to a client that has gone must not end the tests; the client under test gets no such help.
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
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

qint64 LoopbackServer::Connection::receiveFromNetwork(char* into, qint64 room)
{
    if (m_tls)
        return SSL_read(m_tls, into, int(room));
    return ::recv(m_socket, into, size_t(room), 0);
}

qint64 LoopbackServer::Connection::receive(char* into, qint64 room)
{
    if (m_ahead.isEmpty())
        return receiveFromNetwork(into, room);
    auto count = std::min(room, qint64(m_ahead.size()));
    std::copy_n(m_ahead.constData(), count, into);
    m_ahead.remove(0, count);
    return count;
}

QByteArray LoopbackServer::Connection::readHead()
{
    QByteArray text = std::exchange(m_ahead, {});
    char bytes[4096];
    while (!text.contains("\r\n\r\n")) {
        auto count = receiveFromNetwork(bytes, sizeof bytes);
        if (count <= 0)
            return {};
        text.append(bytes, count);
    }
    auto end = text.indexOf("\r\n\r\n") + 4;
    m_ahead = text.sliced(end);
    return text.first(end);
}

QByteArray LoopbackServer::Connection::readBody(qint64 count)
{
    QByteArray body(count, '\0');
    qint64 got = 0;
    while (got < count) {
        auto more = receive(body.data() + got, count - got);
        if (more <= 0)
            break;
        got += more;
    }
    return body.first(got);
}

bool LoopbackServer::Connection::discard(qint64 count)
{
    while (count > 0) {
        auto got = readBody(std::min(count, qint64(1) << 16)).size();
        if (got == 0)
            return false;
        count -= got;
    }
    return true;
}

void LoopbackServer::Connection::answerAll(const QByteArray& answer)
{
    for (;;) {
        auto head = readHead();
        if (head.isEmpty() || !discard(headerOf(head, "Content-Length").toLongLong()))
            return;
        write(answer);
    }
}

void LoopbackServer::Connection::write(const QByteArray& bytes)
{
    for (qint64 done = 0; done < bytes.size();) {
        auto* from = bytes.constData() + done;
        auto room = bytes.size() - done;
        auto count = m_tls ? SSL_write(m_tls, from, int(room)) : ::send(m_socket, from, size_t(room), MSG_NOSIGNAL);
        if (count <= 0)
            return;
        done += count;
    }
}

bool LoopbackServer::Connection::stay(int milliseconds)
{
    pollfd gone{.fd = m_socket, .events = POLLRDHUP, .revents = 0};
    return ::poll(&gone, 1, milliseconds) == 0;
}

bool LoopbackServer::Connection::waitForReset()
{
    pollfd gone{.fd = m_socket, .events = POLLRDHUP, .revents = 0};
    ::poll(&gone, 1, 10'000);
    return (gone.revents & POLLERR) != 0;
}

QByteArray headerOf(const QByteArray& head, const QByteArray& name)
{
    for (const auto& line : head.split('\n'))
        if (line.first(std::max<qsizetype>(line.indexOf(':'), 0)).compare(name, Qt::CaseInsensitive) == 0)
            return line.sliced(line.indexOf(':') + 1).trimmed();
    return {};
}

QByteArray answer(const QByteArray& statusAndReason, const QByteArray& body, const QByteArray& headers)
{
    return "HTTP/1.1 " + statusAndReason + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) +
           "\r\n\r\n" + body;
}

} // namespace palvera
