#include "desktop/SingleInstance.h"

#include "desktop/MessageSocket.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>

namespace palvera {

namespace {

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
    m_path = QDir(folder).absoluteFilePath(nameFor(dataFolder));
    m_lock.emplace(m_path + QStringLiteral(".lock"));
    m_lock->setStaleLockTime(0); // however long it runs; a lock whose process is gone is free at once
    m_isFirst = m_lock->tryLock() || m_lock->error() != QLockFile::LockFailedError;
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::listen(std::function<void(const QByteArray&)> onMessage)
{
    if (m_lock && m_lock->isLocked()) // what lies at the path was left by one that was killed
        m_socket = std::make_unique<MessageSocket>(m_path, std::move(onMessage));
}

void SingleInstance::close()
{
    m_socket.reset();
}

bool SingleInstance::succeed(std::chrono::milliseconds limit)
{
    m_isFirst = m_isFirst || m_lock->tryLock(int(limit.count()));
    return m_isFirst;
}

bool SingleInstance::send(const QByteArray& message) const
{
    return MessageSocket::send(m_path, message);
}

} // namespace palvera
