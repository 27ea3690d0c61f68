#include "files/Bookmark.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include <sys/stat.h>

namespace palvera::bookmark {

namespace {

constexpr quint32 magic = 0x50564231; // "PVB1"

/// What tells one file of this machine from every other.
struct Identity {
    quint64 device = 0;
    quint64 inode = 0;

    bool operator==(const Identity&) const = default;
};

std::optional<Identity> identityOf(const QString& path)
{
    struct stat status{};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return Identity{.device = status.st_dev, .inode = status.st_ino};
}

std::optional<QString> siblingWith(Identity identity, const QString& path)
{
    const QDir folder = QFileInfo(path).dir();
    for (const QString& name : folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        if (const QString candidate = folder.filePath(name); identityOf(candidate) == identity)
            return candidate;
    return {};
}

} // namespace

std::optional<QByteArray> make(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    const auto identity = identityOf(absolute);
    if (!identity)
        return {};
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_4);
    out << magic << absolute << identity->device << identity->inode;
    return bytes;
}

std::optional<Resolved> resolve(const QByteArray& bytes)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_6_4);
    quint32 start = 0;
    QString path;
    Identity identity;
    in >> start >> path >> identity.device >> identity.inode;
    if (in.status() != QDataStream::Ok || start != magic || !path.startsWith(u'/'))
        return {};
    if (identityOf(path) == identity)
        return Resolved{.path = path};
    if (const auto sibling = siblingWith(identity, path))
        return Resolved{.path = *sibling, .stale = true};
    return {};
}

} // namespace palvera::bookmark
