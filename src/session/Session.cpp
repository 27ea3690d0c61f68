#include "session/Session.h"

#include "async/Event.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Bookmark.h"
#include "files/Preferences.h"
#include "http/NetworkPath.h"
#include "service/API.h"
#include "service/BrowsingOperations.h"
#include "service/SignInOperations.h"
#include "text/VisibleText.h"

#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/this_coro.hpp>

#include <QPointer>
#include <QScopeGuard>

namespace palvera {

namespace asio = boost::asio;

using namespace std::chrono_literals;

namespace {

QString screenOf(const Session::State& state, const std::optional<Org>& org)
{
    if (std::holds_alternative<Session::Unknown>(state))
        return QStringLiteral("loading");
    if (!std::holds_alternative<Session::SignedIn>(state))
        return QStringLiteral("login");
    return org ? QStringLiteral("org:") + org->id : QStringLiteral("orgs");
}

/// Whether the platform itself did not answer, so that nothing is known.
bool isUnheard(const std::exception_ptr& failure)
{
    return failure && !failureAs<APIError>(failure);
}

} // namespace

const QString Session::orgKey = QStringLiteral("pv.lastOrgId");
const QString Session::folderKey = QStringLiteral("pv.downloadsBookmark");

Session::Session(Environment environment, QObject* parent)
    : QObject(parent),
      m_environment(std::move(environment)),
      m_disk(asio::make_strand(m_environment.background)),
      m_site(currentSite(m_environment.preferences)),
      m_screen(screenOf(m_state, m_org))
{
    m_remark = m_environment.api.serviceProblem();
    m_environment.api.onSignInNeeded([self = QPointer(this), main = m_environment.main] {
        asio::post(main, [self] {
            if (self)
                Q_EMIT self->signInDoubted();
        });
    });
}

Session::~Session()
{
    m_environment.api.onSignInNeeded({});
}

const Me* Session::me() const
{
    const auto* signedIn = std::get_if<SignedIn>(&m_state.value());
    return signedIn ? &signedIn->me : nullptr;
}

bool Session::hasExpired() const
{
    const auto* signedOut = std::get_if<SignedOut>(&m_state.value());
    return signedOut && signedOut->hasExpired;
}

Task<void> Session::start()
{
    return identify();
}

Task<void> Session::askAgain(std::function<bool()> isWelcome)
{
    int tries = 0;
    while (m_isUnsure && isWelcome()) {
        tries = co_await untilNextTry(tries, m_environment.network, m_environment.clock);
        if (m_isUnsure && m_environment.api.canBeAsked(m_environment.network))
            co_await askOnce(isWelcome);
    }
}

Task<void> Session::askOnce(std::function<bool()> isWelcome)
{
    if (!std::holds_alternative<SignedOut>(m_state.value()) || !isWelcome())
        co_return;
    const auto number = m_questions;
    auto answer = co_await answerOf(currentUser(m_environment.api));
    if (number != m_questions || !isWelcome())
        co_return;
    m_isUnsure = isUnheard(answer.failure);
    if (answer.value) {
        take(*answer.value);
        co_await loadOrgs();
    }
}

Task<bool> Session::confirm()
{
    if (!m_account)
        co_return false;
    if (m_isConfirming) {
        Event answered(co_await asio::this_coro::executor);
        QObject listener;
        connect(this, &Session::confirmed, &listener, [&answered] { answered.set(); });
        co_await answered.wait();
        co_return m_isKnown;
    }
    m_isConfirming = true;
    m_isKnown = false;
    const auto over = qScopeGuard([this] {
        m_isConfirming = false;
        Q_EMIT confirmed();
    });
    const auto number = m_questions;
    auto answer = co_await answerOf(currentUser(m_environment.api));
    if (number != m_questions)
        co_return false;
    m_isKnown = answer.value && m_account && answer.value->user.id == m_account->userId;
    if (asksToSignIn(answer.failure)) {
        m_remark = QString(); // on a sign-in that is over
        setSignedOut(true);
    } else if (answer.value && !m_isKnown) { // another program has signed somebody else in
        take(*answer.value);
        co_await loadOrgs();
    }
    co_return m_isKnown;
}

Task<bool> Session::untilSignedIn(Account account)
{
    int tries = 0;
    while (m_account == account) {
        if (co_await confirm())
            co_return false;
        if (m_account == account)
            tries = co_await untilNextTry(tries, m_environment.network, m_environment.clock);
    }
    Event changed(co_await asio::this_coro::executor);
    QObject listener;
    connect(this, &Session::accountChanged, &listener, [&changed] { changed.set(); });
    while (m_account != account)
        co_await changed.wait();
    co_return true;
}

Task<void> Session::refresh()
{
    const auto number = ++m_questions;
    auto answer = co_await answerOf(currentUser(m_environment.api));
    if (number != m_questions)
        co_return;
    if (answer.failure) {
        fail(answer.failure);
        co_return;
    }
    succeed();
    take(*answer.value);
    if (auto problem = m_environment.api.signInProblem(); !problem.isEmpty())
        m_remark = tr("Signed in, but only for now: %1").arg(problem);
    co_await loadOrgs();
}

void Session::remarkOnUser()
{
    if (!me())
        return;
    QStringList remarks{tr("You are signed in as %1.").arg(visibleText(me()->user.email)), m_remark};
    remarks.removeAll(QString());
    m_remark = remarks.join(u'\n');
}

Task<void> Session::loadOrgs()
{
    const auto number = ++m_orgsAsked;
    m_orgsLoading = true;
    const auto over = qScopeGuard([this, number] {
        if (number == m_orgsAsked)
            m_orgsLoading = false;
    });
    auto answer = co_await answerOf(listOrgs(m_environment.api));
    if (number != m_orgsAsked)
        co_return;
    if (answer.failure) {
        fail(answer.failure);
        co_return;
    }
    succeed();
    m_orgs = *answer.value;
}

Task<void> Session::setSite(Site site)
{
    if (site == m_site.value())
        co_return;
    storeSite(m_environment.preferences, site);
    noteUnkept();
    m_environment.api.setSite(site);
    setAccount({});
    m_site = site;
    forgetOrgs();
    succeed();
    co_await identify();
}

void Session::choose(const Org& org)
{
    m_org = org;
    updateScreen();
    m_environment.preferences.setString(orgKey, org.id);
}

void Session::leave()
{
    m_org = std::nullopt;
    updateScreen();
}

Task<void> Session::signOut()
{
    ++m_questions;
    setSignedOut(false);
    forgetOrgs();
    succeed();
    m_remark = QString();
    const bool isTold = co_await m_environment.api.signOut();
    if (m_account)
        co_return; // somebody has signed in meanwhile
    if (auto problem = m_environment.api.signInProblem(); !problem.isEmpty())
        m_remark = problem;
    else if (!isTold)
        m_remark = tr("Signed out on this computer. The platform could not be told.");
}

Task<void> Session::identify()
{
    const auto number = ++m_questions;
    std::optional<Me> me;
    m_isUnsure = !m_environment.api.canBeAsked(m_environment.network);
    if (!m_isUnsure) {
        auto answer = co_await answerOf(currentUser(m_environment.api));
        if (number != m_questions)
            co_return;
        m_isUnsure = isUnheard(answer.failure);
        me = std::move(answer.value);
    }
    if (!me) {
        setSignedOut(false);
        co_return;
    }
    take(*me);
    co_await loadOrgs();
}

void Session::take(const Me& me)
{
    const Account account{.service = m_environment.api.makeURL(QString()), .userId = me.user.id};
    if (m_owner != account)
        forgetOrgs();
    m_owner = account;
    m_state = SignedIn{me};
    setAccount(account);
    updateScreen();
}

void Session::setSignedOut(bool hasExpired)
{
    m_state = SignedOut{.hasExpired = hasExpired};
    setAccount({});
    updateScreen();
}

void Session::setAccount(std::optional<Account> account)
{
    if (std::exchange(m_account, account) != account)
        Q_EMIT accountChanged();
}

void Session::forgetOrgs()
{
    ++m_orgsAsked;
    m_orgsLoading = false;
    m_org = std::nullopt;
    updateScreen();
    m_orgs = QList<Org>();
}

Task<std::optional<QString>> Session::downloadsFolder() const
{
    const auto kept = m_environment.preferences.bytes(folderKey);
    std::optional<bookmark::Resolved> found;
    if (kept)
        co_await callOn(m_disk, [&] { found = bookmark::resolve(*kept); });
    co_return found ? std::optional(found->path) : std::nullopt; // under another name too: the bookmark still serves
}

Task<void> Session::setDownloadsFolder(std::optional<QString> path)
{
    std::optional<QByteArray> made;
    if (path)
        co_await callOn(m_disk, [&] { made = bookmark::make(*path); });
    if (made)
        m_environment.preferences.setBytes(folderKey, *made);
    else
        m_environment.preferences.remove(folderKey);
    noteUnkept();
}

void Session::fail(std::exception_ptr failure)
{
    m_failure = std::move(failure);
    m_error = describe(m_failure);
}

void Session::succeed()
{
    m_failure = nullptr;
    m_error = std::nullopt;
}

/// Of what the user has chosen.
void Session::noteUnkept()
{
    if (auto problem = m_environment.preferences.problem(); !problem.isEmpty())
        m_remark = problem;
}

void Session::updateScreen()
{
    m_screen = screenOf(m_state, m_org);
}

} // namespace palvera
