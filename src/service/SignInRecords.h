#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>
#include <variant>

namespace palvera {

/// Somebody who is signed in.
struct User {
    QString id;
    QString email;
    std::optional<QString> name = {};

    static User fromJson(const QJsonObject& object);
    bool operator==(const User&) const = default;
};

struct Me {
    User user;

    static Me fromJson(const QJsonObject& object);
    bool operator==(const Me&) const = default;
};

struct SignedIn {
    User user;

    static SignedIn fromJson(const QJsonObject& object);
    bool operator==(const SignedIn&) const = default;
};

/// How one can sign in to the platform.
struct AuthConfig {
    bool devAuth = false;                      ///< with an e-mail address and a password of the platform's own
    bool workos = false;                       ///< through its identity provider
    std::optional<QString> environment = {};   ///< the platform's name for itself: "local", "qa" or "prod"
    std::optional<QList<QString>> social = {}; ///< of "google", "microsoft" and "apple"

    static AuthConfig fromJson(const QJsonObject& object);
    bool operator==(const AuthConfig&) const = default;
};

/// How one e-mail address signs in, as the platform says it.
struct MethodAnswer {
    QString method;
    std::optional<QString> url = {};

    static MethodAnswer fromJson(const QJsonObject& object);
    bool operator==(const MethodAnswer&) const = default;
};

struct SsoMethod {
    QString address; ///< a web address to open in the browser

    bool operator==(const SsoMethod&) const = default;
};
struct PasswordMethod {
    bool operator==(const PasswordMethod&) const = default;
};
/// How one e-mail address signs in.
using Method = std::variant<SsoMethod, PasswordMethod>;

/// Single sign-on when the answer says so and names a web address, else by password.
Method methodFrom(const MethodAnswer& answer);

/// What a sign-in asks for next.
struct SignInStep {
    struct SignedIn {
        bool operator==(const SignedIn&) const = default;
    };
    /// The code that was sent to the user's e-mail address.
    struct VerifyEmail {
        bool operator==(const VerifyEmail&) const = default;
    };
    /// The code that the user's authenticator shows.
    struct Totp {
        bool operator==(const Totp&) const = default;
    };
    /// To set an authenticator up, from either of two texts that the platform made for it, then its code.
    struct EnrolTotp {
        QString qrCode;
        QString secret;

        bool operator==(const EnrolTotp&) const = default;
    };
    /// To go on in the browser at a web address.
    struct Sso {
        QString address;

        bool operator==(const Sso&) const = default;
    };

    std::variant<SignedIn, VerifyEmail, Totp, EnrolTotp, Sso> step;

    static SignInStep fromJson(const QJsonObject& object);
    bool operator==(const SignInStep&) const = default;
};

struct EmailBody {
    QString email;

    QJsonObject toJson() const;
};

struct LoginBody {
    QString email;
    QString password;

    QJsonObject toJson() const;
};

struct CodeBody {
    QString code;

    QJsonObject toJson() const;
};

struct GrantBody {
    QString grant;

    QJsonObject toJson() const;
};

} // namespace palvera
