#include "files/SourceFile.h"

#include "files/FileError.h"
#include "files/SourcePath.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace palvera {

SourceFile SourceFile::open(const QString& path)
{
    // Without O_NONBLOCK, opening a pipe would wait for somebody to write into it.
    FileDescriptor file(::open(pathToBytes(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0)
        throwFileError(path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be opened: %2."), errno);
    struct stat status{};
    if (::fstat(file.number(), &status) != 0)
        throwFileError(path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be read: %2."), errno);
    if (!S_ISREG(status.st_mode))
        throwFileError(path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be opened: %2."),
                       S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    return {path, std::move(file)};
}

SourceIdentity SourceFile::identity() const
{
    auto identity = identityOf(m_file);
    if (!identity)
        throwFileError(m_path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be read: %2."), errno);
    return *std::move(identity);
}

qint64 SourceFile::readAt(qint64 offset, std::span<char> into) const
{
    std::size_t done = 0;
    while (done < into.size()) {
        const auto rest = into.subspan(done);
        const ssize_t count = ::pread(m_file.number(), rest.data(), rest.size(), offset + static_cast<qint64>(done));
        if (count == 0)
            break;
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            throwFileError(m_path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be read: %2."), errno);
    }
    return static_cast<qint64>(done);
}

void SourceFile::willNeed(qint64 offset, qint64 length) const
{
    ::posix_fadvise(m_file.number(), offset, length, POSIX_FADV_WILLNEED);
}

} // namespace palvera
