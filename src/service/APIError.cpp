#include "service/APIError.h"

#include "service/JsonReader.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>

namespace palvera {

namespace {

/// The members of `body`; none when it is not an object of nothing but texts: one other value spoils it whole.
QJsonObject textsOf(const QByteArray& body)
{
    const QJsonObject members = QJsonDocument::fromJson(body).object();
    return json::textsOf(members).size() == members.size() ? members : QJsonObject();
}

} // namespace

APIError APIError::fromAnswer(int status, const QByteArray& body)
{
    const QJsonObject texts = textsOf(body);
    const QString composed = QObject::tr("The platform answered %1.").arg(status);
    std::optional<QString> code;
    if (const auto reason = texts.value(u"error"); reason.isString())
        code = reason.toString();
    return APIError(status, texts.value(u"message").toString(composed), std::move(code));
}

bool asksToSignIn(const std::exception_ptr& failure)
{
    auto error = failureAs<APIError>(failure);
    return error && error->asksToSignIn();
}

} // namespace palvera
