#include "app/RootView.h"

#include "async/TaskGroup.h"
#include "files/Preferences.h"
#include "service/API.h"
#include "service/BrowsingOperations.h"
#include "session/Session.h"
#include "text/VisibleText.h"
#include "transfers/Transfers.h"

namespace palvera {

namespace {

Task<void> confirmIn(Session& session)
{
    co_await session.confirm();
}

template <class Record>
const Record* findById(const QList<Record>& records, const QString& id)
{
    const auto found = std::ranges::find(records, id, &Record::id);
    return found == records.end() ? nullptr : &*found;
}

} // namespace

RootView::RootView(Environment environment, QObject* parent)
    : QObject(parent),
      m_environment(std::move(environment)),
      m_session(m_environment.signIn.session),
      m_tasks(m_environment.signIn.main),
      m_login(m_environment.signIn),
      m_orgPicker(m_session),
      m_projects(m_environment.signIn.doors.api, m_environment.signIn.main),
      m_deliverables({.main = m_environment.signIn.main,
                      .background = m_environment.background,
                      .clock = m_environment.signIn.clock,
                      .api = m_environment.signIn.doors.api,
                      .transfers = m_environment.transfers}),
      m_sender(m_environment.signIn.main, m_environment.background, m_environment.transfers),
      m_rowDrop(m_deliverables, m_sender),
      m_deliverable({.main = m_environment.signIn.main,
                     .clock = m_environment.signIn.clock,
                     .api = m_environment.signIn.doors.api,
                     .transfers = m_environment.transfers,
                     .session = m_session,
                     .sender = m_sender}),
      m_assets({.main = m_environment.signIn.main,
                .background = m_environment.background,
                .clock = m_environment.signIn.clock,
                .api = m_environment.signIn.doors.api,
                .transfers = m_environment.transfers,
                .session = m_session,
                .preferences = m_environment.preferences}),
      m_transfers(m_environment.transfers, m_environment.signIn.clock, m_environment.signIn.main, m_environment.files),
      m_updatePill(m_environment.updater, m_environment.transfers),
      m_about(m_environment.updater),
      m_shell({.settings = {.main = m_environment.signIn.main,
                            .clock = m_environment.signIn.clock,
                            .preferences = m_environment.preferences,
                            .session = m_session,
                            .transfers = m_environment.transfers,
                            .shares = m_environment.shares,
                            .setAutostart = m_environment.setAutostart},
               .logFile = m_environment.logFile,
               .open = m_environment.files.open}),
      m_announcements(m_environment.transfers),
      m_textSize(m_environment.preferences),
      m_remark(QStringList({m_environment.startRemark, m_environment.preferences.setAside()}).join(u' ').trimmed())
{
    connect(&m_session, &Session::screenChanged, this, &RootView::changeScreen);
    connect(&m_session, &Session::stateChanged, this, &RootView::userChanged);
    connect(&m_session, &Session::errorChanged, this, &RootView::errorChanged);
    connect(&m_session, &Session::orgsLoadingChanged, this, &RootView::orgsLoadingChanged);
    connect(&m_session, &Session::accountChanged, &m_environment.transfers, &Transfers::followAccount);
    connect(&m_session, &Session::remarkChanged, this, &RootView::remarkChanged);
    connect(&m_session, &Session::signInDoubted, this, [this] { m_tasks.start(confirmIn(m_session)); });
    connect(&m_deliverables, &DeliverablesView::loaded, this, &RootView::updateDeliverable);
    connect(&m_sender, &FileSender::noticeChanged, this, &RootView::remarkChanged);
    connect(&m_projects, &ProjectsView::orgChanged, this, &RootView::windowTitleChanged);
    connect(&m_transfers, &TransfersView::overallChanged, this, &RootView::windowTitleChanged);
    connect(&m_assets, &AssetsView::placeChanged, this, &RootView::windowTitleChanged);
    connect(&m_deliverable, &DeliverableView::deliverableChanged, this, &RootView::windowTitleChanged);
    connect(this, &RootView::pageChanged, this, &RootView::windowTitleChanged);
    connect(&m_transfers, &TransfersView::deliverableWanted, this,
            [this](const auto& wanted) { m_tasks.start(showDeliverable(wanted)); });
    connect(this, &RootView::keyChanged, this, &RootView::windowTitleChanged);
    connect(&m_announcements, &Announcements::announced, this, [this](const QString& text) {
        if (m_shell.settings()->announces())
            Q_EMIT announced(text);
    });
    changeScreen();
}

QString RootView::windowTitle() const
{
    QStringList parts{m_transfers.overallText(), screenTitle(), tr("Palvera")};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" – "));
}

