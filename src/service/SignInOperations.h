#pragma once

#include "async/Task.h"
#include "service/PasskeyRecords.h"
#include "service/SignInRecords.h"

#include <QByteArray>
#include <QString>

namespace palvera {

class API;

// Signing in; API::signOut signs out. Each operation is one call to the service and throws what API::send and
// API::fetch throw. `api` must live until the operation ends; the other arguments are used up at once.

/// How `email` signs in.
Task<Method> signInMethod(API& api, QString email);
/// Which ways in the platform offers.
Task<AuthConfig> authConfig(API& api);
/// Who is signed in; an APIError of status 401 when nobody is.
Task<Me> currentUser(API& api);

/// Signs in through the identity provider.
Task<SignInStep> signInWithPassword(API& api, const LoginBody& body);
/// The same for an account that the identity provider does not know yet: the platform moves it there first.
Task<SignInStep> migratePassword(API& api, const LoginBody& body);
/// Signs in to the platform itself; `currentUser` then says who that is.
Task<void> signInDirectly(API& api, const LoginBody& body);
/// Answers SignInStep::VerifyEmail.
Task<SignInStep> verifyEmailCode(API& api, const CodeBody& body);
/// Answers SignInStep::Totp and SignInStep::EnrolTotp.
Task<SignInStep> verifyAuthenticatorCode(API& api, const CodeBody& body);
Task<void> resendEmailCode(API& api);
/// Has the platform send a message with which to choose another password.
Task<void> forgotPassword(API& api, const EmailBody& body);
/// Redeems what a sign-in in the browser came back with; `currentUser` then says who that is.
Task<SignedIn> redeemGrant(API& api, const GrantBody& body);

/// What a passkey is to sign.
Task<PasskeyChallenge> passkeyChallenge(API& api);
/// Signs in with what it has signed; `currentUser` then says who that is.
Task<SignedIn> signInWithPasskey(API& api, const PasskeyBody& body);

/// The address at which a sign-in in the browser starts, at `provider` and for `email` when given.
QByteArray webStartURL(const API& api, const std::optional<QString>& provider, const std::optional<QString>& email);

} // namespace palvera
