#include "session/Session.h"

#include "platform/Bookmark.h"
#include "platform/Failure.h"
#include "platform/Preferences.h"
#include "platform/TaskGroup.h"
#include "service/API.h"
#include "service/BrowsingOperations.h"
#include "service/SignInOperations.h"

namespace palvera {

namespace {

/// How `operation` ended; a cancellation passes through.
template <class T>
Task<Outcome<T>> answerOf(Task<T> operation)
{
    auto outcome = co_await outcomeOf(std::move(operation));
    if (isCancellation(outcome.failure))
        std::rethrow_exception(outcome.failure);
    co_return outcome;
}

} // namespace

const QString Session::orgKey = QStringLiteral("pv.lastOrgId");
const QString Session::folderKey = QStringLiteral("pv.downloadsBookmark");

Session::Session(API& api, Preferences& preferences, QObject* parent)
    : QObject(parent), m_api(api), m_preferences(preferences), m_site(currentSite(preferences))
{}

const Me* Session::me() const
{
    const auto* signedIn = std::get_if<SignedIn>(&m_state);
    return signedIn ? &signedIn->me : nullptr;
}

QString Session::screen() const
{
    if (std::holds_alternative<Unknown>(m_state))
        return QStringLiteral("loading");
    if (!me())
        return QStringLiteral("login");
    return m_org ? QStringLiteral("org:") + m_org->id : QStringLiteral("orgs");
}

Task<void> Session::start()
{
    return identify();
}

Task<void> Session::refresh()
{
    auto answer = co_await answerOf(currentUser(m_api));
    if (answer.failure) {
        assign(m_error, std::optional(describe(answer.failure)), &Session::errorChanged);
        co_return;
    }
    assignShown(m_state, State(SignedIn{*answer.value}), &Session::stateChanged);
    co_await loadOrgs();
}

Task<void> Session::loadOrgs()
{
    auto answer = co_await answerOf(listOrgs(m_api));
    if (answer.failure)
        assign(m_error, std::optional(describe(answer.failure)), &Session::errorChanged);
    else
        assign(m_orgs, *answer.value, &Session::orgsChanged);
}

Task<void> Session::setSite(Site site)
{
    if (site == m_site)
        co_return;
    storeSite(m_preferences, site);
    m_api.setSite(site);
    assign(m_site, site, &Session::siteChanged);
    assignShown(m_org, std::optional<Org>(), &Session::orgChanged);
    assign(m_orgs, {}, &Session::orgsChanged);
    assign(m_error, {}, &Session::errorChanged);
    co_await identify();
}

void Session::choose(const Org& org)
{
    assignShown(m_org, std::optional(org), &Session::orgChanged);
    m_preferences.setString(orgKey, org.id);
}

void Session::leave()
{
    assignShown(m_org, std::optional<Org>(), &Session::orgChanged);
}

Task<void> Session::signOut()
{
    co_await m_api.signOut();
    assignShown(m_org, std::optional<Org>(), &Session::orgChanged);
    assign(m_orgs, {}, &Session::orgsChanged);
    assignShown(m_state, State(SignedOut{}), &Session::stateChanged);
}

Task<void> Session::identify()
{
    auto answer = co_await answerOf(currentUser(m_api));
    if (answer.failure) {
        assignShown(m_state, State(SignedOut{}), &Session::stateChanged);
        co_return;
    }
    assignShown(m_state, State(SignedIn{*answer.value}), &Session::stateChanged);
    co_await loadOrgs();
}

std::optional<QString> Session::downloadsFolder() const
{
    auto kept = m_preferences.bytes(folderKey);
    auto found = kept ? bookmark::resolve(*kept) : std::nullopt;
    return found ? std::optional(found->path) : std::nullopt; // under another name too: the bookmark still serves
}

void Session::setDownloadsFolder(const std::optional<QString>& path)
{
    auto before = downloadsFolder();
    if (auto bytes = path ? bookmark::make(*path) : std::nullopt)
        m_preferences.setBytes(folderKey, *bytes);
    else
        m_preferences.remove(folderKey);
    if (downloadsFolder() != before)
        Q_EMIT downloadsFolderChanged();
}

template <class T>
bool Session::assign(T& property, T value, void (Session::*changed)())
{
    if (property == value)
        return false;
    property = std::move(value);
    Q_EMIT(this->*changed)();
    return true;
}

template <class T>
void Session::assignShown(T& property, T value, void (Session::*changed)())
{
    auto before = screen();
    if (assign(property, std::move(value), changed) && screen() != before)
        Q_EMIT screenChanged();
}

} // namespace palvera
