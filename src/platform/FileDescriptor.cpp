#include "platform/FileDescriptor.h"

#include "platform/Failure.h"

#include <QFileInfo>

#include <system_error>

#include <unistd.h>

namespace palvera {

FileDescriptor::~FileDescriptor()
{
    close();
}

bool FileDescriptor::close()
{
    const int number = std::exchange(m_number, -1);
    return number < 0 || ::close(number) == 0;
}

void throwFileError(const QString& path, const QString& what, int code)
{
    const QString reason = QString::fromStdString(std::generic_category().message(code));
    throw FileError(QStringLiteral("“%1” %2: %3.").arg(QFileInfo(path).fileName(), what, reason));
}

} // namespace palvera
