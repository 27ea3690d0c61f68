#include "files/FileTypes.h"

#include <QFileInfo>
#include <QMimeDatabase>

namespace palvera {

QString mimeTypeForName(const QString& filename)
{
    const QString extension = QFileInfo(filename).suffix();
    if (extension.isEmpty())
        return QStringLiteral("application/octet-stream");
    // The database also knows whole names such as "CMakeLists.txt": only the extension counts. Where it is not
    // installed or cannot be read, it has no name for anything.
    auto name =
        QMimeDatabase().mimeTypeForFile(QStringLiteral("file.") + extension, QMimeDatabase::MatchExtension).name();
    return name.isEmpty() ? QStringLiteral("application/octet-stream") : name;
}

} // namespace palvera
