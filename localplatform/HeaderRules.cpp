#include "localplatform/HeaderRules.h"

#include <span>

namespace palvera::local {

namespace {

using Names = std::span<const QByteArrayView>;

constexpr QByteArrayView serviceHeaders[] = {"accept", "content-type", "content-length",  "host",
                                             "cookie", "user-agent",   "accept-encoding", "connection"};
constexpr QByteArrayView putHeaders[] = {"content-length",  "host",      "accept", "user-agent",
                                         "accept-encoding", "connection"};
constexpr QByteArrayView getHeaders[] = {"range", "host", "accept", "user-agent", "accept-encoding", "connection"};

void checkNames(const HttpHeaders& headers, Names allowed)
{
    QByteArrayList met;
    for (const auto& [name, value] : headers) {
        auto lower = name.toLower();
        if (std::find(allowed.begin(), allowed.end(), lower) == allowed.end())
            violate(QStringLiteral("the header \"%1\" does not belong here").arg(QString::fromUtf8(name)));
        if (met.contains(lower))
            violate(QStringLiteral("the header \"%1\" comes twice").arg(QString::fromUtf8(name)));
        met.append(lower);
    }
}

} // namespace

void checkServiceHeaders(const HttpHeaders& headers, Body body)
{
    checkNames(headers, serviceHeaders);
    if (headerOf(headers, "Accept") != "application/json")
        violate(QStringLiteral("Accept must be application/json"));
    auto type = headerOf(headers, "Content-Type");
    if (body == Body::json && type != "application/json")
        violate(QStringLiteral("Content-Type must be application/json"));
    if (body == Body::none && !type.isNull())
        violate(QStringLiteral("Content-Type without a body"));
}

void checkStorageHeaders(const HttpHeaders& headers, QByteArrayView method)
{
    checkNames(headers, method == QByteArrayView("PUT") ? Names(putHeaders) : Names(getHeaders));
}

} // namespace palvera::local
