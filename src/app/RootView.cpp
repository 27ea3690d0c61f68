#include "app/RootView.h"

#include "session/Session.h"

namespace palvera {

RootView::RootView(Environment environment, QObject* parent)
    : QObject(parent),
      m_environment(std::move(environment)),
      m_session(m_environment.signIn.session),
      m_tasks(m_environment.signIn.main),
      m_login(m_environment.signIn),
      m_orgPicker(m_session),
      m_projects(m_environment.signIn.api, m_environment.signIn.main)
{
    connect(&m_session, &Session::screenChanged, this, &RootView::changeScreen);
    connect(&m_session, &Session::stateChanged, this, &RootView::userChanged);
    connect(&m_session, &Session::errorChanged, this, &RootView::errorChanged);
    changeScreen();
}

QString RootView::userName() const
{
    const auto* me = m_session.me();
    return me ? me->user.name.value_or(QString()) : QString();
}

QString RootView::userEmail() const
{
    const auto* me = m_session.me();
    return me ? me->user.email : QString();
}

QString RootView::error() const
{
    return m_session.errorText();
}

QString RootView::buildText() const
{
    return tr("Build %1 (%2)").arg(m_environment.version, m_environment.build);
}

void RootView::start()
{
    if (std::holds_alternative<Session::Unknown>(m_session.state()))
        m_tasks.start(m_session.start());
}

void RootView::signOut()
{
    m_tasks.start(m_session.signOut());
}

void RootView::chooseAnotherClient()
{
    m_session.leave();
}

void RootView::reloadOrgs()
{
    m_tasks.start(m_session.loadOrgs());
}

Task<void> RootView::close()
{
    co_await m_tasks.close();
    co_await m_login.close();
    co_await m_projects.close();
}

void RootView::changeScreen()
{
    const auto key = m_session.screen();
    if (key == m_key)
        return;
    m_key = key;
    if (const auto& org = m_session.org())
        m_projects.open(*org);
    else if (key == QStringLiteral("login"))
        m_login.open(m_environment.isDoorAsked());
    Q_EMIT keyChanged();
}

} // namespace palvera
