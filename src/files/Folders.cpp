#include "files/Folders.h"

#include <QDir>

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

Folders Folders::ofUser()
{
    return {.applicationSupport = folderFrom("XDG_DATA_HOME", ".local/share"),
            .library = folderFrom("XDG_STATE_HOME", ".local/state"),
            .caches = folderFrom("XDG_CACHE_HOME", ".cache") + QStringLiteral("/Palvera"),
            .config = folderFrom("XDG_CONFIG_HOME", ".config")};
}

} // namespace palvera
