#pragma once

#include "platform/Clock.h"
#include "platform/TaskScope.h"
#include "service/SignInRecords.h"
#include "service/Site.h"

#include <QObject>
#include <QStringList>

namespace palvera {

class API;
class PasskeySignIn;
class Session;
class WebSignIn;

/// The sign-in screen without its widgets: which face it shows, what is entered, and what each action leads to.
///
/// Lives on the main thread. Actions return at once and go on there; while one runs the view is busy and takes no
/// other. What was entered is kept when an action fails.
class LoginView final : public QObject {
    Q_OBJECT
    Q_PROPERTY(Face face READ face NOTIFY faceChanged)
    Q_PROPERTY(QString faceName READ faceName NOTIFY faceChanged)
    Q_PROPERTY(bool faceMoves READ faceMoves NOTIFY faceChanged)
    Q_PROPERTY(QString email READ email WRITE setEmail NOTIFY emailChanged)
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY passwordChanged)
    Q_PROPERTY(QString code READ code WRITE setCode NOTIFY codeChanged)
    Q_PROPERTY(QString qrCode READ qrCode NOTIFY enrolChanged)
    Q_PROPERTY(QString secret READ secret NOTIFY enrolChanged)
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(bool resent READ isResent NOTIFY resentChanged)
    Q_PROPERTY(bool asked READ isAsked NOTIFY askedChanged)
    Q_PROPERTY(bool configLoading READ isConfigLoading NOTIFY configChanged)
    Q_PROPERTY(bool configLate READ isConfigLate NOTIFY configChanged)
    Q_PROPERTY(bool accessCodeLinkShown READ isAccessCodeLinkShown NOTIFY configChanged)
    Q_PROPERTY(bool identityProviderShown READ isIdentityProviderShown NOTIFY configChanged)
    Q_PROPERTY(QStringList social READ social NOTIFY configChanged)
    Q_PROPERTY(QString title READ title NOTIFY configChanged)
    Q_PROPERTY(QString siteLabel READ siteLabel NOTIFY configChanged)
    Q_PROPERTY(bool staging READ isStaging NOTIFY configChanged)
    Q_PROPERTY(bool siteChoiceShown READ isSiteChoiceShown NOTIFY configChanged)
    Q_PROPERTY(bool liveSite READ isLiveSite NOTIFY configChanged)
    Q_PROPERTY(bool passkeyAvailable READ isPasskeyAvailable CONSTANT)

public:
    enum class Face {
        login, ///< the access-code door: e-mail address and password straight to the platform
        email, ///< the work e-mail door
        password,
        verify, ///< the code that was sent by e-mail
        enrol,  ///< an authenticator is set up
        totp,   ///< the authenticator's code
        forgot, ///< the password is to be reset
    };
    Q_ENUM(Face)
    enum class Field { email, password, code };
    Q_ENUM(Field)

    /// What it works with. Everything referred to outlives it and its actions.
    struct Environment {
        Executor main; ///< the main thread's
        Clock& clock;
        API& api;
        Session& session;
        WebSignIn& web;
        PasskeySignIn& passkey;
    };

    explicit LoginView(const Environment& environment, QObject* parent = nullptr);

    /// Begins afresh, as when the screen is shown: asks how one can sign in, and forgets what was entered. What an
    /// earlier opening still has under way is cut off. `developerDoor` offers the access-code door where the platform
    /// has one beside the others.
    Q_INVOKABLE void open(bool developerDoor);
    /// Cuts off what is under way and ends once nothing is. To be awaited before the view is destroyed, unless its
    /// executor runs nothing any more.
    Task<void> close() { return m_tasks.close(); }

