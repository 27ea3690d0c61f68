#pragma once

#include "async/Task.h"
#include "service/SignInRecords.h"

namespace palvera {

class API;
class BrowserSignIn;
class PasskeySignIn;

/// Signing in, step by step, for a face that asks the user what each step needs.
///
/// A step gives what is to be asked next, or throws what kept it from that: what the service's operations throw, and
/// SignInDoorError where a browser or a passkey came back without a sign-in. After SignInStep::SignedIn the platform
/// knows the user: Session::refresh finds out who that is. Nothing is kept from one step to the next. Steps may be
/// awaited on any serial executor, end at once when they are cancelled, and must not outlive this object.
class SignIn {
public:
    /// What it works with; all of it outlives the steps.
    struct Environment {
        API& api;
        BrowserSignIn& web;
        PasskeySignIn& passkey;
    };
    /// The password of the e-mail address is asked for.
    struct EnterPassword {
        bool operator==(const EnterPassword&) const = default;
    };
    using Next = std::variant<SignInStep::SignedIn, EnterPassword, SignInStep::VerifyEmail, SignInStep::Totp,
                              SignInStep::EnrolTotp>;

    explicit SignIn(const Environment& environment) : m_environment(environment) {}

    /// At the work e-mail door: to a password, or through the organisation's own sign-in in a browser.
    Task<Next> withEmail(QString email) const;
    /// Tries each door that may know the account. `config` is how one can sign in, where the platform has said so.
    Task<Next> withPassword(LoginBody body, std::optional<AuthConfig> config) const;
    /// At the platform's own door.
    Task<Next> directly(LoginBody body) const;
    /// Answers SignInStep::VerifyEmail of that address.
    Task<Next> withEmailCode(QString code, QString email) const;
    /// Answers SignInStep::Totp and SignInStep::EnrolTotp of that address.
    Task<Next> withAuthenticatorCode(QString code, QString email) const;
    /// At `provider`, in a browser; `name` is what people call it.
    Task<Next> atProvider(QString provider, QString name) const;
    /// On the platform's own page, in a browser, which asks how; or at the organisation of `email` where that is given.
    Task<Next> inBrowser(QString email) const;
    /// With a passkey that something plugged in holds.
    Task<Next> withPasskey() const;
    /// With one that the browser finds.
    Task<Next> withPasskeyInBrowser() const;

private:
    Task<Next> withOldPassword(LoginBody body, std::optional<AuthConfig> config) const;
    Task<Next> follow(SignInStep step, QString email) const;
    Task<Next> open(QByteArray address, QString what) const;

    const Environment m_environment;
};

} // namespace palvera
