// What the platform says beside its records, and what an address is made of: the first byte chooses the status, the
// rest is the body of an error, an address, an identifier and a query value in turn.

#include "Require.h"

#include "service/APIError.h"
#include "service/Addresses.h"
#include "service/SignInRecords.h"

namespace palvera {
namespace {

const Address base{"https://host", "/api", ""};

void checkOnTheWire(const QByteArray& address)
{
    for (const char byte : address)
        require(byte > 0x20 && byte < 0x7f && byte != '#' && byte != '"', "an address is plain ASCII");
}

void checkIdentifier(const QString& identifier)
{
    const QByteArray before = "https://host/api/orgs/";
    const QByteArray address = joinAddress(base, "orgs/" + pathSegment(identifier) + "/x");
    checkOnTheWire(address);
    require(address.startsWith(before) && address.endsWith("/x"), "an identifier stays at its place");
    const QByteArray segment = address.sliced(before.size(), address.size() - before.size() - 2);
    require(!segment.contains('/') && !segment.contains('?'), "an identifier is one segment");
    require(segment != "." && segment != "..", "an identifier does not step aside");
    require(QByteArray::fromPercentEncoding(segment) == identifier.toUtf8(), "an identifier arrives whole");
}

void checkQueryValue(const QString& value)
{
    const QByteArray encoded = queryValue(value).toLatin1();
    require(QByteArray::fromPercentEncoding(encoded) == value.toUtf8(), "a value arrives whole");
    for (const char byte : encoded)
        require(byte == '%' || std::isalnum(static_cast<unsigned char>(byte)), "a value is escaped");
    checkOnTheWire(joinAddress(base, "bin/uploads/" + alphanumericSegment(value)));
}

void checkAddress(const QString& text)
{
    const auto address = parseAddress(text);
    if (!address)
        return;
    checkOnTheWire(address->origin + address->path + address->query);
    require(parseAddress(QString::fromLatin1(joinAddress(*address, "me"))).has_value(), "it can be joined onto");
}

} // namespace

void check(const QByteArray& input)
{
    const QByteArray bytes = input.sliced(1);
    APIError::fromAnswer(300 + static_cast<unsigned char>(input[0]), bytes);
    const QString text = QString::fromUtf8(bytes);
    for (const char* before : {"", "https://host", "http://"})
        checkAddress(before + text);
    checkIdentifier(text);
    checkQueryValue(text);
    methodFrom({.method = "sso", .url = text});
}

} // namespace palvera
