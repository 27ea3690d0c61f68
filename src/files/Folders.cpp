#include "files/Folders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>

#include <sys/stat.h>

namespace palvera {

namespace {

QString folderFrom(const char* variable, const char* standardBelowHome)
{
    const QString chosen = qEnvironmentVariable(variable);
    if (QDir::isAbsolutePath(chosen))
        return QDir::cleanPath(chosen);
    return QDir::home().filePath(QString::fromLatin1(standardBelowHome));
}

} // namespace

QString proposedDownloadsFolder()
{
    const auto usual = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    return QFileInfo(usual).isDir() ? usual : QDir::homePath();
}

Folders Folders::ofUser()
{
    return {.applicationSupport = folderFrom("XDG_DATA_HOME", ".local/share"),
            .library = folderFrom("XDG_STATE_HOME", ".local/state"),
            .caches = folderFrom("XDG_CACHE_HOME", ".cache") + QStringLiteral("/Palvera"),
            .config = folderFrom("XDG_CONFIG_HOME", ".config")};
}

QString makePrivateFolder(const QString& path)
{
    constexpr mode_t ownerOnly = 0700, others = 0077;
    const auto name = QFile::encodeName(path);
    if (::mkdir(name.constData(), ownerOnly) == 0)
        return path;
    struct stat there{};
    const auto above = QFileInfo(path).path();
    if (errno == ENOENT && above != path) {
        if (!QFileInfo::exists(above))
            makePrivateFolder(above);
        ::mkdir(name.constData(), ownerOnly);
    } else if (errno == EEXIST && ::stat(name.constData(), &there) == 0 && (there.st_mode & others)) {
        ::chmod(name.constData(), ownerOnly);
    }
    return path;
}

} // namespace palvera
