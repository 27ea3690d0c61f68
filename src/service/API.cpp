#include "service/API.h"

#include "async/TaskGroup.h"
#include "http/HttpAddress.h"
#include "http/NetworkPath.h"
#include "http/TransportError.h"
#include "text/VisibleText.h"

#include <QJsonDocument>
#include <QObject>

#include <boost/asio/strand.hpp>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds idleTimeout = 60s;
/// Whoever answers a byte now and then would else hold a screen for ever.
constexpr std::chrono::milliseconds totalTimeout = 120s;
constexpr std::chrono::milliseconds logoutPatience = 5s;

HttpRequest makeRequest(QByteArray url, QByteArray method, const std::optional<QJsonObject>& body)
{
    HttpRequest request{.method = std::move(method),
                        .url = std::move(url),
                        .idleTimeout = idleTimeout,
                        .totalTimeout = totalTimeout,
                        .asksForCompression = true};
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
      m_cookieProblem(std::move(surroundings.cookieProblem)),
      m_shared(std::make_shared<Shared>())
{
    m_shared->site = surroundings.site;
}

API::API(const API& other, Address pinned)
    : m_client(other.m_client),
      m_strand(other.m_strand),
      m_clearCookies(other.m_clearCookies),
      m_cookieProblem(other.m_cookieProblem),
      m_shared(other.m_shared),
      m_pinned(std::move(pinned))
{}

std::shared_ptr<API> API::pinned() const
{
    return std::shared_ptr<API>(new API(*this, serviceBase()));
}

Address API::serviceBase() const
{
    return m_pinned ? *m_pinned : chosenBase();
}

Address API::chosenBase() const
{
    const auto named = parseAddress(qEnvironmentVariable("PV_API"));
    return named ? *named : baseAddress(site());
}

void API::onSignInNeeded(std::function<void()> call)
{
    std::lock_guard guard(m_shared->mutex);
    m_shared->signInNeeded = std::move(call);
}

void API::noteRefusal(const QString& path, const APIError& refusal) const
{
    const bool isAboutSigningIn = path == QStringLiteral("me") || path.startsWith(QStringLiteral("auth/"));
    if (!refusal.asksToSignIn() || isAboutSigningIn || serviceBase() != chosenBase())
        return;
    std::lock_guard guard(m_shared->mutex);
    if (m_shared->signInNeeded)
        m_shared->signInNeeded();
}

QString API::signInProblem() const
{
    return m_cookieProblem ? m_cookieProblem() : QString();
}

bool API::isServiceNamed() const
{
    return parseAddress(qEnvironmentVariable("PV_API")).has_value();
}

QString API::serviceProblem() const
{
    const auto named = qEnvironmentVariable("PV_API");
    if (named.isEmpty() || isServiceNamed())
        return {};
    return QObject::tr("PV_API is ignored: “%1” is not an address that begins with http:// or https://.")
        .arg(visibleText(named));
}

bool API::canBeAsked(const NetworkPath& path) const
{
    const auto service = parseHttpAddress(makeURL(QString()));
    return path.isUsable() || (service && service->loopback);
}

bool API::isServiceExposed() const
{
    return isExposed(serviceBase().origin);
}

void API::requireEncryption(const QString& address) const
{
    if (serviceBase().origin.startsWith("https:") && isExposed(address.toUtf8()))
        throw TransportError(TransportError::Kind::untrusted,
                             QObject::tr("The platform's address for storage is not encrypted, so it was not used."));
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

Task<bool> API::signOut()
{
    return runOn(m_strand, signOutHere());
}

Task<QByteArray> API::sendHere(QString path, QByteArray method, std::optional<QJsonObject> body)
{
    HttpResponse answer = co_await m_client.send(makeRequest(makeURL(path), std::move(method), body));
    if (answer.status < 200 || answer.status > 299) {
        auto refusal = APIError::fromAnswer(answer.status, answer.body);
        noteRefusal(path, refusal);
        throw refusal;
    }
    co_return std::move(answer.body);
}

DecodingError API::inWords(const DecodingError& error)
{
    if (error.key().isEmpty())
        return {{},
                QObject::tr("That was not an answer of the platform. A proxy or a sign-in page of the network may "
                            "stand in between.")};
    return {error.key(), QObject::tr("The platform's answer could not be read: %1").arg(error.text())};
}

Task<void> API::postHere(QString path, std::optional<QJsonObject> body)
{
    co_await sendHere(std::move(path), "POST", std::move(body));
}

Task<bool> API::signOutHere()
{
    auto request = makeRequest(makeURL(QStringLiteral("auth/logout")), "POST", {});
    request.idleTimeout = request.totalTimeout = logoutPatience;
    auto telling = m_client.send(std::move(request)); // with the cookies as they still are
    m_clearCookies();
    const auto told = co_await outcomeOf(std::move(telling));
    co_return !told.failure && told.value->isSuccess();
}

} // namespace palvera
