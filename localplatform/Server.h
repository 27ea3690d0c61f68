#pragma once

#include "localplatform/Conversation.h"

#include <boost/asio/cancellation_signal.hpp>
#include <boost/asio/thread_pool.hpp>

#include <list>

namespace palvera::local {

struct ServerOptions {
    unsigned short servicePort = 0; ///< 0 takes any
    unsigned short storagePort = 0;
    std::string address = "127.0.0.1"; ///< to listen at
    std::size_t threads = 4;
    QString certificate = {}; ///< PEM files: storage is encrypted when they are given
    QString key = {};
    std::function<void()> beforeRequest = {}; ///< called ahead of each request, on any of the threads
    qint64 bytesPerSecond = 0;                ///< the most that storage moves on one connection; 0 is no limit
};

/// Serves a platform: the service and the sign-in pages on one port, storage on another.
class Server {
public:
    /// Listens and serves from here on. Throws when a port is taken or a certificate does not load.
    Server(Platform& platform, ServerOptions options);
    /// Stops, within the time that a write to disk takes, whatever is stalled.
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Scheme, host and port.
    QByteArray serviceAddress() const;
    QByteArray storageAddress() const;

private:
    using Acceptor = boost::asio::ip::tcp::acceptor;
    using Strand = boost::asio::strand<boost::asio::thread_pool::executor_type>;

    /// A coroutine that runs on its own strand until it ends or is stopped.
    struct Running {
        explicit Running(Strand home) : strand(std::move(home)) {}

        Strand strand;
        boost::asio::cancellation_signal stop; // touched on the strand only
    };

    Acceptor listen(unsigned short port);
    Task<void> acceptAll(Acceptor& acceptor, const ConversationTerms& terms);
    Task<void> talk(Connection::Socket socket, const ConversationTerms& terms);
    void start(const Strand& strand, Task<void> operation);

    Platform& m_platform;
    const ServerOptions m_options;
    const std::unique_ptr<boost::asio::ssl::context> m_tls;
    const ConversationTerms m_serviceTerms;
    const ConversationTerms m_storageTerms;
    boost::asio::thread_pool m_pool;
    Acceptor m_serviceAcceptor;
    Acceptor m_storageAcceptor;

    std::mutex m_lock;
    // Guarded by m_lock.
    std::list<std::shared_ptr<Running>> m_running;
    bool m_stopping = false;
};

} // namespace palvera::local
