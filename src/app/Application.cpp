#include "app/Application.h"

#include <boost/asio/co_spawn.hpp>

#include <QEventLoop>
#include <QQuickWindow>

namespace palvera {

Application::Application(Environment environment)
    : m_environment(std::move(environment)),
      m_session(m_environment.api, m_environment.preferences),
      m_root({.signIn = {.main = m_environment.main,
                         .clock = m_environment.clock,
                         .api = m_environment.api,
                         .session = m_session,
                         .web = m_environment.web,
                         .passkey = m_environment.passkey},
              .isDoorAsked = m_environment.isDoorAsked,
              .version = m_environment.version,
              .build = m_environment.build})
{
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
}

Application::~Application()
{
    if (m_window)
        m_window->hide();
    QEventLoop untilClosed;
    bool isClosed = false;
    boost::asio::co_spawn(m_environment.main, m_root.close(), [&](const std::exception_ptr&) {
        isClosed = true;
        untilClosed.quit();
    });
    if (!isClosed)
        untilClosed.exec(QEventLoop::ExcludeUserInputEvents);
}

bool Application::show()
{
    m_engine.setInitialProperties(
        {{QStringLiteral("model"), QVariant::fromValue(&m_root)}, {QStringLiteral("dark"), m_dark}});
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Palvera/App/Main.qml")));
    m_window = qobject_cast<QQuickWindow*>(m_engine.rootObjects().value(0));
    if (!m_window)
        return false;
    m_place = std::make_unique<WindowPlace>(*m_window, m_environment.preferences);
    m_window->show();
    return true;
}

void Application::raise()
{
    if (!m_window)
        return;
    if (m_window->windowStates().testFlag(Qt::WindowMinimized))
        m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

void Application::setDark(bool dark)
{
    m_dark = dark;
    if (m_window)
        m_window->setProperty("dark", dark);
}

} // namespace palvera
