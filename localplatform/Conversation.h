#pragma once

#include "localplatform/Connection.h"
#include "localplatform/Platform.h"

namespace palvera::local {

/// How a port is served.
struct ConversationTerms {
    enum class Port { service, storage };

    Port port = Port::service;
    boost::asio::ssl::context* tls = nullptr; ///< encrypts the connection; outlives it
    std::function<void()> beforeRequest = {}; ///< runs ahead of each request
    qint64 bytesPerSecond = 0;                ///< the most that storage moves on one connection; 0 is no limit
};

/// One client's requests, one after the other, until it has no more or the connection fails. Never throws for what the
/// client does. What it is given outlives it.
class Conversation {
public:
    Conversation(Connection::Socket socket, Platform& platform, const ConversationTerms& terms);

    Task<void> run();

private:
    using Moment = std::chrono::steady_clock::time_point;

    Task<void> serve();
    Task<void> serveOne();
    Task<void> call();
    Task<void> put();
    Task<void> get();
    Task<void> takeBody(PartReceiver* receiver);
    Task<void> pace(Moment began, qint64 done);
    Task<void> send(const Download& download);
    Task<void> readFaultyBody();
    Task<void> answer(Reply reply);
    Task<QByteArray> wholeBody();
    bool isCutShort() const;
    qint64 bytesPerSecond() const;
    qint64 sliceOf(qint64 left) const;

    Connection m_connection;
    Platform& m_platform;
    const ConversationTerms& m_terms;
    RequestHead m_head; // of the request that is being served
    Fault m_fault;
    bool m_over = false;       // the connection takes no further request
    std::vector<char> m_slice; // reused for every body that is kept
};

} // namespace palvera::local
