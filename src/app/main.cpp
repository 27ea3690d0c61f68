#include "app/Application.h"
#include "app/Language.h"
#include "app/Renderer.h"
#include "app/SelfTest.h"
#include "async/Clock.h"
#include "async/Failure.h"
#include "async/MainThread.h"
#include "async/Process.h"
#include "controls/Fonts.h"
#include "controls/SpokenStates.h"
#include "desktop/Autostart.h"
#include "desktop/Callbacks.h"
#include "desktop/DesktopActivation.h"
#include "desktop/DesktopAppearance.h"
#include "desktop/FileManager.h"
#include "desktop/LaunchNote.h"
#include "desktop/Notices.h"
#include "desktop/ProgramCopy.h"
#include "desktop/SecurityKeys.h"
#include "desktop/SingleInstance.h"
#include "desktop/SleepInhibitor.h"
#include "desktop/Succession.h"
#include "desktop/Workspace.h"
#include "files/Folders.h"
#include "files/Preferences.h"
#include "http/HttpSession.h"
#include "service/Connections.h"
#include "session/BrowserSignIn.h"
#include "session/PasskeySignIn.h"
#include "transfer/TransferLog.h"
#include "transfers/TransferEngines.h"
#include "update/UpdateRules.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QLocale>
#include <QPalette>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

#include <iostream>

namespace palvera {
namespace {

constexpr std::chrono::seconds provenAfter{10}; // with a window
constexpr std::chrono::seconds longestEnd{5};   // of a program that has been told to quit

/// Ends the program when the session does: what moves is cut off such that it can be gone on with, so nobody is asked.
class SessionEnd final : public QObject {
public:
    SessionEnd()
        : m_shutdown(QObject::tr("Transfers are cut off such that they can go on."), [] { QGuiApplication::exit(0); })
    {
        qGuiApp->installEventFilter(this);
    }

    /// Qt's own way to quit asks the windows, and the main one has a question while files move. It is taken when a
    /// session manager says that the session is over, and when the last window has been closed.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Quit)
            return QObject::eventFilter(watched, event);
        QGuiApplication::exit(0);
        return true;
    }

private:
    const ShutdownWatch m_shutdown;
};

bool isAltHeld()
{
    return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier);
}

/// Where the desktop does not say: dark where a window is darker than the text on it, and texts as large as Qt takes
/// the points of a font to be.
Appearance appearanceOfQt()
{
    constexpr double usualDotsPerInch = 96;
    const auto palette = QGuiApplication::palette();
    return {.dark = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness(),
            .textScale = QGuiApplication::primaryScreen()->logicalDotsPerInch() / usualDotsPerInch};
}

