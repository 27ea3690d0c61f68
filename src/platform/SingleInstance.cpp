#include "platform/SingleInstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>

#include <chrono>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 2s;    // with a first one that does not answer
constexpr auto longestTalk = 5s; // of a later start with the first

/// Short, since the path of a socket may have no more than 107 bytes.
QString nameFor(const QString& dataFolder)
{
    const auto hash = QCryptographicHash::hash(dataFolder.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    return QStringLiteral("palvera-") + QString::fromLatin1(hash);
}

} // namespace

SingleInstance::SingleInstance(const QString& dataFolder, const QString& runtimeFolder)
{
    // Qt sees to it that the user's own is nobody else's.
    const auto folder =
        runtimeFolder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) : runtimeFolder;
    m_socket = QDir(folder).filePath(nameFor(dataFolder));
    m_lock.emplace(m_socket + QStringLiteral(".lock"));
    m_lock->setStaleLockTime(0); // however long it runs; a lock whose process is gone is free at once
    m_isFirst = m_lock->tryLock() || m_lock->error() != QLockFile::LockFailedError;
    if (m_isFirst)
        listen();
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::listen()
{
    QLocalServer::removeServer(m_socket); // left behind by one that was killed: the lock is ours
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(m_server.get(), &QLocalServer::newConnection, m_server.get(), [this] {
        while (auto* peer = m_server->nextPendingConnection())
            serve(peer);
    });
    m_server->listen(m_socket);
}

/// A message is what comes until the peer closes, less the line end that marks it whole.
void SingleInstance::serve(QLocalSocket* peer)
{
    peer->setReadBufferSize(longestMessage + 1);
    QTimer::singleShot(longestTalk, peer, [peer] { peer->abort(); });
    QObject::connect(peer, &QLocalSocket::readyRead, peer, [peer] {
        if (peer->bytesAvailable() > longestMessage)
            peer->abort();
    });
    QObject::connect(peer, &QLocalSocket::disconnected, m_server.get(), [this, peer] {
        const auto message = peer->isReadable() ? peer->readAll() : QByteArray(); // not once it was aborted
        peer->deleteLater();
        if (message.endsWith('\n') && message.size() <= longestMessage && onMessage)
            onMessage(message.chopped(1));
    });
}

bool SingleInstance::send(const QByteArray& message) const
{
    QLocalSocket socket;
    socket.connectToServer(m_socket);
    const int limit = int(std::chrono::milliseconds(patience).count());
    if (!socket.waitForConnected(limit))
        return false;
    // The end is marked: a connection that breaks ends just like one that is closed.
    socket.write(message + '\n');
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(limit))
            return false;
    socket.disconnectFromServer();
    return socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(limit);
}

} // namespace palvera