QString RootView::screenTitle() const
{
    const auto& org = m_session.org();
    if (!org || !m_session.me())
        return {};
    if (m_page == Page::Deliverables)
        return m_deliverables.title();
    if (m_page == Page::Deliverable)
        return m_deliverable.title();
    return m_page == Page::Assets ? m_assets.title() : visibleName(org->name, org->id);
}

QString RootView::userName() const
{
    const auto* me = m_session.me();
    return me ? visibleText(me->user.name.value_or(QString())) : QString();
}

QString RootView::userEmail() const
{
    const auto* me = m_session.me();
    return me ? visibleText(me->user.email) : QString();
}

QString RootView::error() const
{
    return m_session.error().value_or(QString());
}

bool RootView::areOrgsLoading() const
{
    return m_session.areOrgsLoading();
}

QString RootView::remark() const
{
    const bool isSaidByPage = m_page == Page::Deliverables || m_page == Page::Deliverable;
    if (!isSaidByPage && !m_sender.notice().isEmpty())
        return m_sender.notice();
    return m_remark.isEmpty() ? m_session.remark() : m_remark;
}

void RootView::dismissRemark()
{
    if (remark() == m_sender.notice())
        m_sender.dismissNotice();
    else if (m_remark.isEmpty())
        m_session.dismissRemark();
    else
        setRemark({});
}

void RootView::setRemark(const QString& remark)
{
    if (std::exchange(m_remark, remark) != remark)
        Q_EMIT remarkChanged();
}

QString RootView::buildText() const
{
    return tr("Build %1").arg(m_environment.updater.versionText());
}

bool RootView::isServiceExposed() const
{
    return m_environment.signIn.doors.api.isServiceExposed();
}

void RootView::start()
{
    if (std::holds_alternative<Session::Unknown>(m_session.state()))
        m_tasks.start(m_session.start());
}

void RootView::signOut()
{
    const int moving = m_environment.transfers.inFlightCount();
    if (moving == 0)
        return confirmSignOut();
    setSignOutQuestion(moving == 1
                           ? tr("One file is moving. It waits under Interrupted and goes on from where it was once "
                                "you are signed in again.")
                           : tr("%n files are moving. They wait under Interrupted and go on from where they were "
                                "once you are signed in again.",
                                nullptr, moving));
}

void RootView::confirmSignOut()
{
    setSignOutQuestion({});
    m_environment.transfers.cutOff();
    m_tasks.start(m_session.signOut());
}

void RootView::staySignedIn()
{
    setSignOutQuestion({});
}

void RootView::setSignOutQuestion(const QString& question)
{
    if (std::exchange(m_signOutQuestion, question) != question)
        Q_EMIT signOutQuestionChanged();
}

void RootView::chooseAnotherClient()
{
    m_session.leave();
}

void RootView::reloadOrgs()
{
    m_tasks.start(m_session.loadOrgs());
}

void RootView::openProject(int row)
{
    if (!m_session.org() || row < 0 || row >= m_projects.rowCount())
        return;
    if (auto project = m_projects.projectAt(row)) {
        m_deliverables.open(*m_session.org(), *project);
        goTo(Page::Deliverables);
    } else {
        m_assets.open(*m_session.org());
        goTo(Page::Assets);
    }
}

void RootView::openDeliverable(int row)
{
    if (row < 0 || row >= m_deliverables.rowCount())
        return;
    m_deliverable.open(m_deliverables.org(), m_deliverables.project(), m_deliverables.deliverableAt(row));
    goTo(Page::Deliverable);
}

void RootView::back()
{
    if (m_page == Page::Deliverable)
        goTo(Page::Deliverables);
    else if (m_page == Page::Projects)
        chooseAnotherClient();
    else
        goTo(Page::Projects);
}

