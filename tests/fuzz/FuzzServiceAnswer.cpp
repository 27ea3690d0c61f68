// What the platform says beside its records, and what an address is made of: the first byte chooses the status, the
// rest is the body of an error, an address, an identifier and a query value in turn.

#include "Require.h"

#include "service/APIError.h"
#include "service/Addresses.h"
#include "service/SignInRecords.h"

namespace palvera {
namespace {

void checkError(int status, const QByteArray& body)
{
    const auto error = APIError::fromAnswer(status, body);
    require(error.status() == status, "an error keeps its status");
    const auto composed = QStringLiteral("The platform answered %1.").arg(status);
    require(QJsonDocument::fromJson(body).isObject() || (error.message() == composed && !error.code()),
            "a body that is no object says nothing");
}

void checkOnTheWire(const QByteArray& address)
{
    for (const char byte : address)
        require(byte > 0x20 && byte < 0x7f && byte != '#' && byte != '"', "an address is plain ASCII");
}

void checkIdentifier(const QString& identifier)
{
    const Address base{"https://host", "/api", ""};
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
    checkOnTheWire(joinAddress({"https://host", "/api", ""}, "bin/uploads/" + alphanumericSegment(value)));
}

void checkAddress(const QString& text)
{
    const auto address = parseAddress(text);
    if (!address)
        return;
    checkOnTheWire(address->origin + address->path + address->query);
    require(parseAddress(QString::fromLatin1(joinAddress(*address, "me"))).has_value(),
            "an address can be joined onto");
}

} // namespace
} // namespace palvera

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    using namespace palvera;
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);
    checkError(300 + data[0], bytes);
    const QString text = QString::fromUtf8(bytes);
    checkAddress(text);
    checkAddress("https://host" + text);
    checkAddress("http://" + text);
    checkIdentifier(text);
    checkQueryValue(text);
    methodFrom({.method = "sso", .url = text});
    return 0;
}
