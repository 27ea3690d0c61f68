#pragma once

#include "app/OrgPickerView.h"
#include "app/ProjectsView.h"
#include "app/shell/Shell.h"
#include "app/signin/LoginView.h"
#include "screens/assets/AssetsView.h"
#include "screens/deliverables/DeliverableView.h"
#include "screens/deliverables/DeliverablesView.h"
#include "screens/deliverables/RowDrop.h"
#include "screens/panel/TransfersView.h"
#include "update/AboutView.h"
#include "update/UpdatePill.h"

namespace palvera {

/// What the main window shows: which screen, and the models of all of them.
///
/// Lives on the main thread.
class RootView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(RootModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(QString key READ key NOTIFY keyChanged)
    Q_PROPERTY(palvera::LoginView* login READ login CONSTANT)
    Q_PROPERTY(palvera::OrgPickerView* orgPicker READ orgPicker CONSTANT)
    Q_PROPERTY(palvera::ProjectsView* projects READ projects CONSTANT)
    Q_PROPERTY(Page page READ page NOTIFY pageChanged)
    Q_PROPERTY(palvera::DeliverablesView* deliverables READ deliverables CONSTANT)
    Q_PROPERTY(palvera::DeliverableView* deliverable READ deliverable CONSTANT)
    Q_PROPERTY(palvera::FileSender* sender READ sender CONSTANT)
    Q_PROPERTY(palvera::RowDrop* rowDrop READ rowDrop CONSTANT)
    Q_PROPERTY(palvera::AssetsView* assets READ assets CONSTANT)
    Q_PROPERTY(palvera::TransfersView* transfers READ transfers CONSTANT)
    Q_PROPERTY(QString windowTitle READ windowTitle NOTIFY windowTitleChanged)
    Q_PROPERTY(QString userName READ userName NOTIFY userChanged)
    Q_PROPERTY(QString userEmail READ userEmail NOTIFY userChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(bool orgsLoading READ areOrgsLoading NOTIFY orgsLoadingChanged)
    Q_PROPERTY(QString signOutQuestion READ signOutQuestion NOTIFY signOutQuestionChanged)
    Q_PROPERTY(QString remark READ remark NOTIFY remarkChanged)
    Q_PROPERTY(QString buildText READ buildText CONSTANT)
    Q_PROPERTY(palvera::UpdatePill* updatePill READ updatePill CONSTANT)
    Q_PROPERTY(palvera::AboutView* about READ about CONSTANT)
    Q_PROPERTY(palvera::Shell* shell READ shell CONSTANT)
    Q_PROPERTY(bool serviceExposed READ isServiceExposed CONSTANT)

public:
    /// How far one has gone into the organisation that is open.
    enum class Page { Projects, Deliverables, Deliverable, Assets };
    Q_ENUM(Page)

    /// What it works with. Everything referred to outlives it.
    struct Environment {
        LoginView::Environment signIn;
        Executor background; ///< threads for decoding and for looking at files
        Transfers& transfers;
        Preferences& preferences;
        std::function<bool()> isDoorAsked; ///< whether the developers' way in is asked for, at this moment
        Updater& updater;
        TransfersView::Files files;
        LineShares shares = {};
        std::function<void(bool starts)> setAutostart = {}; ///< see SettingsView
        QString logFile = {};                               ///< of the transfers
        QString startRemark = {};                           ///< what the user should know of this start
    };

    explicit RootView(Environment environment, QObject* parent = nullptr);

    /// "loading", "login", "orgs", or "org:" and the id of the organisation that is open. Once it changes, the models
    /// of that screen have begun afresh, but for those of an organisation to which a user comes back whose sign-in had
    /// expired: these go on where they were, with what is new.
    QString key() const { return m_key; }
    LoginView* login() { return &m_login; }
    OrgPickerView* orgPicker() { return &m_orgPicker; }
    ProjectsView* projects() { return &m_projects; }
    Page page() const { return m_page; }
    DeliverablesView* deliverables() { return &m_deliverables; }
    DeliverableView* deliverable() { return &m_deliverable; }
    FileSender* sender() { return &m_sender; }
    RowDrop* rowDrop() { return &m_rowDrop; }
    AssetsView* assets() { return &m_assets; }
    TransfersView* transfers() { return &m_transfers; }
    /// What the screen shows, and how much of what moves has gone.
    QString windowTitle() const;
    /// Empty when nobody is signed in, or one who has no name.
    QString userName() const;
    QString userEmail() const;
    /// What failed last while the session was looked up, for the user.
    QString error() const;
    bool areOrgsLoading() const;
    /// What is asked before signing out; empty when nothing is.
    QString signOutQuestion() const { return m_signOutQuestion; }
    /// What the user should know although all is well.
    QString remark() const;
    QString buildText() const;
    UpdatePill* updatePill() { return &m_updatePill; }
    AboutView* about() { return &m_about; }
    Shell* shell() { return &m_shell; }
    /// Whether others can read along.
    bool isServiceExposed() const;

    /// Finds out who is signed in, unless that is known.
    Q_INVOKABLE void start();
    /// Signs out, or asks first while files move.
    Q_INVOKABLE void signOut();
    /// The user's answer.
    Q_INVOKABLE void confirmSignOut();
    Q_INVOKABLE void staySignedIn();
    /// Closes the organisation that is open: the picker comes back.
    Q_INVOKABLE void chooseAnotherClient();
    /// Opens the project of that row of `projects`, or the client's assets.
    Q_INVOKABLE void openProject(int row);
    /// Opens the deliverable of that row of `deliverables`.
    Q_INVOKABLE void openDeliverable(int row);
    /// Goes one page back within the organisation.
    Q_INVOKABLE void back();
    /// Goes one step back, wherever one is.
    Q_INVOKABLE void goBack();
    /// Asks the platform again for what the screen shows.
    Q_INVOKABLE void reload();
    /// A browser came back for nothing; see LoginView::refuse. While it is still being asked who is signed in, this
    /// waits for the sign-in screen.
    void refuse(BrowserSignIn::Taken callback);
    /// The user has come back to the program.
    void becomeActive();
    Q_INVOKABLE void dismissRemark();
    /// Asks again which organisations there are.
    Q_INVOKABLE void reloadOrgs();
    /// Cuts off what every screen has under way; see TaskScope.
    Task<void> close();

Q_SIGNALS:
    void keyChanged();
    void pageChanged();
    void windowTitleChanged();
    void userChanged();
    void errorChanged();
    void orgsLoadingChanged();
    void remarkChanged();
    void signOutQuestionChanged();
    /// Shown because the user asked for it in another window.
    void deliverableShown();

private:
    void changeScreen();
    void openLogin();
    void openOrg(const Org& org);
    void leaveOrg();
    QString screenTitle() const;
    void goTo(Page page);
    void updateDeliverable();
    Task<void> showDeliverable(TransferTarget::Deliverable wanted);
    void setRemark(const QString& remark);
    void setSignOutQuestion(const QString& question);

    const Environment m_environment;
    Session& m_session;
    TaskScope m_tasks;
    LoginView m_login;
    OrgPickerView m_orgPicker;
    ProjectsView m_projects;
    DeliverablesView m_deliverables;
    FileSender m_sender;
    RowDrop m_rowDrop;
    DeliverableView m_deliverable;
    AssetsView m_assets;
    TransfersView m_transfers;
    UpdatePill m_updatePill;
    AboutView m_about;
    Shell m_shell;
    QString m_remark; // goes before that of the session
    QString m_signOutQuestion;
    QString m_key;
    std::optional<BrowserSignIn::Taken> m_refused; // to be said once the sign-in screen is there
    QString m_orgKey;                              // the key of the organisation that the models show
    Page m_page = Page::Projects;
};

} // namespace palvera