void RootView::goBack()
{
    if (m_key == QStringLiteral("login"))
        m_login.goBack();
    else if (!m_orgKey.isEmpty() && !(m_page == Page::Assets && m_assets.back()))
        back();
}

void RootView::refuse(BrowserSignIn::Taken callback)
{
    if (m_key == QStringLiteral("loading"))
        m_refused = callback;
    else
        m_login.refuse(callback);
}

void RootView::becomeActive()
{
    m_deliverables.load();
    m_login.browser()->becomeActive();
    m_tasks.start(m_session.askOnce([this] { return !m_login.isTouched(); }));
}

void RootView::goTo(Page page)
{
    if (page == Page::Projects) {
        m_deliverables.leave();
        m_assets.leave();
    }
    m_sender.turnPage();
    m_rowDrop.dismiss();
    if (std::exchange(m_page, page) != page)
        Q_EMIT pageChanged();
}

/// What is filed on the deliverable that is open may have changed, or the platform no longer has it.
void RootView::updateDeliverable()
{
    if (m_page == Page::Deliverable)
        m_deliverable.update(m_deliverables.find(m_deliverable.deliverable().id));
}

/// Asks the platform for the names on the way there, whatever is open.
Task<void> RootView::showDeliverable(TransferTarget::Deliverable wanted)
{
    auto& api = m_environment.signIn.doors.api;
    const auto account = m_session.account();
    const auto projects = co_await answerOf(listProjects(api, wanted.orgId));
    const auto rows = co_await answerOf(listDeliverables(api, wanted.orgId, wanted.projectId));
    if (!account || m_session.account() != account)
        co_return;
    if (const auto failure = projects.failure ? projects.failure : rows.failure)
        co_return setRemark(tr("The deliverable cannot be shown. %1").arg(describe(failure)));
    const auto* org = findById(m_session.orgs(), wanted.orgId);
    const auto* project = findById(*projects.value, wanted.projectId);
    const auto* row = findById(*rows.value, wanted.deliverableId);
    if (!org || !project || !row)
        co_return setRemark(tr("The platform no longer has that deliverable."));
    const auto opened = *org; // opening it may assign the list anew
    m_session.choose(opened);
    m_deliverables.open(opened, *project);
    m_deliverable.open(opened, *project, *row);
    goTo(Page::Deliverable);
    Q_EMIT deliverableShown();
}

Task<void> RootView::close()
{
    co_await m_tasks.close();
    co_await m_login.close();
    co_await m_projects.close();
    co_await m_deliverables.close();
    co_await m_sender.close();
    co_await m_deliverable.close();
    co_await m_assets.close();
    co_await m_transfers.close();
    co_await m_shell.close();
}

void RootView::changeScreen()
{
    const auto key = m_session.screen();
    if (key == m_key)
        return;
    m_key = key;
    const auto& org = m_session.org();
    m_login.leave();
    if (key == QStringLiteral("login"))
        openLogin();
    else if (org && key == m_orgKey)
        reload();
    else if (org)
        openOrg(*org);
    else
        leaveOrg();
    m_refused.reset();
    Q_EMIT keyChanged();
}

void RootView::openLogin()
{
    setSignOutQuestion({}); // the platform has answered it
    if (!m_session.hasExpired())
        leaveOrg();
    m_login.open(m_environment.isDoorAsked(),
                 m_session.hasExpired() ? tr("Your sign-in has expired. Sign in again.") : QString());
    if (m_refused)
        m_login.refuse(*m_refused);
    m_tasks.start(m_session.askAgain([this] { return !m_login.isTouched(); }));
}

void RootView::openOrg(const Org& org)
{
    m_orgKey = m_key;
    goTo(Page::Projects);
    m_projects.open(org);
}

void RootView::leaveOrg()
{
    m_orgKey.clear();
    goTo(Page::Projects);
}

void RootView::reload()
{
    if (m_orgKey.isEmpty())
        return m_session.me() ? reloadOrgs() : void();
    m_projects.load();
    if (m_page == Page::Assets)
        m_assets.load();
    else
        m_deliverables.load();
}

} // namespace palvera
