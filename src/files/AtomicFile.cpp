#include "files/AtomicFile.h"

#include "files/FileDescriptor.h"
#include "files/FileError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace palvera {

namespace {

constexpr std::chrono::hours stagingAge{24};

/// A file in the staging folder that removes itself unless it found its place.
class StagedFile {
public:
    StagedFile(const QString& folder, mode_t mode)
        : m_path(QDir(folder).filePath(
              QStringLiteral(".palvera-%1.staging").arg(QUuid::createUuid().toString(QUuid::Id128)))),
          m_file(::open(QFile::encodeName(m_path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode))
    {}
    ~StagedFile()
    {
        if (m_isMade && !m_placed)
            ::unlink(QFile::encodeName(m_path).constData());
    }
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;

    bool isMade() const { return m_isMade; }

    bool write(const QByteArray& bytes)
    {
        for (qsizetype done = 0; done < bytes.size();) {
            const ssize_t count =
                ::write(m_file.number(), bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
            if (count >= 0)
                done += count;
            else if (errno != EINTR)
                return false;
        }
        return ::fsync(m_file.number()) == 0 && m_file.close();
    }

    bool moveTo(const QString& path)
    {
        m_placed = std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(path).constData()) == 0;
        return m_placed;
    }

private:
    QString m_path;
    FileDescriptor m_file;
    const bool m_isMade = m_file.number() >= 0;
    bool m_placed = false;
};

/// A rename is on the disk only once its folder is. File systems that cannot sync a folder say so with EINVAL.
bool syncFolder(const QString& folder)
{
    const FileDescriptor file(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return file.number() >= 0 && (::fsync(file.number()) == 0 || errno == EINVAL);
}

} // namespace

void writeFileAtomically(const QString& path, const QByteArray& bytes, const QString& stagingFolder, FileAccess access)
{
    StagedFile staged(stagingFolder, access == FileAccess::ownerOnly ? 0600 : 0666);
    if (!staged.isMade() || !staged.write(bytes) || !staged.moveTo(path) || !syncFolder(QFileInfo(path).path()))
        throwFileError(path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be written: %2."), errno);
}

void sweepStaging(const QString& folder, Clock::WallTime now)
{
    static const QRegularExpression ours(QStringLiteral("\\A\\.palvera-[0-9a-f]{32}\\.staging\\z"));
    const auto oldest = std::chrono::system_clock::to_time_t(now - stagingAge);
    const QDir staging(folder);
    const auto entries = staging.entryInfoList({QStringLiteral(".palvera-*.staging")}, QDir::Files | QDir::Hidden);
    for (const QFileInfo& entry : entries)
        if (ours.match(entry.fileName()).hasMatch() && entry.lastModified().toSecsSinceEpoch() < oldest)
            QFile::remove(entry.filePath());
}

} // namespace palvera
