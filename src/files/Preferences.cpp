#include "files/Preferences.h"

#include "files/Folders.h"

#include <QFile>
#include <QFileInfo>
#include <QObject>

namespace palvera {

namespace {

/// Gives a file that makes no sense another name, and says so. It may hold what somebody wants to look for.
QString setAsideUnread(const QString& path)
{
    {
        const QSettings read(path, QSettings::IniFormat);
        read.allKeys(); // which makes sense of all lines
        if (read.status() != QSettings::FormatError)
            return {};
    }
    for (int number = 1;; ++number) {
        const auto aside =
            number == 1 ? path + QStringLiteral(".broken") : path + QStringLiteral(".broken%1").arg(number);
        if (QFile::exists(aside))
            continue;
        return QFile::rename(path, aside)
                   ? QObject::tr("The preferences could not be read. They begin anew; the file is now %1.").arg(aside)
                   : QObject::tr("The preferences in %1 cannot be read.").arg(path);
    }
}

} // namespace

Preferences::Preferences(const QString& path) : m_setAside(setAsideUnread(path)), m_settings(path, QSettings::IniFormat)
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
