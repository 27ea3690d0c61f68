#include "service/API.h"

#include "async/TaskGroup.h"

#include <QJsonDocument>

#include <boost/asio/strand.hpp>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds idleTimeout = 60s;

HttpRequest makeRequest(QByteArray url, QByteArray method, const std::optional<QJsonObject>& body)
{
    HttpRequest request{.method = std::move(method), .url = std::move(url), .idleTimeout = idleTimeout};
    request.headers.emplaceBack("Accept", "application/json");
    if (body) {
        request.headers.emplaceBack("Content-Type", "application/json");
        request.body = QJsonDocument(*body).toJson(QJsonDocument::Compact);
    }
    return request;
}

} // namespace

API::API(Surroundings surroundings)
    : m_client(surroundings.client),
      m_strand(boost::asio::make_strand(surroundings.executor)),
      m_clearCookies(std::move(surroundings.clearCookies)),
      m_site(surroundings.site)
{}

Address API::serviceBase() const
{
    const auto chosen = parseAddress(qEnvironmentVariable("PV_API"));
    return chosen ? *chosen : baseAddress(site());
}

QByteArray API::signInPageURL() const
{
    return serviceBase().origin + "/sign-in?native=1";
}

QByteArray API::makeURL(const QString& path) const
{
    return joinAddress(serviceBase(), path);
}

Task<QByteArray> API::send(QString path, QByteArray method, std::optional<QJsonObject> body)
{
    return runOn(m_strand, sendHere(std::move(path), std::move(method), std::move(body)));
}

Task<void> API::post(QString path, std::optional<QJsonObject> body)
{
    return runOn(m_strand, postHere(std::move(path), std::move(body)));
}

Task<void> API::signOut()
{
    return runOn(m_strand, signOutHere());
}

Task<QByteArray> API::sendHere(QString path, QByteArray method, std::optional<QJsonObject> body)
{
    HttpResponse answer = co_await m_client.send(makeRequest(makeURL(path), std::move(method), body));
    if (answer.status < 200 || answer.status > 299)
        throw APIError::fromAnswer(answer.status, answer.body);
    co_return std::move(answer.body);
}

Task<void> API::postHere(QString path, std::optional<QJsonObject> body)
{
    co_await sendHere(std::move(path), "POST", std::move(body));
}

Task<void> API::signOutHere()
{
    co_await outcomeOf(sendHere(QStringLiteral("auth/logout"), "POST", {}));
    m_clearCookies();
}

} // namespace palvera
