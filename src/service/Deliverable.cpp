#include "service/Deliverable.h"

#include "service/JsonReader.h"
#include "service/OptionalHash.h"

#include <QObject>
#include <QStringList>

namespace palvera {

namespace {

std::optional<QMap<QString, QString>> textsUnder(const JsonReader& reader, const QString& key)
{
    const auto object = reader.lenient<QJsonObject>(key);
    return object ? std::optional(json::textsOf(*object)) : std::nullopt;
}

QJsonObject toObject(const QMap<QString, QString>& texts)
{
    QJsonObject object;
    for (auto text = texts.begin(); text != texts.end(); ++text)
        object.insert(text.key(), text.value());
    return object;
}

/// Where an episode stands in its show; season 0 holds a show's extras.
std::optional<QString> episodePlace(const Deliverable& row)
{
    if (row.seasonNumber == 0)
        return QObject::tr("Extras");
    if (row.seasonNumber && row.episodeNumber)
        return QObject::tr("S%1 E%2").arg(*row.seasonNumber).arg(*row.episodeNumber);
    return row.episodeCode;
}

std::optional<QString> seasonPlace(const Deliverable& row)
{
    if (row.seasonNumber == 0)
        return QObject::tr("Extras");
    if (row.seasonNumber)
        return QObject::tr("Season %1").arg(*row.seasonNumber);
    return {};
}

} // namespace

std::optional<QString> Deliverable::contextLine() const
{
    const auto& show = showName ? showName : titleName;
    const bool isEpisode = level == u"episode";
    if (!isEpisode && level != u"season")
        return titleName ? titleName : show;

    QStringList items;
    if (show)
        items.append(*show);
    if (const auto place = isEpisode ? episodePlace(*this) : seasonPlace(*this))
        items.append(*place);
    if (isEpisode && titleName && titleName != show)
        items.append(*titleName);
    return items.isEmpty() ? std::nullopt : std::optional(items.join(QStringLiteral(" · ")));
}

QString Deliverable::assetObject() const
{
    return spec ? spec->value(QStringLiteral("assetObject")) : QString();
}

std::optional<qint64> Deliverable::expectedBytes() const
{
    return spec ? json::parseInteger(spec->value(QStringLiteral("assetBytes"))) : std::nullopt;
}

QJsonObject Deliverable::toJson() const
{
    QJsonObject object{{"id", id}, {"family", family}, {"kind", kind}, {"label", label}, {"status", status}};
    json::put(object, "language", language);
    json::put(object, "territory", territory);
    json::put(object, "purpose", purpose);
    json::put(object, "titleName", titleName);
    json::put(object, "episodeCode", episodeCode);
    json::put(object, "showName", showName);
    json::put(object, "level", level);
    json::put(object, "seasonNumber", seasonNumber);
    json::put(object, "episodeNumber", episodeNumber);
    if (spec)
        object.insert("spec", toObject(*spec));
    return object;
}

Deliverable Deliverable::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.id = reader.required<QString>("id"),
            .family = reader.textOrEmpty("family"),
            .kind = reader.textOrEmpty("kind"),
            .label = reader.textOrEmpty("label"),
            .status = reader.textOrEmpty("status"),
            .language = reader.lenient<QString>("language"),
            .territory = reader.lenient<QString>("territory"),
            .purpose = reader.lenient<QString>("purpose"),
            .titleName = reader.lenient<QString>("titleName"),
            .episodeCode = reader.lenient<QString>("episodeCode"),
            .showName = reader.lenient<QString>("showName"),
            .level = reader.lenient<QString>("level"),
            .seasonNumber = reader.lenient<qint64>("seasonNumber"),
            .episodeNumber = reader.lenient<qint64>("episodeNumber"),
            .spec = textsUnder(reader, "spec")};
}

std::size_t qHash(const Deliverable& row, std::size_t seed) noexcept
{
    const auto specHash = row.spec ? qHashMulti(1, row.spec->keys(), row.spec->values()) : 0;
    return qHashMulti(seed, row.id, row.family, row.kind, row.label, row.status, hashOf(row.language),
                      hashOf(row.territory), hashOf(row.purpose), hashOf(row.titleName), hashOf(row.episodeCode),
                      hashOf(row.showName), hashOf(row.level), hashOf(row.seasonNumber), hashOf(row.episodeNumber),
                      specHash);
}

Deliverables Deliverables::fromJson(const QJsonObject& object)
{
    return {.deliverables = JsonReader(object).required<QList<Deliverable>>("deliverables")};
}

} // namespace palvera
