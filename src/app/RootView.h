#pragma once

#include "app/OrgPickerView.h"
#include "app/ProjectsView.h"
#include "session/LoginView.h"

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
    Q_PROPERTY(QString userName READ userName NOTIFY userChanged)
    Q_PROPERTY(QString userEmail READ userEmail NOTIFY userChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(QString buildText READ buildText CONSTANT)

public:
    /// What it works with. Everything referred to outlives it.
    struct Environment {
        LoginView::Environment signIn;
        std::function<bool()> isDoorAsked; ///< whether the developers' way in is asked for, at this moment
        QString version = {};
        QString build = {};
    };

    explicit RootView(Environment environment, QObject* parent = nullptr);

    /// "loading", "login", "orgs", or "org:" and the id of the organisation that is open. Once it changes, the models
    /// of that screen have begun afresh.
    QString key() const { return m_key; }
    LoginView* login() { return &m_login; }
    OrgPickerView* orgPicker() { return &m_orgPicker; }
    ProjectsView* projects() { return &m_projects; }
    /// Empty when nobody is signed in, or one who has no name.
    QString userName() const;
    QString userEmail() const;
    /// What failed last while the session was looked up, for the user.
    QString error() const;
    QString buildText() const;

    /// Finds out who is signed in, unless that is known.
    Q_INVOKABLE void start();
    Q_INVOKABLE void signOut();
    /// Closes the organisation that is open: the picker comes back.
    Q_INVOKABLE void chooseAnotherClient();
    /// Asks again which organisations there are.
    Q_INVOKABLE void reloadOrgs();
    /// Cuts off what every screen has under way; see TaskScope.
    Task<void> close();

Q_SIGNALS:
    void keyChanged();
    void userChanged();
    void errorChanged();

private:
    void changeScreen();

    const Environment m_environment;
    Session& m_session;
    TaskScope m_tasks;
    LoginView m_login;
    OrgPickerView m_orgPicker;
    ProjectsView m_projects;
    QString m_key;
};

} // namespace palvera
