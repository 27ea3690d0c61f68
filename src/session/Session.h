#pragma once

#include "async/Task.h"
#include "service/Organisations.h"
#include "service/SignInRecords.h"
#include "service/Site.h"

#include <QProperty>

#include <exception>
#include <optional>
#include <variant>

namespace palvera {

class API;
class Preferences;

/// Who is signed in, to which site, which organisations they can see and which one is open; also where downloads go.
///
/// Lives on the main thread. Its asynchronous operations must be awaited there and outlived by the session; they wait
/// for the service without blocking and may interleave, in which case the last assignment wins. No failure comes out
/// of them; cancelling one ends it with a cancellation and with nothing further assigned. A property is assigned, and
/// announced, only when its value changes.
class Session final : public QObject {
    Q_OBJECT

public:
    /// Nobody has asked yet.
    struct Unknown {
        bool operator==(const Unknown&) const = default;
    };
    struct SignedIn {
        Me me;

        bool operator==(const SignedIn&) const = default;
    };
    struct SignedOut {
        bool operator==(const SignedOut&) const = default;
    };
    using State = std::variant<Unknown, SignedIn, SignedOut>;

    /// Under which the id of the organisation chosen last is kept.
    static const QString orgKey;
    /// Under which the bookmark of the downloads folder is kept.
    static const QString folderKey;

    /// Begins with nobody asked, on the site that `preferences` name. Both must outlive the session; `background` are
    /// threads for looking at the disk.
    Session(API& api, Preferences& preferences, const Executor& background, QObject* parent = nullptr);

    const State& state() const { return m_state; }
    /// Nothing unless somebody is signed in.
    const Me* me() const;
    /// Those that the user can open, in the platform's order.
    const QList<Org>& orgs() const { return m_orgs; }
    /// The one that is open.
    const std::optional<Org>& org() const { return m_org; }
    /// The last failure, in words for the user.
    const std::optional<QString>& error() const { return m_error; }
    /// What that was; null where there was none.
    const std::exception_ptr& failure() const { return m_failure; }
    Site site() const { return m_site; }
    /// What the user should see: "loading", "login", "orgs", or "org:" and the open organisation's id.
    QString screen() const { return m_screen; }

    /// Finds out who is signed in, and their organisations. Any failure means that nobody is, and leaves `error`.
    Task<void> start();
    /// The same after a sign-in. A failure goes into `error` and leaves the state.
    Task<void> refresh();
    /// Lists the organisations. A failure goes into `error` and leaves the list.
    Task<void> loadOrgs();
    /// Goes over to `site`, for the next start too, with nothing open, and finds out who is signed in there; any
    /// failure means that nobody is. Does nothing when that is the site already.
    Task<void> setSite(Site site);
    /// Opens `org` and remembers it.
    void choose(const Org& org);
    /// Closes the organisation that is open.
    void leave();
    /// Signs out, whatever the platform says to it.
    Task<void> signOut();

    /// The folder that downloads go to, also after it was renamed; nothing when none was chosen or it is gone.
    Task<std::optional<QString>> downloadsFolder() const;
    /// Keeps the folder at `path`, or none. A folder that does not exist counts as none.
    Task<void> setDownloadsFolder(std::optional<QString> path);

Q_SIGNALS:
    void stateChanged();
    void orgsChanged();
    void orgChanged();
    void errorChanged();
    void siteChanged();
    void screenChanged();

private:
    /// Takes a failing `currentUser` as nobody.
    Task<void> identify();
    void fail(std::exception_ptr failure);
    void updateScreen();

    API& m_api;
    Preferences& m_preferences;
    const Executor m_disk; // a strand
    std::exception_ptr m_failure;
    Q_OBJECT_BINDABLE_PROPERTY(Session, State, m_state, &Session::stateChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, QList<Org>, m_orgs, &Session::orgsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, std::optional<Org>, m_org, &Session::orgChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, std::optional<QString>, m_error, &Session::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, Site, m_site, &Session::siteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, QString, m_screen, &Session::screenChanged)
};

} // namespace palvera
