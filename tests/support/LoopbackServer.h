#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QList>
#include <QTemporaryDir>

#include <openssl/ssl.h>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace palvera {

/// A door between a test and a server's script. Any thread.
class Gate {
public:
    void open();
    /// Waits until somebody has opened it; gives up after ten seconds, so that a failing test ends.
    bool wait();

private:
    std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_open = false;
};

/// A certificate for 127.0.0.1 and localhost that vouches for itself, in files of a folder of its own.
class TestCertificate {
public:
    TestCertificate();
    QString certificateFile() const { return m_folder.filePath(QStringLiteral("certificate.pem")); }
    QString keyFile() const { return m_folder.filePath(QStringLiteral("key.pem")); }

private:
    QTemporaryDir m_folder;
};

/// Listens on a free port of 127.0.0.1 and lets a script deal with each connection on a thread of its own. Everything
/// blocks; the destructor cuts all connections, which ends every wait in a script.
class LoopbackServer {
public:
    class Connection;
    using Script = std::function<void(Connection&)>;
    struct Options {
        const TestCertificate* certificate = nullptr; ///< encrypted when set
        int receiveBuffer = 0;                        ///< bytes the kernel takes in ahead of the script; 0: its own
    };

    explicit LoopbackServer(Script script) : LoopbackServer(std::move(script), Options{}) {}
    LoopbackServer(Script script, Options options);
    ~LoopbackServer();

    int port() const { return m_port; }
    QByteArray url(const QByteArray& pathAndQuery) const;
    /// How many connections have come so far.
    int connections() const;

private:
    void listen(const Options& options);
    void acceptAll();
    void serve(int socket);

    Script m_script;
    std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> m_tls{nullptr, &SSL_CTX_free};
    int m_listener = -1;
    int m_port = 0;
    std::thread m_acceptor;
    std::vector<std::thread> m_threads; // touched by the acceptor, and once it has ended
    mutable std::mutex m_lock;
    // Guarded by m_lock.
    int m_connections = 0;
    std::vector<int> m_open;
};

/// One connection as a script sees it.
class LoopbackServer::Connection {
public:
    Connection(int socket, SSL* tls) : m_socket(socket), m_tls(tls) {}

    /// The next request's first line and headers, up to and with the empty line; empty when the client has gone.
    QByteArray readHead();
    /// Up to `count` bytes of the body, fewer when the client goes first.
    QByteArray readBody(qint64 count);
    /// Reads and forgets `count` bytes. False when the client goes first.
    bool discard(qint64 count);
    /// Reads whole requests and answers each with `answer`, until the client goes.
    void answerAll(const QByteArray& answer);
    void write(const QByteArray& bytes);
    /// What the connection is encrypted with, by the name that TLS has for it; empty when it is not.
    QByteArray cipher() const { return m_tls ? SSL_get_cipher_name(m_tls) : ""; }
    /// Waits for so long, at most until the client goes; false then.
    bool stay(int milliseconds);
    /// Waits until the client goes and says whether it cut the connection off instead of closing it.
    bool waitForReset();

private:
    qint64 receive(char* into, qint64 room);
    qint64 receiveFromNetwork(char* into, qint64 room);

    int m_socket;
    SSL* m_tls;
    QByteArray m_ahead; // received beyond what was asked for
};

/// The value of a header of `head`, or an empty array.
QByteArray headerOf(const QByteArray& head, const QByteArray& name);

/// An answer with a status line, `headers` (each ending in "\r\n"), a length and a body.
QByteArray answer(const QByteArray& statusAndReason, const QByteArray& body = {}, const QByteArray& headers = {});

} // namespace palvera
