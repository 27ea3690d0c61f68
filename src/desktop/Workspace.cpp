#include "desktop/Workspace.h"

#include "desktop/Succession.h"

#include <QGuiApplication>
#include <QWindow>

namespace palvera {

DesktopWorkspace::DesktopWorkspace(Succession& succession, QString launcher, QObject* parent)
    : Workspace(parent), m_succession(succession), m_launcher(std::move(launcher)), m_wake([this] { Q_EMIT woke(); })
{
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            Q_EMIT becameActive();
    });
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* window) {
        if (window)
            Q_EMIT windowBecameKey();
    });
}

Task<void> DesktopWorkspace::openApplication()
{
    return m_succession.begin(m_launcher);
}

void DesktopWorkspace::terminate()
{
    // Not quit(), which asks the windows: the main one has a question of its own while files move.
    QGuiApplication::exit(0);
}

} // namespace palvera
