#include "desktop/SingleInstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>

#include <chrono>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 2s;                                       // with a first one that does not answer
constexpr auto longestTalk = 5s;                                    // of a later start with the first
constexpr qint64 longestWhole = SingleInstance::longestMessage + 1; // with the line end that marks it whole

/// Short, since the path of a socket may have no more than 107 bytes.
QString nameFor(const QString& dataFolder)
{
    const auto folder = QDir::cleanPath(QDir(dataFolder).absolutePath());
    const auto hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    return QStringLiteral("palvera-") + QString::fromLatin1(hash);
}

} // namespace

SingleInstance::SingleInstance(const QString& dataFolder, const QString& runtimeFolder)
{
    // Qt sees to it that the user's own is nobody else's, and names none if it is.
    const auto folder =
        runtimeFolder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) : runtimeFolder;
    if (folder.isEmpty())
        return;
    m_socket = QDir(folder).absoluteFilePath(nameFor(dataFolder));
    m_lock.emplace(m_socket + QStringLiteral(".lock"));
    m_lock->setStaleLockTime(0); // however long it runs; a lock whose process is gone is free at once
    const bool isOurs = m_lock->tryLock();
    m_isFirst = isOurs || m_lock->error() != QLockFile::LockFailedError;
    if (isOurs)
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
    QObject::connect(peer, &QLocalSocket::disconnected, m_server.get(), [this, peer] {
        const auto message = peer->readAll();
        peer->deleteLater();
        if (message.endsWith('\n') && onMessage)
            onMessage(message.chopped(1));
    });
}

bool SingleInstance::send(const QByteArray& message) const
{
    if (message.size() > longestMessage)
        return false;
    const QDeadlineTimer limit(patience);
    const auto left = [&limit] { return int(limit.remainingTime()); }; // milliseconds
    QLocalSocket socket;
    socket.connectToServer(m_socket);
    if (!socket.waitForConnected(left()))
        return false;
    // The end is marked: a connection that breaks ends just like one that is closed.
    socket.write(message + '\n');
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(left()))
            return false;
    socket.disconnectFromServer();
    return socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(left());
}

} // namespace palvera
