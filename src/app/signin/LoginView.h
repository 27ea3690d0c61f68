#pragma once

#include "app/signin/BrowserView.h"
#include "app/signin/PasskeyView.h"
#include "app/signin/WaysIn.h"
#include "service/Site.h"
#include "session/SignIn.h"

#include <QProperty>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace palvera {

class Session;

/// The sign-in screen without its widgets: which face it shows, what is entered, and what each action leads to.
///
/// Lives on the main thread. Actions return at once and go on there; while one runs the view is busy and takes no
/// other. What was entered is kept when an action fails.
class LoginView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(LoginModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(Face face READ face NOTIFY faceChanged)
    Q_PROPERTY(bool faceMoves READ faceMoves NOTIFY faceChanged)
    Q_PROPERTY(QString email READ email WRITE setEmail NOTIFY emailChanged)
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY passwordChanged)
    Q_PROPERTY(QString code READ code WRITE setCode NOTIFY codeChanged)
    Q_PROPERTY(QString qrCode READ qrCode NOTIFY enrolChanged)
    Q_PROPERTY(QString secret READ secret NOTIFY enrolChanged)
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(bool resent READ isResent NOTIFY resentChanged)
    Q_PROPERTY(bool asked READ isAsked NOTIFY askedChanged)
    Q_PROPERTY(bool configLoading READ isConfigLoading NOTIFY configChanged)
    Q_PROPERTY(QString waitText READ waitText NOTIFY configChanged)
    Q_PROPERTY(bool accessCodeLinkShown READ isAccessCodeLinkShown NOTIFY configChanged)
    Q_PROPERTY(bool identityProviderShown READ isIdentityProviderShown NOTIFY configChanged)
    Q_PROPERTY(QStringList social READ social NOTIFY configChanged)
    Q_PROPERTY(QString title READ title NOTIFY configChanged)
    Q_PROPERTY(QString siteLabel READ siteLabel NOTIFY configChanged)
    Q_PROPERTY(bool staging READ isStaging NOTIFY configChanged)
    Q_PROPERTY(bool siteChoiceShown READ isSiteChoiceShown NOTIFY configChanged)
    Q_PROPERTY(bool liveSite READ isLiveSite NOTIFY configChanged)
    Q_PROPERTY(palvera::BrowserView* browser READ browser CONSTANT)
    Q_PROPERTY(palvera::PasskeyView* passkey READ passkey CONSTANT)

