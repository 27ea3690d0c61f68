#include "session/SignIn.h"

#include "async/TaskGroup.h"
#include "service/API.h"
#include "service/APIError.h"
#include "service/SignInOperations.h"
#include "session/BrowserSignIn.h"
#include "session/PasskeySignIn.h"
#include "session/SignInDoorError.h"
#include "text/VisibleText.h"

#include <QObject>
#include <QUrl>
#include <QUrlQuery>

namespace palvera {

namespace {

/// A browser may come back with any text, and from anywhere.
constexpr qsizetype longestReason = 64;

SignInDoorError didNotFinish(const QString& what, const QString& why = {})
{
    const auto shown = visibleText(why, Lines::one, longestReason).trimmed();
    const auto reason = shown.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(shown);
    return SignInDoorError(QObject::tr("%1 did not finish%2. Try again, or sign in another way.").arg(what, reason));
}

/// Why a browser did not come back is no use to the user; what the platform says is, and that they closed it they know.
[[noreturn]] void throwInWords(const std::exception_ptr& failure, const QString& what)
{
    auto door = failureAs<SignInDoorError>(failure);
    if (failureAs<APIError>(failure) || (door && door->kind() == SignInDoorError::Kind::cancelled))
        std::rethrow_exception(failure);
    throw didNotFinish(what);
}

bool isRefusal(const std::optional<APIError>& error)
{
    return error && error->status() == 401;
}

/// A code without what people put between its figures, or copy along with them.
QString plainCode(QString code)
{
    return code.removeIf([](QChar each) { return each.isSpace() || each.category() == QChar::Punctuation_Dash; });
}

/// Whether the platform knows neither the account nor that it must be renewed.
bool isUnknownToTheIdentityProvider(const APIError& refusal)
{
    return refusal.code() == QStringLiteral("invalid_credentials") &&
           !refusal.text().contains(QStringLiteral("renewing"));
}

} // namespace

Task<SignIn::Next> SignIn::withEmail(QString email) const
{
    auto method = co_await signInMethod(m_environment.api, email);
    if (std::holds_alternative<PasswordMethod>(method))
        co_return EnterPassword{};
    co_return co_await follow({SignInStep::Sso{}}, std::move(email));
}

Task<SignIn::Next> SignIn::withPassword(LoginBody body, std::optional<AuthConfig> config) const
{
    auto entered = co_await outcomeOf(signInWithPassword(m_environment.api, body));
    if (entered.value)
        co_return co_await follow(*std::move(entered.value), body.email);
    if (isRefusal(failureAs<APIError>(entered.failure)))
        co_return co_await withOldPassword(std::move(body), std::move(config));
    std::rethrow_exception(entered.failure);
}

/// The account may be one that the identity provider does not know yet, or one that only the platform itself knows.
Task<SignIn::Next> SignIn::withOldPassword(LoginBody body, std::optional<AuthConfig> config) const
{
    auto entered = co_await outcomeOf(migratePassword(m_environment.api, body));
    if (entered.value)
        co_return co_await follow(*std::move(entered.value), body.email);
    auto refusal = failureAs<APIError>(entered.failure);
    if (isRefusal(refusal) && isUnknownToTheIdentityProvider(*refusal) && config && config->devAuth)
        co_return co_await directly(std::move(body));
    std::rethrow_exception(entered.failure);
}

Task<SignIn::Next> SignIn::directly(LoginBody body) const
{
    co_await signInDirectly(m_environment.api, body);
    co_return SignInStep::SignedIn{};
}

Task<SignIn::Next> SignIn::withEmailCode(QString code, QString email) const
{
    auto step = co_await verifyEmailCode(m_environment.api, {.code = plainCode(code)});
    co_return co_await follow(std::move(step), std::move(email));
}

Task<SignIn::Next> SignIn::withAuthenticatorCode(QString code, QString email) const
{
    auto step = co_await verifyAuthenticatorCode(m_environment.api, {.code = plainCode(code)});
    co_return co_await follow(std::move(step), std::move(email));
}

Task<SignIn::Next> SignIn::atProvider(QString provider, QString name) const
{
    return open(webStartURL(m_environment.api, provider, {}), std::move(name));
}

Task<SignIn::Next> SignIn::inBrowser(QString email) const
{
    if (email.isEmpty())
        return open(m_environment.api.signInPageURL(), QObject::tr("The sign-in in the browser"));
    return open(webStartURL(m_environment.api, {}, email.trimmed()), QObject::tr("Your organisation's sign-in"));
}

Task<SignIn::Next> SignIn::withPasskey() const
{
    co_await m_environment.passkey.signIn();
    co_return SignInStep::SignedIn{};
}

Task<SignIn::Next> SignIn::withPasskeyInBrowser() const
{
    return open(m_environment.api.signInPageURL(), QObject::tr("The passkey sign-in"));
}

Task<SignIn::Next> SignIn::follow(SignInStep step, QString email) const
{
    if (std::holds_alternative<SignInStep::VerifyEmail>(step.step))
        co_return SignInStep::VerifyEmail{};
    if (std::holds_alternative<SignInStep::Totp>(step.step))
        co_return SignInStep::Totp{};
    if (auto* enrol = std::get_if<SignInStep::EnrolTotp>(&step.step))
        co_return std::move(*enrol);
    if (std::holds_alternative<SignInStep::Sso>(step.step)) // its own address is for a browser that is signed in
        co_return co_await inBrowser(std::move(email));
    co_return SignInStep::SignedIn{};
}

/// `what` is what people call the way in.
Task<SignIn::Next> SignIn::open(QByteArray address, QString what) const
{
    auto cameBack = co_await answerOf(m_environment.web.signIn(std::move(address)));
    if (cameBack.failure)
        throwInWords(cameBack.failure, what);
    const QUrlQuery items{QUrl(*cameBack.value)};
    const auto grant = items.queryItemValue(QStringLiteral("grant"), QUrl::FullyDecoded);
    if (grant.isEmpty())
        throw didNotFinish(what, items.queryItemValue(QStringLiteral("error"), QUrl::FullyDecoded));
    auto redeemed = co_await answerOf(redeemGrant(m_environment.api, {.grant = grant}));
    if (redeemed.failure)
        throwInWords(redeemed.failure, what);
    co_return SignInStep::SignedIn{};
}

} // namespace palvera