    Face face() const { return m_face; }
    /// The same as a word, as it is written above.
    QString faceName() const;
    /// Whether the last change of the face is one that the user should see happen.
    bool faceMoves() const { return m_faceMoves; }
    QString email() const { return m_email; }
    void setEmail(const QString& email);
    QString password() const { return m_password; }
    void setPassword(const QString& password);
    QString code() const { return m_code; }
    void setCode(const QString& code);
    /// While an authenticator is set up, otherwise empty: the address of an image, and the same as a text.
    QString qrCode() const { return m_enrol.qrCode; }
    QString secret() const { return m_enrol.secret; }
    bool isBusy() const { return m_busy; }
    /// What failed last, for the user; empty when nothing did.
    QString error() const { return m_error; }
    /// What that was, for who must tell one kind from another; null where a text is all there is.
    const std::exception_ptr& failure() const { return m_failure; }
    /// Another code was sent.
    bool isResent() const { return m_resent; }
    /// A link to reset the password was asked for.
    bool isAsked() const { return m_asked; }
    /// The platform has not said yet how one can sign in, and has not failed to.
    bool isConfigLoading() const { return m_configLoading; }
    /// It takes its time to.
    bool isConfigLate() const { return m_configLate; }
    bool isAccessCodeLinkShown() const;
    bool isIdentityProviderShown() const { return m_config && m_config->workos; }
    /// The platform's names of the providers that it offers, in its order.
    QStringList social() const;
    QString title() const;
    QString siteLabel() const;
    bool isStaging() const;
    /// The user may choose the site unless the environment names the platform's address.
    bool isSiteChoiceShown() const;
    bool isLiveSite() const;
    bool isPasskeyAvailable() const;

    /// What people call the provider.
    Q_INVOKABLE static QString displayName(const QString& provider);

    /// The button of the face: sends what was entered.
    Q_INVOKABLE void submit();
    /// The link between the access-code door and the work e-mail door.
    Q_INVOKABLE void toggleAccessCode();
    Q_INVOKABLE void changeEmail();
    Q_INVOKABLE void forgotPassword();
    Q_INVOKABLE void backToSignIn();
    Q_INVOKABLE void resendCode();
    /// Goes on at `provider`, in a browser.
    Q_INVOKABLE void signInWith(const QString& provider);
    Q_INVOKABLE void signInWithPasskey();
    Q_INVOKABLE void chooseSite(bool live);

Q_SIGNALS:
    void faceChanged();
    void emailChanged();
    void passwordChanged();
    void codeChanged();
    void enrolChanged();
    void busyChanged();
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
    void askForConfig();
    Task<void> loadConfig(int asked);
    Task<void> noteLateConfig(int asked);
    Task<void> focusSoon(int change);

    // What the button of each face does.
    Task<void> enterDirectly();
    Task<void> findMethod();
    Task<void> enterWithPassword();
    Task<void> enterWithOldPassword();
    Task<void> checkEmailCode();
    Task<void> checkAuthenticatorCode();
    Task<void> askForReset();

    Task<void> resend();
    Task<void> signInOnTheWeb(QByteArray address, QString what);
    Task<void> redeemFrom(QByteArray address, QString what);
    Task<void> usePasskey();
    Task<void> apply(SignInStep step);
    Task<void> refreshSession();

    void go(Face face);
    void setFace(Face face, bool moves);
    void restart();
    void fail(const std::exception_ptr& failure, const QString& fallback);
    SignInLabel label() const;
    LoginBody body() const { return {.email = m_email, .password = m_password}; }
    template <class T>
    void assign(T& property, T value, void (LoginView::*changed)());

    const Environment m_environment;
    TaskScope m_tasks; // under way since the view was opened
    std::optional<AuthConfig> m_config;
    bool m_configLoading = false;
    bool m_configLate = false;
    int m_configsAsked = 0;
    bool m_developerDoor = false;
    Face m_face = Face::login;
    bool m_faceMoves = false;
    int m_faceChanges = 0;
    QString m_email;
    QString m_password;
    QString m_code;
    SignInStep::EnrolTotp m_enrol;
    bool m_busy = false;
    QString m_error;
    std::exception_ptr m_failure;
    bool m_resent = false;
    bool m_asked = false;
};

} // namespace palvera
