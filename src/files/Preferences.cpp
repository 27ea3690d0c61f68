#include "files/Preferences.h"

#include "files/Folders.h"

#include <QFileInfo>
#include <QObject>

namespace palvera {

Preferences::Preferences(const QString& path) : m_settings(path, QSettings::IniFormat)
{
    makePrivateFolder(QFileInfo(path).path());
}

std::optional<QString> Preferences::string(const QString& key) const
{
    const QVariant value = m_settings.value(key);
    if (value.typeId() != QMetaType::QString)
        return {};
    return value.toString();
}

void Preferences::setString(const QString& key, const QString& value)
{
    m_settings.setValue(key, value);
    keep();
}

std::optional<QByteArray> Preferences::bytes(const QString& key) const
{
    const QVariant value = m_settings.value(key);
    if (value.typeId() != QMetaType::QByteArray)
        return {};
    return value.toByteArray();
}

void Preferences::setBytes(const QString& key, const QByteArray& value)
{
    m_settings.setValue(key, value);
    keep();
}

void Preferences::remove(const QString& key)
{
    m_settings.remove(key);
    keep();
}

void Preferences::keep()
{
    m_settings.sync();
    m_problem = m_settings.status() == QSettings::NoError
                    ? QString()
                    : QObject::tr("That counts only for now: %1 cannot be written.").arg(m_settings.fileName());
}

} // namespace palvera
