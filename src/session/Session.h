#pragma once

#include "async/Clock.h"
#include "service/Account.h"
#include "service/Organisations.h"
#include "service/SignInRecords.h"
#include "service/Site.h"

#include <QProperty>

#include <exception>
#include <functional>
#include <optional>
#include <variant>

namespace palvera {

class API;
class NetworkPath;
class Preferences;

/// Who is signed in, to which site, which organisations they can see and which one is open; also where downloads go.
///
/// Lives on the main thread. Its asynchronous operations must be awaited there and outlived by the session; they wait
/// for the service without blocking and may interleave, in which case what was asked last counts, and what is answered
/// to an earlier question changes nothing. No failure comes out of them; cancelling one ends it with a cancellation and
/// with nothing further assigned. A property is assigned, and announced, only when its value changes.
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
        bool hasExpired = false; ///< the platform ended the sign-in while the user worked

        bool operator==(const SignedOut&) const = default;
    };
    using State = std::variant<Unknown, SignedIn, SignedOut>;

    /// What it works with. Everything referred to outlives it.
    struct Environment {
        Executor main;       ///< the main thread's
        Executor background; ///< threads for looking at the disk
        Clock& clock;
        API& api;
        Preferences& preferences;
        NetworkPath& network;
    };

    /// Under which the id of the organisation chosen last is kept.
    static const QString orgKey;
    /// Under which the bookmark of the downloads folder is kept.
    static const QString folderKey;

    /// Begins with nobody asked, on the site that the preferences name.
    explicit Session(Environment environment, QObject* parent = nullptr);
    ~Session() override;

    const State& state() const { return m_state; }
    /// Nothing unless somebody is signed in.
    const Me* me() const;
    /// The same, and where.
    const std::optional<Account>& account() const { return m_account; }
    bool hasExpired() const;
    /// Those that the user can open, in the platform's order.
    const QList<Org>& orgs() const { return m_orgs; }
    bool areOrgsLoading() const { return m_orgsLoading; }
    /// The one that is open. It stays so while a sign-in that has expired is renewed.
    const std::optional<Org>& org() const { return m_org; }
    /// The last failure, in words for the user; nothing once something has succeeded.
    const std::optional<QString>& error() const { return m_error; }
    /// What that was; null where there was none.
    const std::exception_ptr& failure() const { return m_failure; }
    /// What the user should know although all is well; empty when nothing.
    QString remark() const { return m_remark; }
    void dismissRemark() { m_remark = QString(); }
    /// Has `remark` say who is signed in: in a browser that may be somebody else than the user meant.
    void remarkOnUser();
    Site site() const { return m_site; }
    /// What the user should see: "loading", "login", "orgs", or "org:" and the open organisation's id.
    QString screen() const { return m_screen; }

    /// Finds out who is signed in, and their organisations. Any failure means that nobody is, and leaves `error`.
    Task<void> start();
    /// Where nobody could be asked: asks again, after 2 to 30 seconds and when the network returns, until the platform
    /// has answered. Gives up once `isWelcome` says no, before a question or at its answer.
    Task<void> askAgain(std::function<bool()> isWelcome);
    /// Asks once more who is signed in; another program may have seen to it. Nothing comes of it where `isWelcome` says
    /// no by then.
    Task<void> askOnce(std::function<bool()> isWelcome);
    /// After a refusal because nobody is signed in: asks whether that is so, one question for all who come meanwhile,
    /// and if it is, the sign-in has expired. Gives whether the platform still knows the user; false, too, when it
    /// cannot be asked.
    Task<bool> confirm();
    /// After such a refusal, for what `account` has under way: ends with true once they are signed in again, and with
    /// false if the platform knows them still.
    Task<bool> untilSignedIn(Account account);
    /// Finds out who is signed in after a sign-in. A failure goes into `error` and leaves the state.
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
    /// Signs out at once. Ends when the platform has been told, whatever it says.
    Task<void> signOut();

    /// The folder that downloads go to, also after it was renamed; nothing when none was chosen or it is gone.
    Task<std::optional<QString>> downloadsFolder() const;
    /// Keeps the folder at `path`, or none. A folder that does not exist counts as none.
    Task<void> setDownloadsFolder(std::optional<QString> path);

Q_SIGNALS:
    void stateChanged();
    void accountChanged();
    void orgsChanged();
    void orgsLoadingChanged();
    void orgChanged();
    void errorChanged();
    void remarkChanged();
    void siteChanged();
    void screenChanged();
    /// A call was refused because nobody is signed in: time to `confirm`.
    void signInDoubted();
    /// A question of `confirm` has been answered.
    void confirmed();

private:
    /// Takes a failing `currentUser` as nobody.
    Task<void> identify();
    void take(const Me& me);
    void setSignedOut(bool hasExpired);
    void setAccount(std::optional<Account> account);
    void forgetOrgs();
    void fail(std::exception_ptr failure);
    void succeed();
    void noteUnkept();
    void updateScreen();

    const Environment m_environment;
    const Executor m_disk; // a strand
    std::exception_ptr m_failure;
    std::optional<Account> m_account;
    std::optional<Account> m_owner; // of the organisations and of the one that is open
    int m_questions = 0;            // who is signed in
    int m_orgsAsked = 0;
    bool m_isUnsure = false; // nobody could be asked
    bool m_isConfirming = false;
    bool m_isKnown = false; // the answer of `confirm`
    Q_OBJECT_BINDABLE_PROPERTY(Session, State, m_state, &Session::stateChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, QList<Org>, m_orgs, &Session::orgsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, bool, m_orgsLoading, &Session::orgsLoadingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, std::optional<Org>, m_org, &Session::orgChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, std::optional<QString>, m_error, &Session::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, QString, m_remark, &Session::remarkChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, Site, m_site, &Session::siteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Session, QString, m_screen, &Session::screenChanged)
};

} // namespace palvera
