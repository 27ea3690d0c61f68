#include "service/SignInOperations.h"

#include "service/API.h"

#include <QStringList>

namespace palvera {

Task<Method> signInMethod(API& api, QString email)
{
    const QJsonObject body = EmailBody{.email = email}.toJson();
    co_return methodFrom(co_await api.fetch<MethodAnswer>("auth/methods", "POST", body));
}

Task<AuthConfig> authConfig(API& api)
{
    return api.fetch<AuthConfig>("auth/config");
}

Task<Me> currentUser(API& api)
{
    return api.fetch<Me>("me");
}

Task<SignInStep> signInWithPassword(API& api, const LoginBody& body)
{
    return api.fetch<SignInStep>("auth/password", "POST", body.toJson());
}

Task<SignInStep> migratePassword(API& api, const LoginBody& body)
{
    return api.fetch<SignInStep>("auth/migrate", "POST", body.toJson());
}

Task<void> signInDirectly(API& api, const LoginBody& body)
{
    return api.post("auth/login", body.toJson());
}

Task<SignInStep> verifyEmailCode(API& api, const CodeBody& body)
{
    return api.fetch<SignInStep>("auth/verify", "POST", body.toJson());
}

Task<SignInStep> verifyAuthenticatorCode(API& api, const CodeBody& body)
{
    return api.fetch<SignInStep>("auth/totp", "POST", body.toJson());
}

Task<void> resendEmailCode(API& api)
{
    return api.post("auth/verify/resend");
}

Task<void> forgotPassword(API& api, const EmailBody& body)
{
    return api.post("auth/forgot", body.toJson());
}

Task<SignedIn> redeemGrant(API& api, const GrantBody& body)
{
    return api.fetch<SignedIn>("auth/native/redeem", "POST", body.toJson());
}

Task<PasskeyChallenge> passkeyChallenge(API& api)
{
    return api.fetch<PasskeyChallenge>("auth/passkey/options", "POST");
}

Task<SignedIn> signInWithPasskey(API& api, const PasskeyBody& body)
{
    return api.fetch<SignedIn>("auth/passkey", "POST", body.toJson());
}

QByteArray webStartURL(const API& api, const std::optional<QString>& provider, const std::optional<QString>& email)
{
    QStringList items{"native=1", "return=%2F"};
    if (provider)
        items.append("provider=" + queryValue(*provider));
    if (email)
        items.append("email=" + queryValue(*email));
    return api.makeURL("auth/workos/start?" + items.join(u'&'));
}

} // namespace palvera
