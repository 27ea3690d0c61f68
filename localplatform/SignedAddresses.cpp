#include "localplatform/SignedAddresses.h"

#include "localplatform/Escapes.h"
#include "localplatform/Wire.h"

#include <QMessageAuthenticationCode>

namespace palvera::local {

namespace {

constexpr QByteArrayView partsBase = "/vault.v1/+parts/~";
constexpr QByteArrayView objectsBase = "/vault.v1/+objects/..%7E/";
constexpr QByteArrayView expiresMark = "&expires=";
constexpr QByteArrayView signatureMark = "&signature=";

/// Guards nothing: it proves that an address came back as it was given out.
const QByteArray signingKey = "palvera local storage";

/// Every byte but letters, digits, dots and hyphens escaped, in lower case.
QByteArray lowerEscape(const QString& text)
{
    constexpr QByteArrayView plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789.-";
    QByteArray escaped;
    for (char byte : text.toUtf8())
        escaped += plain.contains(byte) ? QByteArray(1, byte) : '%' + QByteArray(1, byte).toHex();
    return escaped;
}

QByteArray signatureOf(QByteArrayView method, QByteArrayView signedTarget)
{
    QByteArray message = method.toByteArray() + '\n' + signedTarget.toByteArray();
    return QMessageAuthenticationCode::hash(message, signingKey, QCryptographicHash::Sha256).toHex();
}

QByteArray sign(const QByteArray& method, QByteArray target, Clock::WallTime expires)
{
    auto moment = std::chrono::duration_cast<std::chrono::milliseconds>(expires.time_since_epoch());
    target += expiresMark.toByteArray() + QByteArray::number(qint64{moment.count()});
    return target + signatureMark.toByteArray() + signatureOf(method, target);
}

[[noreturn]] void unknownPlace()
{
    throw Refusal{.status = 404,
                  .error = QStringLiteral("NoSuchKey"),
                  .message = QStringLiteral("The address names nothing."),
                  .violation = true};
}

} // namespace

QByteArray partTarget(const PartPlace& place, const QString& filename, Clock::WallTime expires)
{
    auto serial = QByteArray::number(place.serial), part = QByteArray::number(place.part);
    return sign("PUT",
                partsBase.toByteArray() + serial + '/' + part + "/o%2f" + lowerEscape(filename) +
                    "?partNumber=" + part + "&uploadId=up%2f" + serial + "%2B%3d%3d&hint=a+b%7E~%2e",
                expires);
}

QByteArray objectTarget(const ObjectPlace& place, Clock::WallTime expires)
{
    return sign("GET",
                objectsBase.toByteArray() + lowerEscape(place.key) + "?disposition=attachment%3b+x%3D~%7e&list-type=2",
                expires);
}

StoragePlace placeOf(QByteArrayView target)
{
    auto mark = target.indexOf('?');
    auto path = mark < 0 ? target : target.first(mark);
    if (path.startsWith(objectsBase)) {
        auto key = unescape(path.sliced(objectsBase.size()));
        if (!key || key->isEmpty())
            unknownPlace();
        return ObjectPlace{.key = *key};
    }
    if (!path.startsWith(partsBase))
        unknownPlace();
    auto pieces = path.sliced(partsBase.size()).toByteArray().split('/');
    PartPlace place{.serial = pieces[0].toLongLong(), .part = pieces.size() > 1 ? pieces[1].toInt() : 0};
    if (place.serial < 1 || place.part < 1)
        unknownPlace();
    return place;
}

void verifyTarget(QByteArrayView method, QByteArrayView target, Clock::WallTime now)
{
    auto expiresAt = target.lastIndexOf(expiresMark), signatureAt = target.lastIndexOf(signatureMark);
    bool marked = expiresAt >= 0 && signatureAt > expiresAt;
    if (!marked || target.sliced(signatureAt + signatureMark.size()) != signatureOf(method, target.first(signatureAt)))
        throw Refusal{.status = 403,
                      .error = QStringLiteral("SignatureDoesNotMatch"),
                      .message = QStringLiteral("The address is not as it was signed."),
                      .violation = true};
    auto from = expiresAt + expiresMark.size();
    auto expires = std::chrono::milliseconds(target.sliced(from, signatureAt - from).toByteArray().toLongLong());
    if (now >= Clock::WallTime(expires))
        refuse(403, QStringLiteral("AccessDenied"), QStringLiteral("Request has expired"));
}

} // namespace palvera::local
