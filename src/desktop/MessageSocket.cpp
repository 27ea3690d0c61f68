#include "desktop/MessageSocket.h"

#include "files/FileDescriptor.h"

#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>

#include <algorithm>
#include <chrono>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 2s;                                      // with a program that takes nothing
constexpr auto longestTalk = 5s;                                   // of one that has something to say
constexpr qint64 longestWhole = MessageSocket::longestMessage + 1; // with the line end that marks it whole

} // namespace

MessageSocket::MessageSocket(const QString& path, std::function<void(const QByteArray&)> onMessage)
    : m_onMessage(std::make_shared<const OnMessage>(std::move(onMessage))), m_server(new QLocalServer)
{
    QLocalServer::removeServer(path);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(m_server, &QLocalServer::newConnection, m_server, [this] {
        while (auto* peer = m_server->nextPendingConnection())
            serve(peer);
    });
    m_server->listen(path);
}

MessageSocket::~MessageSocket()
{
    QObject::disconnect(m_server, nullptr, m_server, nullptr);
    m_server->close();
    m_server->deleteLater(); // one of its own signals may have led here
}

/// A message is what comes until the peer closes, less the line end that marks it whole.
void MessageSocket::serve(QLocalSocket* peer)
{
    const auto drop = [peer] {
        QObject::disconnect(peer, &QLocalSocket::disconnected, nullptr, nullptr); // it is not heard
        peer->abort();
        peer->deleteLater();
    };
    peer->setReadBufferSize(longestWhole + 1);
    QTimer::singleShot(longestTalk, peer, drop);
    QObject::connect(peer, &QLocalSocket::readyRead, peer, [peer, drop] {
        if (peer->bytesAvailable() > longestWhole)
            drop();
    });
    QObject::connect(peer, &QLocalSocket::disconnected, peer, [listener = std::weak_ptr(m_onMessage), peer] {
        peer->deleteLater();
        const auto onMessage = listener.lock();
        if (!onMessage) // and the peer is about to go
            return;
        const auto message = peer->readAll();
        if (message.endsWith('\n'))
            (*onMessage)(message.chopped(1));
    });
}

bool MessageSocket::send(const QString& path, const QByteArray& message)
{
    const auto name = QFile::encodeName(path);
    sockaddr_un address{};
    // An empty name would be an address of its own, at which anybody may listen.
    if (message.size() > longestMessage || name.isEmpty() || name.size() >= qsizetype(sizeof address.sun_path))
        return false;
    address.sun_family = AF_UNIX;
    std::ranges::copy(name, address.sun_path);
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const timeval limit{.tv_sec = std::chrono::seconds(patience).count(), .tv_usec = 0};
    ::setsockopt(socket.number(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    if (::connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return false;
    // The end is marked: a connection that breaks ends just like one that is closed.
    const auto whole = message + '\n';
    return ::send(socket.number(), whole.constData(), std::size_t(whole.size()), MSG_NOSIGNAL) == whole.size();
}

} // namespace palvera
