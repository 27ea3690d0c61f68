#include "app/Application.h"

#include "desktop/WindowActivation.h"
#include "files/Preferences.h"

#include <boost/asio/co_spawn.hpp>

#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlIncubationController>
#include <QQuickWindow>

namespace palvera {

Application::Application(Environment environment)
    : m_environment(std::move(environment)),
      m_limits(m_environment.main),
      m_session({.main = m_environment.main,
                 .background = m_environment.transfers.background,
                 .clock = m_environment.clock,
                 .api = m_environment.api,
                 .preferences = m_environment.preferences,
                 .network = m_environment.transfers.network}),
      m_transfers(transfersWithSignIns(), SettingsView::transfersIn(m_environment.preferences)),
      m_updater(m_environment.updates),
      m_endNotice(m_transfers, m_environment.notices,
                  [this] { return m_environment.isWatched() || !m_root.shell()->settings()->notifies(); }),
      m_root(
          {.signIn = {.main = m_environment.main,
                      .clock = m_environment.clock,
                      .session = m_session,
                      .network = m_environment.transfers.network,
                      .doors = {.api = m_environment.api, .web = m_environment.web, .passkey = m_environment.passkey}},
           .background = m_environment.transfers.background,
           .transfers = m_transfers,
           .preferences = m_environment.preferences,
           .isDoorAsked = m_environment.isDoorAsked,
           .updater = m_updater,
           .files = m_environment.files,
           .shares = m_environment.shares,
           .setAutostart = m_environment.setAutostart,
           .logFile = m_environment.logFile,
           .startRemark = m_environment.startRemark})
{
    QObject::connect(&m_root, &RootView::deliverableShown, &m_root, [this] {
        if (m_window)
            bringToFront(*m_window, {});
    });
    m_limits.start(keepLineLimits(m_environment.preferences, m_environment.clock, m_environment.shares));
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &m_root, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            m_root.becomeActive();
    });
}

Transfers::Environment Application::transfersWithSignIns()
{
    auto environment = m_environment.transfers;
    environment.signIns = {.now = [this] { return m_session.account(); },
                           .until = [this](Account account) { return m_session.untilSignedIn(std::move(account)); }};
    return environment;
}

Application::~Application()
{
    if (m_window)
        m_window->hide();
    if (m_panel)
        m_panel->hide();
    QEventLoop untilClosed;
    bool isClosed = false;
    boost::asio::co_spawn(m_environment.main, finish(), [&](const std::exception_ptr&) {
        isClosed = true;
        untilClosed.quit();
    });
    if (!isClosed)
        untilClosed.exec(QEventLoop::ExcludeUserInputEvents);
    // A window that is hidden goes on with none of the items that it was making, and the engine must not go before
    // them. An item that never comes must not keep the program, either.
    constexpr int slice = 10, mostSlices = 200; // ms
    auto* making = m_engine.incubationController();
    for (int i = 0; making && making->incubatingObjectCount() > 0 && i < mostSlices; ++i)
        making->incubateFor(slice);
}

Task<void> Application::finish()
{
    co_await m_root.close();
    co_await m_updater.close();
    co_await m_limits.close();
    co_await m_transfers.suspend(); // what it still does in the background must not outlive the program
}

bool Application::show(bool inBackground)
{
    m_engine.setInitialProperties(
        {{QStringLiteral("model"), QVariant::fromValue(&m_root)}, {QStringLiteral("dark"), m_dark}});
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Palvera/App/Main.qml")));
    m_window = qobject_cast<QQuickWindow*>(m_engine.rootObjects().value(0));
    if (!m_window)
        return false;
    m_place = std::make_unique<WindowPlace>(*m_window, m_environment.preferences, QStringLiteral("pv.window"));
    placePanel();
    QObject::connect(m_root.shell()->settings(), &SettingsView::changed, m_window, [this] { followTray(); });
    followTray();
    if (!inBackground || !m_tray)
        m_window->show();
    return true;
}

void Application::followTray()
{
    const bool isWanted = m_environment.makeTray && m_root.shell()->settings()->isInBackground();
    if (isWanted == bool(m_tray))
        return;
    m_tray.reset();
    m_root.shell()->setTray(false);
    if (!isWanted)
        return;
    m_tray = m_environment.makeTray(
        {.show = [this] { arrive({}); }, .quit = [this] { QMetaObject::invokeMethod(m_window, "leave"); }});
    QObject::connect(m_tray.get(), &TrayItem::settled, m_window, [this] {
        m_root.shell()->setTray(m_tray->isShown());
        if (!m_tray->isShown()) // the only way back
            m_window->show();
    });
}

void Application::placePanel()
{
    m_panel = m_window->property("panel").value<QQuickWindow*>();
    m_panel->setProperty("_q_showWithoutActivating", true); // it opens by itself, while the user types elsewhere
    m_panelSize =
        std::make_unique<WindowPlace>(*m_panel, m_environment.preferences, QStringLiteral("pv.window.transfers"));
    m_panelPlace = std::make_unique<PanelPlace>(*m_panel, *m_window, m_window->property("barHeight").toInt());
}

void Application::arrive(const Arrival& arrival)
{
    if (m_window)
        bringToFront(*m_window, arrival.token);
    for (const auto& address : arrival.addresses)
        m_root.refuse(m_environment.web.take(QString::fromUtf8(address)));
}

void Application::setDark(bool dark)
{
    m_dark = dark;
    if (m_window)
        m_window->setProperty("dark", dark);
}

} // namespace palvera
