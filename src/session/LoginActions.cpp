// What each action of the sign-in screen asks of the platform, and where its answer leads.

#include "session/LoginView.h"

#include "platform/TaskGroup.h"
#include "service/API.h"
#include "service/APIError.h"
#include "service/SignInOperations.h"
#include "session/Session.h"
#include "session/SignInDoors.h"

#include <QUrl>
#include <QUrlQuery>

namespace palvera {

namespace {

const QString cannotReach = QStringLiteral("Cannot reach Palvera. Check your connection and try again.");

QString didNotFinish(const QString& what, const QString& why = {})
{
    auto reason = why.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(why);
    return QStringLiteral("%1 did not finish%2. Try again, or sign in another way.").arg(what, reason);
}

/// Why a browser did not come back is no use to the user; that it was closed they know.
QString webFailureText(const std::exception_ptr& failure, const QString& what)
{
    try {
        std::rethrow_exception(failure);
    } catch (const APIError& error) {
        return error.text();
    } catch (const SignInDoorError& error) {
        return error.kind() == SignInDoorError::Kind::cancelled ? QString() : didNotFinish(what);
    } catch (...) {
        return didNotFinish(what);
    }
}

/// The APIError of status 401 that `failure` is; nothing for any other.
std::optional<APIError> refusalOf(const std::exception_ptr& failure)
{
    if (!failure)
        return {};
    try {
        std::rethrow_exception(failure);
    } catch (const APIError& error) {
        return error.status() == 401 ? std::optional(error) : std::nullopt;
    } catch (...) {
        return {};
    }
}

/// Whether the platform knows neither the account nor that it must be renewed.
bool isUnknownToTheIdentityProvider(const APIError& refusal)
{
    return refusal.code() == QStringLiteral("invalid_credentials") &&
           !refusal.text().contains(QStringLiteral("renewing"));
}

} // namespace

void LoginView::submit()
{
    switch (m_face) {
    case Face::login:
        return act(enterDirectly(), cannotReach);
    case Face::email:
        return act(findMethod(), cannotReach);
    case Face::password:
        return act(enterWithPassword(), cannotReach);
    case Face::verify:
        return act(checkEmailCode(), cannotReach);
    case Face::enrol:
    case Face::totp:
        return act(checkAuthenticatorCode(), cannotReach);
    case Face::forgot:
        return act(askForReset(), QStringLiteral("Could not send that. Check your connection."));
    }
}

void LoginView::toggleAccessCode()
{
    if (m_busy)
        return;
    setPassword({});
    go(m_face == Face::login ? Face::email : Face::login);
}

void LoginView::changeEmail()
{
    if (!m_busy)
        go(Face::email);
}

void LoginView::forgotPassword()
{
    if (!m_busy)
        go(Face::forgot);
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
    act(signInOnTheWeb(webStartURL(m_environment.api, provider, {}), displayName(provider)), {});
}

void LoginView::signInWithPasskey()
{
    if (isPasskeyAvailable())
        act(usePasskey(), QStringLiteral("That passkey did not work. Sign in another way."));
    else
        act(signInOnTheWeb(m_environment.api.signInPageURL(), QStringLiteral("The passkey sign-in")), {});
}

void LoginView::act(Task<void> action, const QString& fallback)
{
    if (m_busy)
        return;
    assign(m_busy, true, &LoginView::busyChanged);
    m_failure = nullptr;
    assign(m_error, {}, &LoginView::errorChanged);
    m_tasks.start(perform(std::move(action), fallback));
}

Task<void> LoginView::perform(Task<void> action, QString fallback)
{
    auto failure = (co_await outcomeOf(std::move(action))).failure;
    if (isCancellation(failure))
        std::rethrow_exception(failure);
    if (failure)
        fail(failure, fallback);
    assign(m_busy, false, &LoginView::busyChanged);
}

/// What the platform says is shown as it is, and so is what a door says; anything else is `fallback`.
void LoginView::fail(const std::exception_ptr& failure, const QString& fallback)
{
    m_failure = failure;
    auto text = fallback;
    try {
        std::rethrow_exception(failure);
    } catch (const APIError& error) {
        text = error.text();
    } catch (const SignInDoorError& error) {
        text = error.kind() == SignInDoorError::Kind::cancelled ? QString() : error.text();
    } catch (...) { // NOLINT(bugprone-empty-catch): the fallback stands
    }
    assign(m_error, text, &LoginView::errorChanged);
}

Task<void> LoginView::enterDirectly()
{
    co_await signInDirectly(m_environment.api, body());
    co_await refreshSession();
}

Task<void> LoginView::findMethod()
{
    auto method = co_await signInMethod(m_environment.api, m_email);
    if (std::holds_alternative<PasswordMethod>(method))
        go(Face::password);
    else
        co_await apply({SignInStep::Sso{}});
}

Task<void> LoginView::enterWithPassword()
{
    auto entered = co_await outcomeOf(palvera::signInWithPassword(m_environment.api, body()));
    if (entered.value)
        co_return co_await apply(*entered.value);
    if (refusalOf(entered.failure))
        co_return co_await enterWithOldPassword();
    std::rethrow_exception(entered.failure);
}

/// The account may be one that the identity provider does not know yet, or one that only the platform itself knows.
Task<void> LoginView::enterWithOldPassword()
{
    auto entered = co_await outcomeOf(migratePassword(m_environment.api, body()));
    if (entered.value)
        co_return co_await apply(*entered.value);
    auto refusal = refusalOf(entered.failure);
    if (refusal && isUnknownToTheIdentityProvider(*refusal) && m_config && m_config->devAuth)
        co_return co_await enterDirectly();
    std::rethrow_exception(entered.failure);
}

Task<void> LoginView::checkEmailCode()
{
    co_await apply(co_await verifyEmailCode(m_environment.api, {.code = m_code}));
}

Task<void> LoginView::checkAuthenticatorCode()
{
    co_await apply(co_await verifyAuthenticatorCode(m_environment.api, {.code = m_code}));
}

Task<void> LoginView::askForReset()
{
    co_await palvera::forgotPassword(m_environment.api, {.email = m_email});
    assign(m_asked, true, &LoginView::askedChanged);
}

Task<void> LoginView::resend()
{
    co_await resendEmailCode(m_environment.api);
    assign(m_resent, true, &LoginView::resentChanged);
}

Task<void> LoginView::usePasskey()
{
    co_await m_environment.passkey.signIn();
    co_await refreshSession();
}

Task<void> LoginView::apply(SignInStep step)
{
    if (std::holds_alternative<SignInStep::SignedIn>(step.step))
        co_return co_await refreshSession();
    if (std::holds_alternative<SignInStep::Sso>(step.step)) // its own address is for a browser that is signed in
        co_return co_await signInOnTheWeb(webStartURL(m_environment.api, {}, m_email.trimmed()),
                                          QStringLiteral("Your organisation's sign-in"));
    if (const auto* enrol = std::get_if<SignInStep::EnrolTotp>(&step.step)) {
        assign(m_enrol, *enrol, &LoginView::enrolChanged);
        go(Face::enrol);
    } else {
        go(std::holds_alternative<SignInStep::VerifyEmail>(step.step) ? Face::verify : Face::totp);
    }
}

/// `what` is what people call the way in.
Task<void> LoginView::signInOnTheWeb(QByteArray address, QString what)
{
    auto failure = (co_await outcomeOf(redeemFrom(std::move(address), what))).failure;
    if (isCancellation(failure))
        std::rethrow_exception(failure);
    if (failure)
        assign(m_error, webFailureText(failure, what), &LoginView::errorChanged);
}

Task<void> LoginView::redeemFrom(QByteArray address, QString what)
{
    const QUrlQuery items(QUrl(co_await m_environment.web.signIn(std::move(address))));
    const auto grant = items.queryItemValue(QStringLiteral("grant"), QUrl::FullyDecoded);
    if (grant.isEmpty()) {
        const auto why = items.queryItemValue(QStringLiteral("error"), QUrl::FullyDecoded);
        assign(m_error, didNotFinish(what, why), &LoginView::errorChanged);
        co_return;
    }
    co_await redeemGrant(m_environment.api, {.grant = grant});
    co_await refreshSession();
}

/// Whoever has signed in now becomes the session's user; what keeps it from that is shown here.
Task<void> LoginView::refreshSession()
{
    co_await m_environment.session.refresh();
    if (!m_environment.session.me())
        assign(m_error, m_environment.session.errorText(), &LoginView::errorChanged);
}

} // namespace palvera
