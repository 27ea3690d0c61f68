#include "app/Application.h"
#include "async/Clock.h"
#include "async/Failure.h"
#include "async/MainThread.h"
#include "async/Process.h"
#include "controls/Fonts.h"
#include "desktop/DesktopAppearance.h"
#include "desktop/Notices.h"
#include "desktop/SingleInstance.h"
#include "files/Folders.h"
#include "files/Preferences.h"
#include "service/Connections.h"
#include "session/SignInDoors.h"
#include "transfers/TransferEngines.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPalette>
#include <QStandardPaths>

#include <iostream>

namespace palvera {
namespace {

bool isAltHeld()
{
    return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier);
}

/// Where the desktop does not say: a window darker than the text on it.
bool isPaletteDark()
{
    const auto palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Has Qt ask the desktop's portal for its dialogs, where there is one and the user has not chosen otherwise. Before
/// the application object.
void useDesktopDialogs()
{
    const QString service = QStringLiteral("dbus-1/services/org.freedesktop.portal.Desktop.service");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORMTHEME") &&
        !QStandardPaths::locate(QStandardPaths::GenericDataLocation, service).isEmpty())
        qputenv("QT_QPA_PLATFORMTHEME", "xdgdesktopportal");
}

int run()
{
    const auto folders = Folders::ofUser();
    SingleInstance instance(folders.applicationSupport);
    if (!instance.isFirst() && instance.send("raise"))
        return 0;
    loadFonts();
    Preferences preferences(folders.preferences());
    SystemClock clock;
    const auto connections = Connections::make(folders, preferences);
    MainThread mainThread(connections.engine.context());
    NoWebSignIn web;
    NoPasskeySignIn passkey;
    TransferEngines engines(folders, clock, connections);
    DesktopNotices notices;
    DesktopAppearance appearance(isPaletteDark());
    Application application({.api = connections.api,
                             .preferences = preferences,
                             .clock = clock,
                             .main = mainThread.executor(),
                             .isDoorAsked = isAltHeld,
                             .isWatched = [] { return QGuiApplication::focusWindow() != nullptr; },
                             .version = QStringLiteral(PALVERA_VERSION),
                             .build = QStringLiteral(PALVERA_BUILD),
                             .web = web,
                             .passkey = passkey,
                             .transfers = engines.environment(mainThread.executor()),
                             .notices = notices});
    application.setDark(appearance.isDark());
    QObject::connect(&appearance, &DesktopAppearance::changed, [&] { application.setDark(appearance.isDark()); });
    instance.onMessage = [&](const QByteArray&) { application.raise(); };
    const EndSignals signals(mainThread.executor(), [] { QGuiApplication::quit(); });
    if (!application.show())
        return 1;
    return QGuiApplication::exec();
}

} // namespace
} // namespace palvera

int main(int argc, char** argv)
{
    palvera::useDesktopDialogs();
    palvera::prepareProcess();
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Palvera"));
    QGuiApplication::setDesktopFileName(QStringLiteral("palvera"));
    try {
        return palvera::run();
    } catch (...) { // no thread or no descriptor to begin with
        std::cerr << palvera::describe(std::current_exception()).toStdString() << std::endl;
        return 1;
    }
}
