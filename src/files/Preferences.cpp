#include "files/Preferences.h"

#include "files/Folders.h"

#include <QFileInfo>

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
    m_settings.sync();
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
    m_settings.sync();
}

void Preferences::remove(const QString& key)
{
    m_settings.remove(key);
    m_settings.sync();
}

} // namespace palvera
