#include "desktop/Callbacks.h"

#include "desktop/MessageSocket.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

namespace palvera {

namespace {

const QString beginning = QStringLiteral("waiting-");

/// The folder of these sockets in `runtimeFolder`; empty where somebody else could put one there, too.
QString privateFolder(const QString& runtimeFolder)
{
    // Qt sees to it that the user's own is nobody else's, and names none if it is.
    const auto above =
        runtimeFolder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) : runtimeFolder;
    if (above.isEmpty())
        return {};
    const auto folder = QDir(above).absoluteFilePath(QStringLiteral("palvera"));
    const auto name = QFile::encodeName(folder);
    constexpr mode_t ownerOnly = 0700, others = 0077;
    ::mkdir(name.constData(), ownerOnly);
    struct stat there{};
    const bool isOurs = ::lstat(name.constData(), &there) == 0 && S_ISDIR(there.st_mode) && // a link is none
                        there.st_uid == ::geteuid() && (there.st_mode & others) == 0;
    return isOurs ? folder : QString();
}

QString ownName()
{
    return beginning + QString::number(::getpid());
}

} // namespace

CallbackListener::CallbackListener(std::function<void(const Arrival&)> onCallback, const QString& runtimeFolder)
{
    const auto folder = privateFolder(runtimeFolder);
    if (folder.isEmpty())
        return;
    m_socket = std::make_unique<MessageSocket>(QDir(folder).filePath(ownName()),
                                               [onCallback = std::move(onCallback)](const QByteArray& message) {
                                                   if (const auto arrival = arrivalFrom(message))
                                                       onCallback(*arrival);
                                               });
}

CallbackListener::~CallbackListener() = default;

HandOver handOver(const Arrival& arrival, const QString& runtimeFolder)
{
    const auto folder = privateFolder(runtimeFolder);
    const auto message = toMessage(arrival);
    if (folder.isEmpty() || message.size() > MessageSocket::longestMessage) // as nothing of the platform's is
        return HandOver::nobody;
    const QDir waiting(folder, beginning + u'*', QDir::Time, QDir::System); // newest first
    for (const auto& name : waiting.entryList()) {
        if (name == ownName())
            return HandOver::ours;
        const auto path = waiting.filePath(name);
        if (MessageSocket::send(path, message))
            return HandOver::done;
        QFile::remove(path); // its process is gone, or has been deaf for long
    }
    return HandOver::nobody;
}

} // namespace palvera
