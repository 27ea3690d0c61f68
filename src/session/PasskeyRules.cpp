#include "session/PasskeyRules.h"

namespace palvera {

QString toBase64Url(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

std::optional<QByteArray> fromBase64Url(const QString& text)
{
    auto standard = text.toUtf8().replace('-', '+').replace('_', '/');
    while (standard.size() % 4 != 0)
        standard += '=';
    const auto decoded = QByteArray::fromBase64Encoding(standard, QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(*decoded) : std::nullopt;
}

bool mayAskFor(const QString& relyingParty, const QString& host, bool isLoopback)
{
    if (isLoopback && relyingParty == QStringLiteral("localhost"))
        return true;
    const bool isParent = relyingParty.contains(u'.') && host.endsWith(u'.' + relyingParty);
    return !relyingParty.isEmpty() && (relyingParty == host || isParent);
}

QByteArray clientDataFor(const QString& challenge, const QString& relyingParty)
{
    return QStringLiteral(R"({"type":"webauthn.get","challenge":"%1","origin":"https://%2","crossOrigin":false})")
        .arg(challenge, relyingParty)
        .toUtf8();
}

} // namespace palvera