/// What the desktop says. But on X11, its text size is in the resolution by which Qt scales all that it draws.
Appearance appearanceOf(const DesktopAppearance& desktop)
{
    auto appearance = desktop.now();
    if (QGuiApplication::platformName() == QStringLiteral("xcb"))
        appearance.textScale = appearanceOfQt().textScale;
    return appearance;
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

/// Leaves what came to whoever waits for it, or else to the program that runs already. True when nothing is left to do
/// here: what opened an address shows it to every user of the machine for as long as this process lives, so the program
/// is then started as another one.
bool leaveToOthers(int argc, char** argv, std::optional<SingleInstance>& instance, const Arrival& arrival,
                   const LaunchNote& note)
{
    if (arrival.addresses.isEmpty()) {
        if (instance->isFirst())
            return false;
        if (!instance->send(toMessage(arrival))) { // it is about to end
            instance->succeed(longestEnd);
            return false;
        }
        note.forget();
        return true;
    }
    const QCoreApplication application(argc, argv); // needs no display
    note.forget();
    if (handOver(arrival) == HandOver::done || (!instance->isFirst() && instance->send(toMessage(arrival))))
        return true;
    instance.reset(); // the lock
    const auto launcher = ProgramCopy(QCoreApplication::applicationDirPath()).launcher();
    return QProcess::startDetached(launcher.isEmpty() ? QCoreApplication::applicationFilePath() : launcher, {});
}

/// Waits until the process that asked for this one is gone with its lock. False when it stays.
bool takeOver(SingleInstance& instance, const Successor& successor)
{
    constexpr std::chrono::seconds longest{30}; // it suspends its transfers first
    if (!instance.isFirst())
        instance.send(successor.message());
    return instance.succeed(longest);
}

QString fallBackText(const QString& failed)
{
    return QCoreApplication::translate("Updater", "Palvera %1 did not start on this computer, so %2 runs instead.")
        .arg(failed, QStringLiteral(PALVERA_VERSION));
}

/// Where published builds are named; empty where the program is not to look for any.
QByteArray updateFeed(const API& api)
{
    const QByteArray published(PALVERA_UPDATE_FEED);
    return !published.isEmpty() && api.isServiceNamed() ? feedBeside(api.serviceBase().origin) : published;
}

/// What an updater stands on in this process.
class UpdateMeans {
public:
    UpdateMeans(Clock& clock, const Connections& connections, const LaunchNote& note)
        : m_clock(clock),
          m_connections(connections),
          m_failedBuild(QString::fromLatin1(note.fellBackFrom())),
          m_copy(QCoreApplication::applicationDirPath()),
          m_succession(clock),
          m_workspace(m_succession, m_copy.launcher()),
          m_http(connections.engine.executor())
    {
        m_copy.hold();
    }

    Updater::Environment environment(const Executor& main, const Folders& folders)
    {
        return {.main = main,
                .disk = m_connections.engine.executor(),
                .clock = m_clock,
                .http = m_http,
                .workspace = m_workspace,
                .feed = updateFeed(m_connections.api),
                .version = QStringLiteral(PALVERA_VERSION),
                .build = QStringLiteral(PALVERA_BUILD),
                .refusedBuild = m_failedBuild,
                .caches = folders.caches,
                .target = m_copy.root(),
                .connect = [this] { return connectToInstaller(); }};
    }
    /// Why it is not the current build that runs; empty where it is.
    QString remark() const
    {
        return m_failedBuild.isEmpty() ? QString() : fallBackText(m_copy.versionOf(m_failedBuild));
    }
    const ProgramCopy& copy() const { return m_copy; }
    Succession& succession() { return m_succession; }

private:
    std::unique_ptr<InstallerConnection> connectToInstaller() const
    {
        using Bus = BusInstallerConnection::Bus;
        return std::make_unique<BusInstallerConnection>(QStringLiteral(PALVERA_ID),
                                                        m_copy.isOfSystem() ? Bus::system : Bus::session);
    }

    Clock& m_clock;
    const Connections& m_connections;
    const QString m_failedBuild;
    ProgramCopy m_copy;
    Succession m_succession;
    DesktopWorkspace m_workspace;
    HttpSession m_http;
};

std::unique_ptr<TrayItem> makeTray(TrayItem::Actions actions)
{
    const auto text = [](const char* words) { return QCoreApplication::translate("Tray", words); };
    return std::make_unique<TrayItem>(TrayItem::Texts{.icon = QStringLiteral("palvera"),
                                                      .title = text(QT_TRANSLATE_NOOP("Tray", "Palvera")),
                                                      .show = text(QT_TRANSLATE_NOOP("Tray", "Show Palvera")),
                                                      .quit = text(QT_TRANSLATE_NOOP("Tray", "Quit"))},
                                      std::move(actions));
}

int run(SingleInstance& instance, const Folders& folders, const LaunchNote& note, bool inBackground)
{
    RendererChoice renderer;
    const Language language(QLocale::system().uiLanguages());
    loadFonts();
    installSpokenStates();
    Preferences preferences(folders.preferences());
    SystemClock clock;
    const auto connections = Connections::make(folders, preferences);
    MainThread mainThread(connections.engine.context());
    std::function<void(const Arrival&)> arrive;
    const auto listen = [&arrive] {
        return std::make_shared<CallbackListener>([&](const Arrival& it) { arrive(it); });
    };
    const auto show = [](const QByteArray& address) { return QDesktopServices::openUrl(QUrl::fromEncoded(address)); };
    BrowserSignIn web({.clock = clock, .show = show, .listen = listen});
    SecurityKeys keys(mainThread.executor());
    PasskeySignIn passkey(connections.api, keys);
    TransferEngines engines(folders, clock, connections);
    DesktopNotices notices(QStringLiteral(PALVERA_ID));
    DesktopAppearance appearance(appearanceOfQt());
    UpdateMeans updates(clock, connections, note);
    const SessionEnd sessionEnd; // lets a shutdown go on once the application is gone
    Application application(
        {.api = connections.api,
         .preferences = preferences,
         .clock = clock,
         .main = mainThread.executor(),
         .isDoorAsked = isAltHeld,
         .isWatched = [] { return QGuiApplication::focusWindow() != nullptr; },
         .web = web,
         .passkey = passkey,
         .transfers = engines.environment(mainThread.executor()),
         .shares = engines.shares(),
         .setAutostart =
             [&](bool starts) {
                 const auto launcher = updates.copy().launcher();
                 setAutostart(starts, QStringLiteral(PALVERA_ID),
                              launcher.isEmpty() ? QCoreApplication::applicationFilePath() : launcher, folders.config);
             },
         .makeTray = makeTray,
         .updates = updates.environment(mainThread.executor(), folders),
         .notices = notices,
         .files = {.showInFolder = [](const QString& path) { showInFolder(path); },
                   .open = [](const QString& path) { openFile(path); }},
         .logFile = TransferLog::pathIn(folders.library),
         .startRemark = updates.remark()});
    application.setAppearance(appearanceOf(appearance));
    QObject::connect(&appearance, &DesktopAppearance::changed,
                     [&] { application.setAppearance(appearanceOf(appearance)); });
    arrive = [&](const Arrival& arrival) { application.arrive(arrival); };
    instance.listen([&](const QByteArray& message) {
        if (updates.succession().take(message))
            return;
        if (const auto arrival = arrivalFrom(message))
            arrive(*arrival);
    });
    const DesktopActivation activation(QStringLiteral(PALVERA_ID), [&](const Arrival& arrival) {
        const bool isOurs = arrival.addresses.isEmpty() || handOver(arrival) != HandOver::done;
        if (isOurs) // and not of another program that waits
            arrive(arrival);
    });
    const EndSignals signals(mainThread.executor(), [] { QGuiApplication::exit(0); });
    renderer.settle();
    if (!application.show(inBackground))
        return 1;
    const auto setWorking = [&] { note.setWorking(updates.copy().build()); };
    QTimer::singleShot(provenAfter, &mainThread, setWorking);
    const int status = QGuiApplication::exec();
    instance.close();
    setWorking();
    return status;
}

/// "--version" and "--self-test", which the installer asks before a build may become the current one: each says the
/// version, the second only once it is sure that this build can show its screens here. What RendererChoice asks, too.
/// Nothing for any other start.
std::optional<int> answer(int argc, char** argv)
{
    const QByteArrayView question(argc == 2 ? argv[1] : "");
    if (question == rendererQuestion) {
        const QGuiApplication application(argc, argv);
        return sayRenderer();
    }
    if (question == "--self-test") {
        qputenv("QT_QPA_PLATFORM", "offscreen"); // there need be no display
        const QGuiApplication application(argc, argv);
        loadFonts();
        if (const auto faults = faultsOfBuild(); !faults.isEmpty()) {
            std::cerr << faults.join(u'\n').toStdString() << std::endl;
            return 1;
        }
    } else if (question != "--version") {
        return std::nullopt;
    }
    std::cout << "Palvera " PALVERA_VERSION " (" PALVERA_BUILD ")" << std::endl;
    return std::cout.good() ? 0 : 1;
}

} // namespace
} // namespace palvera

int main(int argc, char** argv)
{
    const auto note = palvera::LaunchNote::take();
    // First: every user of the machine can read the arguments.
    const auto arrival = palvera::takeArrival(argc, argv, note.addresses());
    const auto successor = palvera::Successor::take();
    palvera::prepareProcess();
    if (const auto status = palvera::answer(argc, argv))
        return *status;
    palvera::useDesktopDialogs();
    QGuiApplication::setApplicationName(QStringLiteral("Palvera"));
    QGuiApplication::setDesktopFileName(QStringLiteral(PALVERA_ID));
    try {
        const auto folders = palvera::Folders::ofUser();
        std::optional<palvera::SingleInstance> instance(std::in_place, folders.applicationSupport);
        if (!successor && palvera::leaveToOthers(argc, argv, instance, arrival, note))
            return 0;
        const QGuiApplication application(argc, argv);
        if (successor && !palvera::takeOver(*instance, *successor))
            return 1;
        return palvera::run(*instance, folders, note, argc == 2 && argv[1] == std::string_view("--background"));
    } catch (...) { // no thread or no descriptor to begin with
        std::cerr << palvera::describe(std::current_exception()).toStdString() << std::endl;
        return 1;
    }
}
