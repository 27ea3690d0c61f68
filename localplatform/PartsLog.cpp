#include "localplatform/PartsLog.h"

#include <QDir>
#include <QFile>

namespace palvera::local {

QString PartsLog::pathOf(const Upload& upload) const
{
    return m_folder + QStringLiteral("/parts-") + QString::number(upload.serial) + QStringLiteral(".log");
}

void PartsLog::append(const Upload& upload, int part) const
{
    if (m_folder.isEmpty())
        return;
    QDir().mkpath(m_folder);
    const auto& stored = upload.parts.at(part);
    QFile file(pathOf(upload));
    if (!file.open(QIODevice::Append))
        throw std::runtime_error("cannot write " + file.fileName().toStdString());
    file.write(QByteArray::number(part) + ' ' + QByteArray::number(stored.bytes) + ' ' + stored.tag + '\n');
}

void PartsLog::restore(Upload& upload) const
{
    QFile file(pathOf(upload));
    if (m_folder.isEmpty() || !file.open(QIODevice::ReadOnly))
        return;
    while (!file.atEnd()) {
        auto line = file.readLine();
        auto pieces = line.trimmed().split(' ');
        if (!line.endsWith('\n') || pieces.size() != 3)
            break;
        auto& part = upload.parts[pieces[0].toInt()];
        part = {.bytes = pieces[1].toLongLong(), .tag = pieces[2], .times = part.times + 1};
    }
}

void PartsLog::remove(const Upload& upload) const
{
    if (!m_folder.isEmpty())
        QFile::remove(pathOf(upload));
}

} // namespace palvera::local
