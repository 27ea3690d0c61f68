#include "files/Bookmark.h"

#include "files/SourcePath.h"

#include <QDataStream>
#include <QFileInfo>
#include <QIODevice>

#include <filesystem>

namespace palvera::bookmark {

namespace {

constexpr quint32 magic = 0x50564232; // "PVB2"
/// Held the path, the device and the inode number, of which only the path means something.
constexpr quint32 earlierMagic = 0x50564231; // "PVB1"

std::optional<QString> siblingWith(const SourceIdentity& identity, const QString& path)
{
    const auto folder = pathToBytes(QFileInfo(path).path()).toStdString();
    std::error_code failure;
    for (std::filesystem::directory_iterator each(folder, failure), end; each != end; each.increment(failure)) {
        const QString candidate = pathFromBytes(QByteArray::fromStdString(each->path().native()));
        if (auto other = identityOf(candidate); other && other->isSameFileAs(identity))
            return candidate;
    }
    return {};
}

} // namespace

std::optional<QByteArray> make(const QString& path)
{
    const auto identity = identityOf(path);
    return identity ? std::optional(make(path, *identity)) : std::nullopt;
}

QByteArray make(const QString& path, const SourceIdentity& identity)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_4);
    out << magic << absolutePath(path) << identity.handle << identity.size << identity.changed;
    return bytes;
}

std::optional<Contents> read(const QByteArray& bytes)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_6_4);
    quint32 start = 0;
    Contents contents;
    in >> start >> contents.path;
    if (start == magic) {
        auto& identity = contents.identity.emplace();
        in >> identity.handle >> identity.size >> identity.changed;
    }
    bool isOurs = start == magic || start == earlierMagic;
    if (!isOurs || in.status() != QDataStream::Ok || !contents.path.startsWith(u'/'))
        return {};
    return contents;
}

std::optional<Resolved> resolve(const QByteArray& bytes)
{
    const auto contents = read(bytes);
    if (!contents)
        return {};
    if (const auto there = identityOf(contents->path))
        return Resolved{.path = contents->path, .stale = there != contents->identity};
    if (!contents->identity)
        return {};
    if (const auto sibling = siblingWith(*contents->identity, contents->path))
        return Resolved{.path = *sibling, .stale = true};
    return {};
}

} // namespace palvera::bookmark
