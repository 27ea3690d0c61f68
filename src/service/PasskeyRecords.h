#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace palvera {

/// What the platform wants a passkey to sign. Texts of bytes are base64url.
struct PasskeyChallenge {
    /// A passkey that may answer.
    struct Credential {
        QString id;
        std::optional<QList<QString>> transports;

        static Credential fromJson(const QJsonObject& object);
        bool operator==(const Credential&) const = default;
    };
    /// Of the options of a WebAuthn request those that are used, or read.
    struct Options {
        QString challenge;
        std::optional<QString> rpId;
        std::optional<qint64> timeout; ///< milliseconds
        std::optional<QString> userVerification;
        std::optional<QList<Credential>> allowCredentials;

        static Options fromJson(const QJsonObject& object);
        bool operator==(const Options&) const = default;
    };

    Options options;
    QString challengeId;

    static PasskeyChallenge fromJson(const QJsonObject& object);
    bool operator==(const PasskeyChallenge&) const = default;
};

/// What a passkey has signed, in the shape of a WebAuthn credential. All of it is base64url.
struct PasskeyAssertion {
    QString id;
    QString clientDataJSON;
    QString authenticatorData;
    QString signature;
    std::optional<QString> userHandle;

    QJsonObject toJson() const;
};

struct PasskeyBody {
    PasskeyAssertion response;
    QString challengeId;

    QJsonObject toJson() const;
};

} // namespace palvera
