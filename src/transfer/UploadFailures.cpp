#include "transfer/UploadFailures.h"

#include "files/SourcePath.h"

#include <QFileInfo>
#include <QObject>

namespace palvera {

SourceChanged::SourceChanged()
    : CannotSend(QObject::tr("The file changed while it was being sent, so it was not delivered. Send it again."))
{}

QString objectionToSource(const QString& path)
{
    const auto there = statusOf(path);
    const QFileInfo named(path);
    if (!there)
        return QObject::tr("“%1” is no longer in %2.").arg(named.fileName(), named.absolutePath());
    if (there->isFolder)
        return QObject::tr("“%1” is a folder. Only files can be sent.").arg(path);
    if (!there->isOrdinary)
        return QObject::tr("“%1” is not an ordinary file.").arg(path);
    return there->size > 0 ? QString() : QObject::tr("That file is empty.");
}

} // namespace palvera
