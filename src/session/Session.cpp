#include "session/Session.h"

#include "async/Failure.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Bookmark.h"
#include "files/Preferences.h"
#include "service/API.h"
#include "service/BrowsingOperations.h"
#include "service/SignInOperations.h"

#include <boost/asio/strand.hpp>

namespace palvera {

namespace {

QString screenOf(const Session::State& state, const std::optional<Org>& org)
{
    if (std::holds_alternative<Session::Unknown>(state))
        return QStringLiteral("loading");
    if (!std::holds_alternative<Session::SignedIn>(state))
        return QStringLiteral("login");
    return org ? QStringLiteral("org:") + org->id : QStringLiteral("orgs");
}

} // namespace

const QString Session::orgKey = QStringLiteral("pv.lastOrgId");
const QString Session::folderKey = QStringLiteral("pv.downloadsBookmark");

Session::Session(API& api, Preferences& preferences, const Executor& background, QObject* parent)
    : QObject(parent),
      m_api(api),
      m_preferences(preferences),
      m_disk(boost::asio::make_strand(background)),
      m_site(currentSite(preferences)),
      m_screen(screenOf(m_state, m_org))
{}

const Me* Session::me() const
{
    const auto* signedIn = std::get_if<SignedIn>(&m_state.value());
    return signedIn ? &signedIn->me : nullptr;
}

Task<void> Session::start()
{
    return identify();
}

Task<void> Session::refresh()
{
    auto answer = co_await answerOf(currentUser(m_api));
    if (answer.failure) {
        fail(answer.failure);
        co_return;
    }
    m_state = SignedIn{*answer.value};
    updateScreen();
    co_await loadOrgs();
}

Task<void> Session::loadOrgs()
{
    auto answer = co_await answerOf(listOrgs(m_api));
    if (answer.failure)
        fail(answer.failure);
    else
        m_orgs = *answer.value;
}

Task<void> Session::setSite(Site site)
{
    if (site == m_site.value())
        co_return;
    storeSite(m_preferences, site);
    m_api.setSite(site);
    m_site = site;
    m_org = std::nullopt;
    updateScreen();
    m_orgs = QList<Org>();
    m_error = std::nullopt;
    m_failure = nullptr;
    co_await identify();
}

void Session::choose(const Org& org)
{
    m_org = org;
    updateScreen();
    m_preferences.setString(orgKey, org.id);
}

void Session::leave()
{
    m_org = std::nullopt;
    updateScreen();
}

Task<void> Session::signOut()
{
    co_await m_api.signOut();
    m_org = std::nullopt;
    updateScreen();
    m_orgs = QList<Org>();
    m_state = SignedOut{};
    updateScreen();
}

Task<void> Session::identify()
{
    auto answer = co_await answerOf(currentUser(m_api));
    if (answer.failure) {
        m_state = SignedOut{};
        updateScreen();
        co_return;
    }
    m_state = SignedIn{*answer.value};
    updateScreen();
    co_await loadOrgs();
}

Task<std::optional<QString>> Session::downloadsFolder() const
{
    const auto kept = m_preferences.bytes(folderKey);
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
        m_preferences.setBytes(folderKey, *made);
    else
        m_preferences.remove(folderKey);
}

void Session::fail(std::exception_ptr failure)
{
    m_failure = std::move(failure);
    m_error = describe(m_failure);
}

void Session::updateScreen()
{
    m_screen = screenOf(m_state, m_org);
}

} // namespace palvera
