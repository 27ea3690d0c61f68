#include "localplatform/StateFile.h"

#include <QDir>
#include <QJsonDocument>
#include <QSaveFile>

#include <stdexcept>

namespace palvera::local {

QJsonObject StateFile::load() const
{
    QFile file(m_folder + QStringLiteral("/state.json"));
    if (m_folder.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    auto document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject())
        throw std::runtime_error(file.fileName().toStdString() + " is not a state file");
    return document.object();
}

void StateFile::save(const QJsonObject& state) const
{
    if (m_folder.isEmpty())
        return;
    QDir().mkpath(m_folder);
    QSaveFile file(m_folder + QStringLiteral("/state.json"));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(state).toJson(QJsonDocument::Compact)) < 0 ||
        !file.commit())
        throw std::runtime_error("cannot write " + file.fileName().toStdString());
}

} // namespace palvera::local
