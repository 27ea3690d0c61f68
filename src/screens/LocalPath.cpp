#include "screens/LocalPath.h"

#include <QSysInfo>

namespace palvera {

QString localPath(QUrl file)
{
    // Some file managers name the computer.
    if (file.host() == QSysInfo::machineHostName())
        file.setHost({});
    return file.isLocalFile() && file.host().isEmpty() ? file.toLocalFile() : QString();
}

} // namespace palvera
