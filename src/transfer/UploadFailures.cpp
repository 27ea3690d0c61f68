#include "transfer/UploadFailures.h"

#include <QFileInfo>

namespace palvera {

SourceChanged::SourceChanged()
    : CannotSend(QStringLiteral("The file changed while it was being sent, so it was not delivered. Send it again."))
{}

QString objectionToSource(const QString& path)
{
    QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("“%1” is no longer in %2.").arg(file.fileName(), file.absolutePath());
    if (file.isDir())
        return QStringLiteral("“%1” is a folder. Only files can be sent.").arg(path);
    if (!file.isFile())
        return QStringLiteral("“%1” is not an ordinary file.").arg(path);
    return file.size() > 0 ? QString() : QStringLiteral("That file is empty.");
}

} // namespace palvera
