#include "localplatform/Wire.h"

#include <QJsonDocument>
#include <QRandomGenerator>

namespace palvera::local {

void refuse(int status, const QString& error, const QString& message)
{
    throw Refusal{.status = status, .error = error, .message = message};
}

void violate(const QString& what)
{
    throw Refusal{.status = 400, .error = QStringLiteral("bad_request"), .message = what, .violation = true};
}

Reply jsonReply(const QJsonObject& object, int status)
{
    return {.status = status,
            .headers = {{"Content-Type", "application/json"}},
            .body = QJsonDocument(object).toJson(QJsonDocument::Compact)};
}

Reply htmlReply(const QByteArray& html, int status)
{
    return {.status = status, .headers = {{"Content-Type", "text/html; charset=utf-8"}}, .body = html};
}

QString cookieValue(const QByteArray& cookies, const QByteArray& name)
{
    for (const auto& cookie : cookies.split(';')) {
        auto trimmed = cookie.trimmed();
        if (trimmed.startsWith(name + '='))
            return QString::fromLatin1(trimmed.mid(name.size() + 1));
    }
    return {};
}

QString token(const char* kind)
{
    auto chance = QRandomGenerator::system()->generate64();
    return QLatin1String(kind) + u'-' + QString::number(chance, 36);
}

Reply refusalReply(const Refusal& refusal)
{
    return jsonReply({{QStringLiteral("error"), refusal.error}, {QStringLiteral("message"), refusal.message}},
                     refusal.status);
}

Reply storageRefusal(int status, const QByteArray& code, const QByteArray& message)
{
    return {.status = status,
            .headers = {{"Content-Type", "application/xml"}},
            .body = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Error><Code>" + code + "</Code><Message>" + message +
                    "</Message></Error>\n"};
}

} // namespace palvera::local
