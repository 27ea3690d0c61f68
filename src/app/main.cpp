#include "app/Application.h"
#include "controls/Fonts.h"
#include "platform/Clock.h"
#include "platform/DesktopAppearance.h"
#include "platform/EnginePool.h"
#include "platform/Folders.h"
#include "platform/MainThread.h"
#include "platform/Preferences.h"
#include "platform/SingleInstance.h"
#include "service/API.h"
#include "session/SignInDoors.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPalette>

#include <csignal>

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

int run()
{
    const auto folders = Folders::ofUser();
    SingleInstance instance(folders.applicationSupport);
    if (!instance.isFirst() && instance.send("raise"))
        return 0;
    loadFonts();
    Preferences preferences(folders.preferences());
    SystemClock clock;
    MainThread mainThread(enginePool());
    NoWebSignIn web;
    NoPasskeySignIn passkey;
    DesktopAppearance appearance(isPaletteDark());
    Application application({.api = API::shared(),
                             .preferences = preferences,
                             .clock = clock,
                             .main = mainThread.executor(),
                             .isDoorAsked = isAltHeld,
                             .version = QStringLiteral(PALVERA_VERSION),
                             .build = QStringLiteral(PALVERA_BUILD),
                             .web = web,
                             .passkey = passkey});
    application.setDark(appearance.isDark());
    QObject::connect(&appearance, &DesktopAppearance::changed, [&] { application.setDark(appearance.isDark()); });
    instance.onMessage = [&](const QByteArray&) { application.raise(); };
    if (!application.show())
        return 1;
    return QGuiApplication::exec();
}

} // namespace
} // namespace palvera

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // a peer that goes away is an error of that write
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Palvera"));
    QGuiApplication::setDesktopFileName(QStringLiteral("palvera"));
    return palvera::run();
}
