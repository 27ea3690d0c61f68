#include "installer/Manifest.h"

#include "installer/Refused.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace palvera::installer {

namespace {

constexpr qint64 largestPayload = 1LL << 30;  // bytes
constexpr qint64 largestUnpacked = 4LL << 30; // bytes
constexpr qint64 mostFiles = 100'000;
constexpr qsizetype longestVersion = 64; // characters
constexpr qsizetype hashDigits = 64;

[[noreturn]] void refuse()
{
    throw Refused{Refusal::damaged};
}

QString requireText(const QJsonObject& object, QLatin1StringView name)
{
    const auto value = object[name];
    if (!value.isString() || value.toString().isEmpty())
        refuse();
    return value.toString();
}

qint64 requireNumber(const QJsonObject& object, QLatin1StringView name, qint64 most)
{
    const auto number = object[name].toInteger(0); // what is no whole number is out of range as well
    if (number < 1 || number > most)
        refuse();
    return number;
}

bool isVersion(const QString& text)
{
    const auto characters = text.toUcs4();
    return characters.size() <= longestVersion &&
           std::ranges::all_of(characters, [](char32_t each) { return QChar::isPrint(each); });
}

QByteArray requireHash(const QJsonObject& object, QLatin1StringView name)
{
    const auto text = requireText(object, name);
    const bool isHex = std::ranges::all_of(text, [](QChar each) {
        return (each >= u'0' && each <= u'9') || (each >= u'a' && each <= u'f') || (each >= u'A' && each <= u'F');
    });
    if (text.size() != hashDigits || !isHex)
        refuse();
    return QByteArray::fromHex(text.toLatin1());
}

} // namespace

std::optional<qint64> buildNumber(QByteArrayView text)
{
    bool isNumber = false;
    const auto number = text.toLongLong(&isNumber);
    if (!isNumber || number < 1 || QByteArray::number(number) != text)
        return std::nullopt;
    return number;
}

Manifest readManifest(const QByteArray& text)
{
    using namespace Qt::StringLiterals;
    const auto document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        refuse();
    const auto object = document.object();
    Manifest manifest{.product = requireText(object, "product"_L1),
                      .system = requireText(object, "system"_L1),
                      .version = requireText(object, "version"_L1),
                      .size = requireNumber(object, "size"_L1, largestPayload),
                      .sha256 = requireHash(object, "sha256"_L1),
                      .unpackedSize = requireNumber(object, "unpackedSize"_L1, largestUnpacked),
                      .files = requireNumber(object, "files"_L1, mostFiles),
                      .text = text};
    const auto build = buildNumber(requireText(object, "build"_L1).toUtf8());
    if (!build || !isVersion(manifest.version))
        refuse();
    manifest.build = *build;
    return manifest;
}

} // namespace palvera::installer
