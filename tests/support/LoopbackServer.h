#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <openssl/ssl.h>

#include <poll.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <semaphore>
#include <thread>
#include <vector>

namespace palvera {

/// Opened by a server's script and waited for by a test, or the other way round: with `try_acquire_for`, so that a
/// failing test ends. Each wait takes one opening.
using Gate = std::counting_semaphore<>;

/// A certificate for 127.0.0.1 alone that vouches for itself.
class TestCertificate {
public:
    /// As the subject alternative name, or only as the common name of the subject, as it was done once.
    enum class Named { properly, byCommonName };

    explicit TestCertificate(Named named = Named::properly);
    /// Holds the certificate, for those who are to trust it, and its key.
    QString file() const { return m_folder.filePath("certificate.pem"); }

private:
    QTemporaryDir m_folder;
};

/// Listens on a free port of 127.0.0.1 and lets a script deal with each connection on a thread of its own. Everything
/// blocks; the destructor cuts all connections, which ends every wait in a script.
class LoopbackServer {
public:
    struct Request;
    class Connection;
    using Script = std::function<void(Connection&)>;

    /// Encrypts with `certificate` unless that is null. The kernel takes in `receiveBuffer` bytes ahead of the script;
    /// 0 is its own choice.
    explicit LoopbackServer(Script script, const TestCertificate* certificate = nullptr, int receiveBuffer = 0);
    ~LoopbackServer();

    int port() const { return m_port; }
    QByteArray url(const QByteArray& pathAndQuery) const;
    /// How many connections have come so far.
    int connections() const { return m_connections; }

private:
    void acceptAll();
    void serve(int socket);

    const Script m_script;
    std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> m_tls{nullptr, &SSL_CTX_free};
    int m_listener = -1;
    int m_port = 0;
    std::thread m_acceptor;
    std::vector<std::thread> m_threads; // touched by the acceptor, and once it has ended
    std::atomic<int> m_connections = 0;
    std::mutex m_lock;
    std::vector<int> m_open; // guarded by m_lock
};

/// A request as a script sees it.
struct LoopbackServer::Request {
    QByteArray head; ///< first line and headers, up to and with the empty line; empty when the client has gone
    QByteArray body = {};

    QByteArray path() const { return head.split(' ').value(1); }
    /// The value of a header, or an empty array.
    QByteArray header(const QByteArray& name) const;
    qint64 length() const { return header("Content-Length").toLongLong(); }
};

/// One connection as a script sees it.
class LoopbackServer::Connection {
public:
    Connection(int socket, SSL* tls) : m_socket(socket), m_tls(tls) {}

    /// The next request, without its body.
    Request readHead();
    /// The next request.
    Request read();
    /// Reads and forgets `count` bytes. False when the client goes first.
    bool discard(qint64 count);
    void write(const QByteArray& bytes);
    /// What the connection is encrypted with, by the name that TLS has for it.
    QByteArray cipher() const { return SSL_get_cipher_name(m_tls); }
    /// Waits for so long, at most until the client goes; false then.
    bool stay(int milliseconds) { return lookFor(milliseconds) == 0; }
    /// Waits until the client goes and says whether it cut the connection off instead of closing it.
    bool waitForReset() { return (lookFor(10'000) & POLLERR) != 0; }

private:
    bool receive();
    QByteArray take(qsizetype count);
    short lookFor(int milliseconds);

    int m_socket;
    SSL* m_tls;
    QByteArray m_ahead; // received beyond what was asked for
};

/// Reads whole requests and answers each with what `reply` makes of it, until the client goes.
LoopbackServer::Script answering(std::function<QByteArray(const LoopbackServer::Request&)> reply);
/// The same with one answer for all.
LoopbackServer::Script answering(const QByteArray& reply);

/// An answer with a status line, `headers` (each ending in "\r\n"), a length and a body.
QByteArray answer(const QByteArray& statusAndReason, const QByteArray& body = {}, const QByteArray& headers = {});

} // namespace palvera
