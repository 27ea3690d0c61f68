// Loaded before libfido2 (LD_PRELOAD), this has a program find the software keys of the file that PALVERA_SOFT_KEYS
// names in the place of those that are plugged in: a list of {"pin", "passkeys": [{"id", "relyingParty", "user",
// "name", "discoverable", "key"}]}, in which "key" is a private key (PKCS #8), and all bytes are base64url.

#include "localplatform/softkey/SoftKey.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <openssl/x509.h>

namespace palvera::local {

namespace {

QByteArray bytesOf(const QJsonValue& text)
{
    return QByteArray::fromBase64(text.toString().toLatin1(), QByteArray::Base64UrlEncoding);
}

SoftPasskey passkeyFrom(const QJsonObject& object)
{
    const auto key = bytesOf(object[QStringLiteral("key")]);
    const auto* next = reinterpret_cast<const unsigned char*>(key.constData());
    return {.id = bytesOf(object[QStringLiteral("id")]),
            .relyingParty = object[QStringLiteral("relyingParty")].toString().toUtf8(),
            .user = bytesOf(object[QStringLiteral("user")]),
            .name = object[QStringLiteral("name")].toString(),
            .isDiscoverable = object[QStringLiteral("discoverable")].toBool(),
            .key = {d2i_AutoPrivateKey(nullptr, &next, key.size()), &EVP_PKEY_free}};
}

std::vector<std::unique_ptr<SoftKey>> readKeys()
{
    std::vector<std::unique_ptr<SoftKey>> keys;
    QFile file(qEnvironmentVariable("PALVERA_SOFT_KEYS"));
    if (!file.open(QFile::ReadOnly))
        return keys;
    for (const auto& each : QJsonDocument::fromJson(file.readAll()).array()) {
        SoftKey::Options options{.pin = each.toObject()[QStringLiteral("pin")].toString().toUtf8()};
        for (const auto& passkey : each.toObject()[QStringLiteral("passkeys")].toArray())
            options.passkeys.push_back(passkeyFrom(passkey.toObject()));
        keys.push_back(std::make_unique<SoftKey>(std::move(options)));
    }
    return keys;
}

} // namespace

} // namespace palvera::local

/// In the place of libfido2's own.
extern "C" __attribute__((visibility("default"))) int fido_dev_info_manifest(fido_dev_info_t* list, std::size_t room,
                                                                             std::size_t* found)
{
    static const auto keys = palvera::local::readKeys();
    std::vector<palvera::local::SoftKey*> plugged;
    for (const auto& key : keys)
        if (plugged.size() < room)
            plugged.push_back(key.get());
    *found = palvera::local::SoftKey::fill(list, plugged);
    return FIDO_OK;
}
