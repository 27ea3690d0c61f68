#include "screens/LocalPath.h"

#include "files/SourcePath.h"

#include <QSysInfo>

namespace palvera {

namespace {

/// QUrl would make texts of bytes that are none.
QString pathOf(const QUrl& file)
{
    return pathFromBytes(QByteArray::fromPercentEncoding(file.path(QUrl::FullyEncoded).toLatin1()));
}

} // namespace

QString localPath(QUrl file)
{
    // Some file managers name the computer.
    if (file.host() == QSysInfo::machineHostName())
        file.setHost({});
    return file.isLocalFile() && file.host().isEmpty() ? pathOf(file) : QString();
}

} // namespace palvera
