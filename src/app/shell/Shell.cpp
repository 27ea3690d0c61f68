#include "app/shell/Shell.h"

#include <QFileInfo>

namespace palvera {

Shell::Shell(Environment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_settings(m_environment.settings)
{
    connect(&m_settings, &SettingsView::changed, this, &Shell::trayChanged);
}

void Shell::setSheet(Sheet sheet)
{
    if (sheet == Sheet::Settings)
        m_settings.refresh();
    if (std::exchange(m_sheet, sheet) != sheet)
        Q_EMIT sheetChanged();
}

bool Shell::hasLog() const
{
    return QFileInfo(m_environment.logFile).isFile();
}

void Shell::setTray(bool shown)
{
    if (std::exchange(m_hasTray, shown) != shown)
        Q_EMIT trayChanged();
}

void Shell::openMenu()
{
    Q_EMIT menuWanted();
}

void Shell::openLog()
{
    if (hasLog() && m_environment.open)
        m_environment.open(m_environment.logFile);
}

} // namespace palvera
