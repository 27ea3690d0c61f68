#include "app/signin/LoginView.h"

#include "async/TaskGroup.h"
#include "service/API.h"
#include "service/APIError.h"
#include "service/SignInOperations.h"
#include "session/Session.h"
#include "session/SignInDoors.h"

namespace palvera {

using namespace std::chrono_literals;

namespace {

const QString cannotReach = QStringLiteral("Cannot reach Palvera. Check your connection and try again.");

bool isAddressOverridden(const API& api, Site site)
{
    return parseAddress(baseURL(site)) != api.serviceBase();
}

LoginView::Field fieldOf(LoginView::Face face)
{
    using Face = LoginView::Face;
    using Field = LoginView::Field;
    switch (face) {
    case Face::Login:
    case Face::Email:
    case Face::Forgot:
        return Field::email;
    case Face::Password:
        return Field::password;
    case Face::Verify:
    case Face::Enrol:
    case Face::Totp:
        return Field::code;
    }
    return Field::email;
}

} // namespace

LoginView::LoginView(const Environment& environment, QObject* parent)
    : QObject(parent), m_environment(environment), m_signIn(environment.doors), m_tasks(environment.main)
{
    QObject::connect(&m_environment.session, &Session::siteChanged, this, &LoginView::configChanged);
}

void LoginView::open(bool developerDoor, const QString& notice)
{
    m_tasks.stop();
    m_notice = notice;
    m_developerDoor = developerDoor;
    m_email = QString();
    m_password = QString();
    m_enrol = SignInStep::EnrolTotp{};
    m_busy = false;
    go(Face::Login);
    m_faceMoves = false;
    m_tasks.start(focusSoon(++m_faceChanges));
    askForConfig();
}

bool LoginView::isTouched() const
{
    const bool isAtTheDoor = m_face == Face::Login || m_face == Face::Email;
    return m_busy || !isAtTheDoor || !m_email.value().isEmpty() || !m_password.value().isEmpty();
}

bool LoginView::isAccessCodeLinkShown() const
{
    return m_config && m_config->devAuth && m_config->workos && m_developerDoor;
}

QStringList LoginView::social() const
{
    return m_config && m_config->workos ? m_config->social.value_or(QList<QString>()) : QStringList();
}

SignInLabel LoginView::label() const
{
    if (isSiteChoiceShown())
        return signInLabel(m_environment.session.site());
    return signInLabel(m_config ? m_config->environment : std::nullopt);
}

QString LoginView::title() const
{
    return label().title;
}

QString LoginView::siteLabel() const
{
    return label().label.value_or(QString());
}

bool LoginView::isStaging() const
{
    return label().staging;
}

bool LoginView::isSiteChoiceShown() const
{
    return !isAddressOverridden(m_environment.doors.api, m_environment.session.site());
}

bool LoginView::isLiveSite() const
{
    return m_environment.session.site() == Site::live;
}

bool LoginView::isPasskeyAvailable() const
{
    return m_environment.doors.passkey.isAvailable();
}

QString LoginView::displayName(const QString& provider)
{
    return provider.left(1).toUpper() + provider.mid(1);
}

/// The other site may offer other ways in.
void LoginView::chooseSite(bool live)
{
    const auto site = live ? Site::live : Site::qa;
    if (m_busy || site == m_environment.session.site())
        return;
    m_tasks.start(m_environment.session.setSite(site));
    askForConfig();
}

void LoginView::submit()
{
    if (m_face == Face::Forgot)
        act(askForReset(), QStringLiteral("Could not send that. Check your connection."));
    else
        act(takeStepOfFace(), cannotReach);
}

void LoginView::toggleAccessCode()
{
    if (m_busy)
        return;
    m_password = QString();
    go(m_face == Face::Login ? Face::Email : Face::Login);
}

void LoginView::changeEmail()
{
    if (!m_busy)
        go(Face::Email);
}

void LoginView::forgotPassword()
{
    if (!m_busy)
        go(Face::Forgot);
}

void LoginView::backToSignIn()
{
    if (!m_busy)
        restart();
}

void LoginView::resendCode()
{
    act(resend(), cannotReach);
}

void LoginView::signInWith(const QString& provider)
{
    act(take(m_signIn.atProvider(provider, displayName(provider))), {});
}

void LoginView::signInWithPasskey()
{
    act(take(m_signIn.withPasskey()), QStringLiteral("That passkey did not work. Sign in another way."));
}

void LoginView::act(Task<void> action, const QString& fallback)
{
    if (m_busy)
        return;
    m_busy = true;
    m_error = QString();
    m_tasks.start(perform(std::move(action), fallback));
}

Task<void> LoginView::perform(Task<void> action, QString fallback)
{
    auto failure = (co_await answerOf(std::move(action))).failure;
    if (failure)
        fail(failure, fallback);
    m_busy = false;
}

/// What the platform says is shown as it is, and so is what a door says; anything else is `fallback`.
void LoginView::fail(const std::exception_ptr& failure, const QString& fallback)
{
    if (failureAs<APIError>(failure))
        m_error = describe(failure);
    else if (auto door = failureAs<SignInDoorError>(failure))
        m_error = door->text(); // of one that the user has closed it is empty
    else
        m_error = fallback;
}

Task<void> LoginView::takeStepOfFace()
{
    LoginBody body{.email = m_email, .password = m_password};
    switch (m_face) {
    case Face::Login:
        return take(m_signIn.directly(std::move(body)));
    case Face::Email:
        return take(m_signIn.withEmail(m_email));
    case Face::Password:
        return take(m_signIn.withPassword(std::move(body), m_config));
    case Face::Verify:
        return take(m_signIn.withEmailCode(m_code, m_email));
    case Face::Enrol:
    case Face::Totp:
        return take(m_signIn.withAuthenticatorCode(m_code, m_email));
    case Face::Forgot:
        break;
    }
    return askForReset();
}

Task<void> LoginView::take(Task<SignIn::Next> step)
{
    auto next = co_await std::move(step);
    if (std::holds_alternative<SignInStep::SignedIn>(next)) {
        co_await m_environment.session.refresh();
        if (!m_environment.session.me())
            m_error = m_environment.session.error().value_or(QString());
    } else if (std::holds_alternative<SignIn::EnterPassword>(next)) {
        go(Face::Password);
    } else if (auto* enrol = std::get_if<SignInStep::EnrolTotp>(&next)) {
        m_enrol = std::move(*enrol);
        go(Face::Enrol);
    } else {
        go(std::holds_alternative<SignInStep::VerifyEmail>(next) ? Face::Verify : Face::Totp);
    }
}

Task<void> LoginView::askForReset()
{
    co_await palvera::forgotPassword(m_environment.doors.api, {.email = m_email});
    m_asked = true;
}

Task<void> LoginView::resend()
{
    co_await resendEmailCode(m_environment.doors.api);
    m_resent = true;
}

void LoginView::go(Face face)
{
    m_error = QString();
    m_resent = false;
    m_asked = false;
    m_code = QString();
    setFace(face, true);
}

void LoginView::setFace(Face face, bool moves)
{
    if (face == m_face)
        return;
    m_face = face;
    m_faceMoves = moves;
    Q_EMIT faceChanged();
    m_tasks.start(focusSoon(++m_faceChanges));
}

void LoginView::restart()
{
    m_password = QString();
    m_enrol = SignInStep::EnrolTotp{};
    go(m_config && m_config->workos ? Face::Email : Face::Login);
}

/// Once the face has come to rest where the keyboard can be put.
Task<void> LoginView::focusSoon(int change)
{
    co_await m_environment.clock.sleep(80ms);
    if (change == m_faceChanges)
        Q_EMIT focusWanted(fieldOf(m_face));
}

void LoginView::askForConfig()
{
    m_config.reset();
    m_configLoading = true;
    m_configLate = false;
    Q_EMIT configChanged();
    ++m_configsAsked;
    m_tasks.start(loadConfig(m_configsAsked));
    m_tasks.start(noteLateConfig(m_configsAsked));
}

Task<void> LoginView::loadConfig(int asked)
{
    auto outcome = co_await outcomeOf(authConfig(m_environment.doors.api));
    if (asked != m_configsAsked)
        co_return;
    m_configLoading = false;
    m_config = std::move(outcome.value);
    Q_EMIT configChanged();
    if (!m_config)
        co_return;
    if (m_config->workos && m_face == Face::Login)
        setFace(Face::Email, false);
    else if (!m_config->workos && m_face == Face::Email) // that of the site before
        setFace(Face::Login, false);
}

Task<void> LoginView::noteLateConfig(int asked)
{
    co_await m_environment.clock.sleep(1500ms);
    if (asked != m_configsAsked || m_config)
        co_return;
    m_configLate = true;
    Q_EMIT configChanged();
}

} // namespace palvera
