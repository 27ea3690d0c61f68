#include "desktop/Arrival.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstring>

namespace palvera {

namespace {

const QString addressesKey = QStringLiteral("addresses");
const QString tokenKey = QStringLiteral("token");

} // namespace

Arrival takeArrival(int& argc, char** argv, const QByteArrayList& addresses)
{
    Arrival arrival;
    std::ranges::copy_if(addresses, std::back_inserter(arrival.addresses), isCallback);
    const auto end = std::remove_if(argv + 1, argv + argc, [&](char* argument) {
        if (!isCallback(argument))
            return false;
        arrival.addresses.append(QByteArray(argument));
        ::explicit_bzero(argument, std::strlen(argument)); // the very bytes that the system shows to others
        return true;
    });
    argc = int(end - argv);
    argv[argc] = nullptr;
    arrival.token = qgetenv("XDG_ACTIVATION_TOKEN");
    if (arrival.token.isEmpty())
        arrival.token = qgetenv("DESKTOP_STARTUP_ID");
    return arrival;
}

bool isCallback(const QByteArray& address)
{
    return address.left(8).toLower() == "palvera:";
}

QByteArray toMessage(const Arrival& arrival)
{
    QJsonArray addresses;
    for (const auto& address : arrival.addresses)
        addresses.append(QString::fromUtf8(address));
    return QJsonDocument(QJsonObject{{addressesKey, addresses}, {tokenKey, QString::fromUtf8(arrival.token)}})
        .toJson(QJsonDocument::Compact);
}

std::optional<Arrival> arrivalFrom(const QByteArray& message)
{
    const auto document = QJsonDocument::fromJson(message);
    if (!document.isObject())
        return std::nullopt;
    const auto object = document.object();
    Arrival arrival{.token = object[tokenKey].toString().toUtf8()};
    for (const auto& each : object[addressesKey].toArray())
        if (auto address = each.toString().toUtf8(); isCallback(address))
            arrival.addresses.append(std::move(address));
    return arrival;
}

} // namespace palvera
