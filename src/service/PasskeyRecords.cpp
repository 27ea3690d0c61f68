#include "service/PasskeyRecords.h"

#include "service/JsonReader.h"

namespace palvera {

PasskeyChallenge::Credential PasskeyChallenge::Credential::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.id = reader.required<QString>("id"), .transports = reader.optional<QList<QString>>("transports")};
}

PasskeyChallenge::Options PasskeyChallenge::Options::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.challenge = reader.required<QString>("challenge"),
            .rpId = reader.optional<QString>("rpId"),
            .timeout = reader.optional<qint64>("timeout"),
            .userVerification = reader.optional<QString>("userVerification"),
            .allowCredentials = reader.optional<QList<Credential>>("allowCredentials")};
}

PasskeyChallenge PasskeyChallenge::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.options = reader.required<Options>("options"), .challengeId = reader.required<QString>("challengeId")};
}

QJsonObject PasskeyAssertion::toJson() const
{
    QJsonObject response{
        {"clientDataJSON", clientDataJSON}, {"authenticatorData", authenticatorData}, {"signature", signature}};
    json::put(response, "userHandle", userHandle);
    return {{"id", id},
            {"rawId", id},
            {"type", "public-key"},
            {"response", response},
            {"authenticatorAttachment", "platform"},
            {"clientExtensionResults", QJsonObject()}};
}

QJsonObject PasskeyBody::toJson() const
{
    return {{"response", response.toJson()}, {"challengeId", challengeId}};
}

} // namespace palvera
