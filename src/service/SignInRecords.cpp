#include "service/SignInRecords.h"

#include "service/Addresses.h"
#include "service/JsonReader.h"

#include <QObject>

namespace palvera {

namespace {

SignInStep::Sso ssoStep(const JsonReader& reader)
{
    const auto url = reader.optional<QString>("url");
    if (!url || !parseAddress(*url))
        throw DecodingError("url", QObject::tr("The single sign-on step named no address."));
    return {.address = *url};
}

} // namespace

User User::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.id = reader.required<QString>("id"),
            .email = reader.required<QString>("email"),
            .name = reader.optional<QString>("name")};
}

Me Me::fromJson(const QJsonObject& object)
{
    return {.user = JsonReader(object).required<User>("user")};
}

SignedIn SignedIn::fromJson(const QJsonObject& object)
{
    return {.user = JsonReader(object).required<User>("user")};
}

AuthConfig AuthConfig::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.devAuth = reader.required<bool>("devAuth"),
            .workos = reader.required<bool>("workos"),
            .environment = reader.optional<QString>("environment"),
            .social = reader.optional<QList<QString>>("social")};
}

MethodAnswer MethodAnswer::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.method = reader.required<QString>("method"), .url = reader.optional<QString>("url")};
}

Method methodFrom(const MethodAnswer& answer)
{
    if (answer.method == u"sso" && answer.url && parseAddress(*answer.url))
        return SsoMethod{.address = *answer.url};
    return PasswordMethod{};
}

SignInStep SignInStep::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    if (reader.contains("user"))
        return {SignedIn{}};
    const auto next = reader.optional<QString>("next");
    if (next == u"sso")
        return {ssoStep(reader)};
    if (next == u"verify_email")
        return {VerifyEmail{}};
    if (next == u"totp")
        return {Totp{}};
    if (next == u"enrol_totp")
        return {EnrolTotp{.qrCode = reader.required<QString>("qrCode"), .secret = reader.required<QString>("secret")}};
    throw DecodingError("next", QObject::tr("An unknown sign-in step: %1.").arg(next.value_or("none")));
}

QJsonObject EmailBody::toJson() const
{
    return {{"email", email}};
}

QJsonObject LoginBody::toJson() const
{
    return {{"email", email}, {"password", password}};
}

QJsonObject CodeBody::toJson() const
{
    return {{"code", code}};
}

QJsonObject GrantBody::toJson() const
{
    return {{"grant", grant}};
}

} // namespace palvera