public:
    enum class Face {
        Login, ///< the access-code door: e-mail address and password straight to the platform
        Email, ///< the work e-mail door
        Password,
        Verify, ///< the code that was sent by e-mail
        Enrol,  ///< an authenticator is set up
        Totp,   ///< the authenticator's code
        Forgot, ///< the password is to be reset
    };
    Q_ENUM(Face)
    enum class Field { email, password, code };

    /// What it works with. Everything referred to outlives it and its actions.
    struct Environment {
        Executor main; ///< the main thread's
        Clock& clock;
        Session& session;
        NetworkPath& network;
        SignIn::Environment doors;
    };

    explicit LoginView(const Environment& environment, QObject* parent = nullptr);

    /// Begins afresh, as when the screen is shown: asks how one can sign in, and forgets what was entered. What an
    /// earlier opening still has under way is cut off. `developerDoor` offers the access-code door where the platform
    /// has one beside the others; `notice` says why the user is here, where that is not plain.
    Q_INVOKABLE void open(bool developerDoor, const QString& notice = {});
    /// Cuts off what is under way and ends once nothing is. To be awaited before the view is destroyed, unless its
    /// executor runs nothing any more.
    Task<void> close();
    /// The screen is left: what was entered and is secret is forgotten.
    void leave();

    Face face() const { return m_face; }
    /// Whether the last change of the face is one that the user should see happen.
    bool faceMoves() const { return m_faceMoves; }
    QString email() const { return m_email; }
    void setEmail(const QString& email);
    QString password() const { return m_password; }
    void setPassword(const QString& password);
    QString code() const { return m_code; }
    void setCode(const QString& code) { m_code = code; }
    /// While an authenticator is set up, otherwise empty: the address of an image, and the same as a text.
    QString qrCode() const { return m_enrol.value().qrCode; }
    QString secret() const { return m_enrol.value().secret; }
    bool isBusy() const { return m_busy; }
    /// Whether the user has begun to sign in.
    bool isTouched() const;
    QString notice() const { return m_notice; }
    /// What failed last, for the user; empty when nothing did.
    QString error() const { return m_error; }
    /// Another code was sent.
    bool isResent() const { return m_resent; }
    /// A link to reset the password was asked for.
    bool isAsked() const { return m_asked; }
    /// The platform has not said yet how one can sign in, and has not failed to.
    bool isConfigLoading() const { return m_ways.isLoading(); }
    /// What to say while it takes its time to; else empty.
    QString waitText() const;
    bool isAccessCodeLinkShown() const;
    bool isIdentityProviderShown() const { return m_ways.config() && m_ways.config()->workos; }
    /// The platform's names of the providers that it offers, in its order.
    QStringList social() const;
    QString title() const;
    QString siteLabel() const;
    bool isStaging() const;
    /// The user may choose the site unless the environment names the platform's address.
    bool isSiteChoiceShown() const;
    bool isLiveSite() const;
    BrowserView* browser() { return &m_browser; }
    PasskeyView* passkey() { return &m_passkey; }

    /// What people call the provider.
    Q_INVOKABLE static QString displayName(const QString& provider);

    /// The button of the face: sends what was entered.
    Q_INVOKABLE void submit();
    /// The link between the access-code door and the work e-mail door.
    Q_INVOKABLE void toggleAccessCode();
    Q_INVOKABLE void changeEmail();
    Q_INVOKABLE void forgotPassword();
    Q_INVOKABLE void backToSignIn();
    /// One step back, from wherever there is one; away from the browser or the security key, too.
    Q_INVOKABLE void goBack();
    Q_INVOKABLE void resendCode();
    /// Goes on at `provider`, in a browser.
    Q_INVOKABLE void signInWith(const QString& provider);
    Q_INVOKABLE void signInWithPasskey();
    /// A browser came back for nothing; says so where the user may wonder.
    void refuse(BrowserSignIn::Taken callback);
    Q_INVOKABLE void chooseSite(bool live);

Q_SIGNALS:
    void faceChanged();
    void emailChanged();
    void passwordChanged();
    void codeChanged();
    void enrolChanged();
    void busyChanged();
    void noticeChanged();
    void errorChanged();
    void resentChanged();
    void askedChanged();
    void configChanged();
    /// The keyboard belongs to that field.
    void focusWanted(palvera::LoginView::Field field);

private:
    /// Runs `action` unless one runs already; a failure that is not the platform's is shown as `fallback`.
    void act(Task<void> action, const QString& fallback);
    Task<void> perform(Task<void> action, QString fallback);
    /// Where a step of signing in leads.
    Task<void> take(Task<SignIn::Next> step);
    Task<void> takeStepOfFace();
    Task<void> takePasskey();
    /// At the platform's own door, should it be the first one.
    Task<void> enterDirectly(LoginBody body);
    Task<void> askForReset();
    Task<void> resend();
    void askForConfig();
    void followConfig();
    Task<void> focusSoon(int change);
    void followBrowser();

    void go(Face face);
    void setFace(Face face, bool moves);
    void restart();
    Face firstDoor() const;
    void fail(const std::exception_ptr& failure, const QString& fallback);
    SignInLabel label() const;
    LoginBody body() const { return {.email = m_email, .password = m_password}; }

    const Environment m_environment;
    const SignIn m_signIn;
    TaskScope m_tasks; // under way since the view was opened
    WaysIn m_ways;
    BrowserView m_browser;
    PasskeyView m_passkey;
    bool m_waits = false;     // no door is shown yet
    bool m_isTouched = false; // since one is
    bool m_developerDoor = false;
    Face m_face = Face::Login;
    bool m_faceMoves = false;
    int m_faceChanges = 0;
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, QString, m_email, &LoginView::emailChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, QString, m_password, &LoginView::passwordChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, QString, m_code, &LoginView::codeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, SignInStep::EnrolTotp, m_enrol, &LoginView::enrolChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, bool, m_busy, &LoginView::busyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, QString, m_notice, &LoginView::noticeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, QString, m_error, &LoginView::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, bool, m_resent, &LoginView::resentChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LoginView, bool, m_asked, &LoginView::askedChanged)
};

} // namespace palvera
