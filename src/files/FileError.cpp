#include "files/FileError.h"

#include <QFileInfo>
#include <QObject>

#include <system_error>

namespace palvera {

void throwFileError(const QString& path, const char* text, int code)
{
    const QString reason = QString::fromStdString(std::generic_category().message(code));
    throw FileError(QObject::tr(text).arg(QFileInfo(path).fileName(), reason), code);
}

} // namespace palvera
