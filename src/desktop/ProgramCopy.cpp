#include "desktop/ProgramCopy.h"

#include "files/SmallFile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace palvera {

ProgramCopy::ProgramCopy(const QString& programFolder)
{
    static const QRegularExpression place(QStringLiteral("^((/.+)/builds/([1-9][0-9]*))/bin$"));
    const auto found = place.match(programFolder);
    m_folder = found.captured(1);
    m_root = found.captured(2);
    m_build = found.captured(3).toLongLong();
}

QString ProgramCopy::versionOf(const QString& build) const
{
    constexpr qint64 longestManifest = 64 << 10;
    const auto manifest =
        readSmallFile(QStringLiteral("%1/builds/%2/manifest.json").arg(m_root, build), longestManifest);
    const auto version = QJsonDocument::fromJson(manifest.value_or(QByteArray())).object()[QStringLiteral("version")];
    return version.toString().isEmpty() ? build : version.toString();
}

QString ProgramCopy::launcher() const
{
    if (m_root.isEmpty())
        return {};
    const QString launcher = m_root + QStringLiteral("/bin/palvera");
    return QFileInfo(launcher).isExecutable() ? launcher : m_root + QStringLiteral("/current/bin/palvera");
}

bool ProgramCopy::isOfSystem() const
{
    struct stat there{};
    return ::stat(QFile::encodeName(m_root).constData(), &there) == 0 && there.st_uid == 0;
}

void ProgramCopy::hold()
{
    const QString manifest = m_folder + QStringLiteral("/manifest.json");
    m_held = FileDescriptor(::open(QFile::encodeName(manifest).constData(), O_RDONLY | O_CLOEXEC));
    if (m_held.number() >= 0)
        ::flock(m_held.number(), LOCK_SH | LOCK_NB);
}

} // namespace palvera
