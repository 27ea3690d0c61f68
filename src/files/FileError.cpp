#include "files/FileError.h"

#include <QFileInfo>

#include <system_error>

namespace palvera {

void throwFileError(const QString& path, const QString& what, int code)
{
    const QString reason = QString::fromStdString(std::generic_category().message(code));
    throw FileError(QStringLiteral("“%1” %2: %3.").arg(QFileInfo(path).fileName(), what, reason), code);
}

} // namespace palvera
