#include "app/signin/LoginView.h"

#include "async/TaskGroup.h"
#include "http/NetworkPath.h"
#include "service/API.h"
#include "service/APIError.h"
#include "service/SignInOperations.h"
#include "session/PasskeySignIn.h"
#include "session/Session.h"
#include "session/SignInDoorError.h"

#include <QScopeGuard>

namespace palvera {

using namespace std::chrono_literals;

namespace {

QString cannotReach()
{
    return LoginView::tr("Cannot reach Palvera. Check your connection and try again.");
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
    : QObject(parent),
      m_environment(environment),
      m_signIn(environment.doors),
      m_tasks(environment.main),
      m_ways({.main = environment.main,
              .clock = environment.clock,
              .api = environment.doors.api,
              .network = environment.network}),
      m_browser(environment.doors.web, environment.clock, m_tasks),
      m_passkey(environment.doors.passkey.service())
{
    QObject::connect(&m_ways, &WaysIn::changed, this, &LoginView::followConfig);
    QObject::connect(&m_environment.session, &Session::siteChanged, this, &LoginView::configChanged);
    QObject::connect(&m_environment.doors.web, &BrowserSignIn::waitingChanged, this, &LoginView::followBrowser);
}

void LoginView::open(bool developerDoor, const QString& notice)
{
    m_tasks.stop();
    m_browser.cancel();
    m_isTouched = false;
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
    m_environment.doors.passkey.service().look();
}

Task<void> LoginView::close()
{
    co_await m_ways.close();
    co_await m_tasks.close();
}

void LoginView::leave()
{
    m_password = QString();
    m_code = QString();
    m_enrol = SignInStep::EnrolTotp{};
}

bool LoginView::isTouched() const
{
    const bool isAtTheDoor = m_face == Face::Login || m_face == Face::Email;
    return m_isTouched || m_busy || !isAtTheDoor;
}

void LoginView::setEmail(const QString& email)
{
    m_isTouched = true;
    m_email = email;
}

void LoginView::setPassword(const QString& password)
{
    m_isTouched = true;
    m_password = password;
}

QString LoginView::waitText() const
{
    if (!m_ways.isLoading() || !m_ways.isLate())
        return {};
    return m_environment.doors.api.canBeAsked(m_environment.network)
               ? tr("Waiting for Palvera to answer…")
               : tr("This computer is not connected to a network.");
}

bool LoginView::isAccessCodeLinkShown() const
{
    return isIdentityProviderShown() && m_ways.config()->devAuth && m_developerDoor;
}

QStringList LoginView::social() const
{
    return isIdentityProviderShown() ? m_ways.config()->social.value_or(QList<QString>()) : QStringList();
}

SignInLabel LoginView::label() const
{
    if (isSiteChoiceShown())
        return signInLabel(m_environment.session.site());
    return signInLabel(m_ways.config() ? m_ways.config()->environment : std::nullopt);
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
    return !m_environment.doors.api.isServiceNamed();
}

bool LoginView::isLiveSite() const
{
    return m_environment.session.site() == Site::live;
}

QString LoginView::displayName(const QString& provider)
{
    return provider.left(1).toUpper() + provider.mid(1);
}

/// The other site may offer other ways in, and knows nothing of what was begun here.
void LoginView::chooseSite(bool live)
{
    const auto site = live ? Site::live : Site::qa;
    if (m_busy || site == m_environment.session.site())
        return;
    m_tasks.start(m_environment.session.setSite(site));
    restart();
    m_isTouched = false;
    askForConfig();
}

void LoginView::submit()
{
    if (m_face == Face::Forgot)
        act(askForReset(), tr("Could not send that. Check your connection."));
    else
        act(takeStepOfFace(), cannotReach());
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
    if (m_busy)
        return;
    m_password = QString(); // of the other account
    go(Face::Email);
}

void LoginView::forgotPassword()
{
    if (m_busy)
        return;
    m_password = QString();
    go(Face::Forgot);
}

void LoginView::backToSignIn()
{
    if (!m_busy)
        restart();
}

void LoginView::goBack()
{
    if (m_browser.isWaiting())
        m_browser.cancel();
    else if (m_passkey.isAsking())
        m_passkey.cancel();
    else if (m_face != Face::Login && m_face != Face::Email)
        backToSignIn();
}

void LoginView::resendCode()
{
    act(resend(), cannotReach());
}

void LoginView::signInWith(const QString& provider)
{
    act(take(m_signIn.atProvider(provider, displayName(provider))), {});
}

void LoginView::signInWithPasskey()
{
    act(takePasskey(), tr("That passkey did not work. Sign in another way."));
}

void LoginView::refuse(BrowserSignIn::Taken callback)
{
    using Taken = BrowserSignIn::Taken;
    switch (callback) {
    case Taken::used:
    case Taken::again: // the browser's page offers it more than once
        return;
    case Taken::late:
        m_notice = tr("That sign-in was cancelled. Start it again to use it.");
        return;
    case Taken::unasked:
        m_notice = tr("That sign-in was not started here, so it was not used.");
        return;
    }
}

void LoginView::followBrowser()
{
    if (!m_browser.isWaiting())
        m_tasks.start(focusSoon(++m_faceChanges));
}

void LoginView::act(Task<void> action, const QString& fallback)
{
    if (m_busy)
        return;
    m_busy = true;
    m_error = QString();
    m_notice = QString(); // which has been read by now
    m_browser.begin();
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
        return enterDirectly(std::move(body));
    case Face::Email:
        return take(m_signIn.withEmail(m_email));
    case Face::Password:
        return take(m_signIn.withPassword(std::move(body), m_ways.config()));
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

Task<void> LoginView::takePasskey()
{
    if (m_passkey.isAvailable()) {
        m_passkey.begin();
        const auto over = qScopeGuard([this] {
            m_passkey.end();
            m_tasks.start(focusSoon(++m_faceChanges));
        });
        const auto ended = co_await answerOf(take(m_signIn.withPasskey()));
        if (ended.failure && !m_passkey.isBrowserWanted())
            std::rethrow_exception(ended.failure);
        if (!ended.failure)
            co_return;
    }
    co_await take(m_signIn.withPasskeyInBrowser());
}

Task<void> LoginView::enterDirectly(LoginBody body)
{
    if (!m_ways.config() && co_await m_ways.askNow() && isIdentityProviderShown()) {
        m_password = QString(); // which was not meant for the door that comes instead
        go(Face::Email);
        m_notice = tr("Palvera can be reached again. Begin with your work email.");
    } else {
        co_await take(m_signIn.directly(std::move(body)));
    }
}

Task<void> LoginView::take(Task<SignIn::Next> step)
{
    auto next = co_await std::move(step);
    if (std::holds_alternative<SignInStep::SignedIn>(next)) {
        co_await m_environment.session.refresh();
        if (m_environment.session.me()) {
            leave();
            if (m_browser.wasUsed())
                m_environment.session.remarkOnUser();
        } else {
            m_error = m_environment.session.error().value_or(QString());
        }
    } else if (std::holds_alternative<SignIn::EnterPassword>(next)) {
        go(Face::Password);
    } else if (auto* enrol = std::get_if<SignInStep::EnrolTotp>(&next)) {
        leave();
        m_enrol = std::move(*enrol);
        go(Face::Enrol);
    } else {
        leave();
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
    m_code = QString(); // of no use any more
    Q_EMIT focusWanted(Field::code);
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

LoginView::Face LoginView::firstDoor() const
{
    return isIdentityProviderShown() ? Face::Email : Face::Login;
}

void LoginView::restart()
{
    m_password = QString();
    m_enrol = SignInStep::EnrolTotp{};
    go(firstDoor());
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
    m_ways.ask([this] { return !isTouched(); });
}

/// The door is the one that the platform says, until the user is at another one.
void LoginView::followConfig()
{
    const bool isDoorNew = std::exchange(m_waits, m_ways.isLoading());
    const bool isAtTheDoor = m_face == Face::Login || m_face == Face::Email;
    const bool isFirst = isDoorNew && !m_waits;
    if (isAtTheDoor && (isFirst || (m_ways.config() && !isTouched())))
        setFace(firstDoor(), false);
    Q_EMIT configChanged();
}

} // namespace palvera
