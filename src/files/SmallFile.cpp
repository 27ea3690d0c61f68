#include "files/SmallFile.h"

#include "files/FileDescriptor.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace palvera {

namespace {

/// Nothing to read from when it is no ordinary file: opening one must not wait, nor follow what somebody else placed.
FileDescriptor openOrdinary(const QString& path, int flags)
{
    FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0600));
    struct stat status{};
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return FileDescriptor();
    return file;
}

} // namespace

std::optional<QByteArray> readSmallFile(const QString& path, qint64 limit)
{
    const auto file = openOrdinary(path, O_RDONLY);
    if (file.number() < 0)
        return {};
    QByteArray bytes;
    constexpr qsizetype piece = 64 << 10;
    for (;;) {
        const auto before = bytes.size();
        bytes.resize(before + piece);
        const ssize_t count = ::read(file.number(), bytes.data() + before, std::size_t(piece));
        bytes.truncate(before + std::max<qsizetype>(count, 0));
        if (bytes.size() > limit || (count < 0 && errno != EINTR))
            return {};
        if (count == 0)
            return bytes;
    }
}

void appendToFile(const QString& path, const QByteArray& bytes)
{
    const auto file = openOrdinary(path, O_WRONLY | O_APPEND | O_CREAT);
    if (file.number() >= 0)
        (void)!::write(file.number(), bytes.constData(), std::size_t(bytes.size()));
}

} // namespace palvera
