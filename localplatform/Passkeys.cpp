#include "localplatform/Passkeys.h"

#include "localplatform/Accounts.h"

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <QCryptographicHash>
#include <QJsonDocument>

#include <memory>

namespace palvera::local {

namespace {

constexpr auto base64Url = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

QByteArray bytesOf(const QJsonValue& text)
{
    return QByteArray::fromBase64(text.toString().toLatin1(), QByteArray::Base64UrlEncoding);
}

QByteArray sha256(const QByteArray& data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha256);
}

bool isSigned(const QByteArray& data, const QByteArray& signature, const QByteArray& publicKey)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(publicKey.constData());
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(d2i_PUBKEY(nullptr, &bytes, publicKey.size()),
                                                                  &EVP_PKEY_free);
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    return key && EVP_DigestVerifyInit(context.get(), nullptr, EVP_sha256(), nullptr, key.get()) == 1 &&
           EVP_DigestVerify(context.get(), reinterpret_cast<const unsigned char*>(signature.constData()),
                            std::size_t(signature.size()), reinterpret_cast<const unsigned char*>(data.constData()),
                            std::size_t(data.size())) == 1;
}

// WebAuthn Level 2, 7.2, as far as it is about one assertion.

void checkClientData(const QByteArray& json, const QString& challenge, const QString& origin)
{
    const auto data = QJsonDocument::fromJson(json).object();
    const std::pair<const char*, QJsonValue> expected[] = {
        {"type", QStringLiteral("webauthn.get")}, {"challenge", challenge}, {"origin", origin}, {"crossOrigin", false}};
    for (const auto& [key, value] : expected)
        if (data[QLatin1String(key)] != value)
            violate(
                QStringLiteral("the client data's %1 is not %2").arg(QLatin1String(key), value.toVariant().toString()));
}

void checkAuthenticatorData(const QByteArray& data)
{
    constexpr qsizetype hashSize = 32, shortest = 37;
    constexpr char userPresent = 0x01, userVerified = 0x04;
    if (data.size() < shortest || data.left(hashSize) != sha256(Passkeys::relyingParty.toUtf8()))
        violate(QStringLiteral("the passkey signs for another relying party"));
    if (!(data[hashSize] & userPresent) || !(data[hashSize] & userVerified))
        violate(QStringLiteral("the passkey has not verified its user"));
}

} // namespace

const QString Passkeys::relyingParty = QStringLiteral("localhost");

void Passkeys::add(const QJsonObject& passkey)
{
    if (!findAccount(passkey[QStringLiteral("email")].toString()) || bytesOf(passkey[QStringLiteral("id")]).isEmpty() ||
        bytesOf(passkey[QStringLiteral("publicKey")]).isEmpty())
        violate(QStringLiteral("that is no passkey of an account"));
    m_passkeys[passkey[QStringLiteral("id")].toString()] = passkey;
}

QJsonObject Passkeys::challenge(WallTime now)
{
    const auto id = token("challenge");
    const auto bytes = QString::fromLatin1(sha256(token("bytes").toUtf8()).toBase64(base64Url));
    m_challenges[id] = {.bytes = bytes, .ends = now + challengeLife};
    QJsonArray allowed;
    for (const auto& each : m_passkeys)
        if (const auto passkey = each.toJsonObject(); !passkey[QStringLiteral("discoverable")].toBool())
            allowed.append(QJsonObject{{QStringLiteral("id"), passkey[QStringLiteral("id")]},
                                       {QStringLiteral("type"), QStringLiteral("public-key")},
                                       {QStringLiteral("transports"), QJsonArray{QStringLiteral("usb")}}});
    const QJsonObject options{{QStringLiteral("challenge"), bytes},
                              {QStringLiteral("rpId"), relyingParty},
                              {QStringLiteral("timeout"), 60000},
                              {QStringLiteral("userVerification"), QStringLiteral("required")},
                              {QStringLiteral("allowCredentials"), allowed}};
    return {{QStringLiteral("options"), options}, {QStringLiteral("challengeId"), id}};
}

QString Passkeys::accountOf(const QJsonObject& body, const QString& origin, WallTime now)
{
    const auto challenge = m_challenges.take(body[QStringLiteral("challengeId")].toString());
    const auto assertion = body[QStringLiteral("response")].toObject();
    const auto id = assertion[QStringLiteral("id")].toString();
    if (challenge.ends <= now || !m_passkeys.contains(id))
        refuse(401, QStringLiteral("invalid_passkey"), QStringLiteral("That passkey is not known here."));
    if (assertion[QStringLiteral("rawId")] != id ||
        assertion[QStringLiteral("type")].toString() != QStringLiteral("public-key"))
        violate(QStringLiteral("the assertion is not one of a public key"));
    const auto response = assertion[QStringLiteral("response")].toObject();
    const auto clientData = bytesOf(response[QStringLiteral("clientDataJSON")]);
    const auto authenticatorData = bytesOf(response[QStringLiteral("authenticatorData")]);
    checkClientData(clientData, challenge.bytes, origin);
    checkAuthenticatorData(authenticatorData);
    const auto passkey = m_passkeys[id].toJsonObject();
    if (!isSigned(authenticatorData + sha256(clientData), bytesOf(response[QStringLiteral("signature")]),
                  bytesOf(passkey[QStringLiteral("publicKey")])))
        violate(QStringLiteral("the passkey's signature does not fit"));
    return passkey[QStringLiteral("email")].toString();
}

void Passkeys::fromJson(const QJsonArray& passkeys)
{
    for (const auto& each : passkeys)
        m_passkeys[each.toObject()[QStringLiteral("id")].toString()] = each.toObject();
}

} // namespace palvera::local
