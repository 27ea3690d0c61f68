#include "localplatform/SampleData.h"

#include <QDateTime>
#include <QJsonArray>

namespace palvera::local {

namespace {

struct Kind {
    const char* family;
    const char* kind;
    const char* label;
    const char* suffix;
    const char* contentType;
};

constexpr Kind kinds[] = {
    {"video", "picture_master", "Picture master", "mov", "video/quicktime"},
    {"video", "textless_elements", "Textless elements", "mov", "video/quicktime"},
    {"video", "trailer", "Trailer", "mp4", "video/mp4"},
    {"audio", "stereo_mix", "Stereo mix", "wav", "audio/x-wav"},
    {"audio", "surround_mix", "5.1 surround mix", "wav", "audio/x-wav"},
    {"audio", "music_and_effects", "Music and effects", "wav", "audio/x-wav"},
    {"audio", "ad_mix", "Audio description", "wav", "audio/x-wav"},
    {"subtitles", "full_subtitles", "Full subtitles", "srt", "application/x-subrip"},
    {"subtitles", "sdh_subtitles", "Subtitles for the deaf and hard of hearing", "vtt", "text/vtt"},
    {"subtitles", "forced_narrative", "Forced narrative", "srt", "application/x-subrip"},
    {"artwork", "key_art", "Key art", "png", "image/png"},
    {"artwork", "stills", "Stills", "zip", "application/zip"},
    {"documents", "qc_report", "QC report", "pdf", "application/pdf"},
    {"documents", "music_cue_sheet", "Music cue sheet", "pdf", "application/pdf"},
    {"metadata", "episode_metadata", "Episode metadata", "json", "application/json"},
    {"immersive", "atmos_bed", "Atmos bed", "mxf", "application/mxf"},
};
constexpr const char* statuses[] = {"awaiting",  "in_progress", "In_progress",       "delivered",
                                    "qc_failed", "approved",    "re-delivery needed"};
constexpr const char* languages[] = {"en", "fr", "de", "es-419", "ja", "pt-BR", "is", "cy"};
constexpr const char* territories[] = {"GB", "US", "FR", "Worldwide"};
constexpr const char* episodeNames[] = {"The Harbour Bell", "Slack Water", "Undertow", "What the Tide Left",
                                        "Café on the Quay", "Neap",        "Spring",   "The Long Way Out"};

QString latin(const char* text)
{
    return QString::fromUtf8(text);
}

QString pick(const auto& choices, int index)
{
    return latin(choices[static_cast<std::size_t>(index) % std::size(choices)]);
}

QString isoTime(int hoursAgo, int index)
{
    auto moment = QDateTime(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC).addSecs(-3600LL * hoursAgo);
    return moment.toString(index % 3 == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}

/// Identifiers that a careless client would break a path with.
QString rowId(const QString& project, int index)
{
    if (index == 1)
        return project + QStringLiteral(" row 2 of many");
    if (index == 2)
        return QStringLiteral("row/3%25 of ") + project.left(4) + QStringLiteral("?#x");
    return project + QStringLiteral("-row-") + QString::number(index + 1);
}

void addSeries(QJsonObject& row, int index)
{
    int episode = index / 16 % 9;
    row[QStringLiteral("showName")] = QStringLiteral("The Long Tide");
    if (episode == 8) {
        row[QStringLiteral("level")] = QStringLiteral("season");
        row[QStringLiteral("seasonNumber")] = index / 144;
        return;
    }
    row[QStringLiteral("level")] = QStringLiteral("episode");
    row[QStringLiteral("titleName")] = episode == 6 ? QStringLiteral("The Long Tide") : pick(episodeNames, episode);
    row[QStringLiteral("episodeNumber")] = episode + 1;
    if (index % 11 == 0)
        row[QStringLiteral("seasonNumber")] = QStringLiteral("2"); // text where a number belongs
    else
        row[QStringLiteral("seasonNumber")] = index / 144;
    if (index % 7 == 0) {
        row[QStringLiteral("episodeNumber")] = QJsonValue::Null;
        row[QStringLiteral("episodeCode")] = QStringLiteral("LT%1").arg(100 + episode);
    }
}

void addFilm(QJsonObject& row, const QString& title, int index)
{
    row[QStringLiteral("titleName")] = title;
    if (index % 3 != 0)
        row[QStringLiteral("level")] = QStringLiteral("feature");
}

/// Rows that lack what is optional and hold what is oddly typed.
void roughen(QJsonObject& row, int index)
{
    if (index % 13 == 0)
        row[QStringLiteral("territory")] = QJsonValue::Null;
    if (index % 17 == 0)
        row[QStringLiteral("purpose")] = 7;
    if (index % 19 == 0)
        row.remove(QStringLiteral("language"));
    if (index % 23 == 5)
        row[QStringLiteral("spec")] = QStringLiteral("see the sheet");
    if (index == 40)
        row = {{QStringLiteral("id"), row[QStringLiteral("id")]}};
}

QJsonObject expectedSpec(const Kind& kind, int index)
{
    QJsonObject spec{{QStringLiteral("codec"), latin(kind.suffix)}, {QStringLiteral("frameRate"), 23.976}};
    if (index % 4 == 0)
        spec[QStringLiteral("assetBytes")] = QString::number(734'003'200LL + index * 1'048'577LL);
    if (index % 6 == 0)
        spec[QStringLiteral("notes")] = QJsonValue::Null;
    if (index % 9 == 0)
        spec[QStringLiteral("channels")] = QJsonArray{1, 2};
    return spec;
}

QJsonObject makeRow(const ProjectData& project, const QString& title, bool series, int index)
{
    const auto& kind = kinds[static_cast<std::size_t>(index) % std::size(kinds)];
    bool textless = QByteArrayView(kind.kind) == "textless_elements";
    QJsonObject row{{QStringLiteral("id"), rowId(project.id, index)},
                    {QStringLiteral("family"), latin(kind.family)},
                    {QStringLiteral("kind"), latin(kind.kind)},
                    {QStringLiteral("label"), latin(kind.label)},
                    {QStringLiteral("status"), pick(statuses, index * 5 + index / 7)},
                    {QStringLiteral("language"), textless ? QStringLiteral("zxx") : pick(languages, index / 3)},
                    {QStringLiteral("territory"), pick(territories, index / 5)},
                    {QStringLiteral("purpose"), QStringLiteral("delivery")},
                    {QStringLiteral("spec"), expectedSpec(kind, index)}};
    if (series)
        addSeries(row, index);
    else
        addFilm(row, title, index);
    roughen(row, index);
    return row;
}

/// Every third row has a file, the picture masters among them of some tens of megabytes.
std::optional<DeliveredFile> sampleFile(const OrganisationData& org, const ProjectData& project, int index)
{
    if (index % 3 != 0 || index == 0 || index % 23 == 5)
        return std::nullopt;
    const auto& kind = kinds[static_cast<std::size_t>(index) % std::size(kinds)];
    auto number = QString::number(index);
    auto name = project.id.left(6).replace(u'/', u'_') + u'_' + number + QStringLiteral(" v") +
                QString::number(index % 4 + 1) + u'.' + latin(kind.suffix);
    bool large = latin(kind.family) == QStringLiteral("video");
    return DeliveredFile{.projectId = project.id,
                         .rowId = project.deliverables[index][QStringLiteral("id")].toString(),
                         .object =
                             QStringList{QStringLiteral("deliveries"), org.id, project.id, number, name}.join(u'/'),
                         .filename = name,
                         .bytes = large ? 70'000'000LL + index * 100'003LL : 40'000LL + index * 7'919LL,
                         .contentType = latin(kind.contentType),
                         .deliveredAt = isoTime(4000 - index, index)};
}

void addProject(OrganisationData& org, const QString& id, const QString& name, int rows, bool series)
{
    ProjectData project{.id = id, .json = {{QStringLiteral("id"), id}, {QStringLiteral("name"), name}}};
    if (rows % 2 == 0)
        project.json[QStringLiteral("reference")] = QStringLiteral("PRJ-%1").arg(1000 + rows);
    project.json[QStringLiteral("status")] = rows > 100 ? QJsonValue(QStringLiteral("active")) : QJsonValue::Null;
    for (int i = 0; i < rows; ++i)
        project.deliverables.append(makeRow(project, name, series, i));
    for (int i = 0; i < rows; ++i)
        if (auto file = sampleFile(org, project, i)) {
            auto& row = project.deliverables[i];
            row[QStringLiteral("spec")] = filedSpec(row[QStringLiteral("spec")].toObject(), *file);
            org.files.append(*file);
        }
    org.projects.append(project);
}

void addBinEntry(OrganisationData& org, const QString& key, int index)
{
    const auto& kind = kinds[static_cast<std::size_t>(index) % 7];
    BinEntry entry{.key = key, .bytes = 100'000 + index * 65'537LL};
    entry.json = {{QStringLiteral("key"), key}, {QStringLiteral("size"), entry.bytes}};
    if (index % 5 == 1)
        entry.json[QStringLiteral("size")] = QString::number(entry.bytes);
    if (index % 4 != 2)
        entry.json[QStringLiteral("name")] = key.section(u'/', -1);
    if (index % 6 != 3)
        entry.json[QStringLiteral("contentType")] = latin(kind.contentType);
    entry.json[QStringLiteral("updatedAt")] = index % 8 == 4 ? QJsonValue(17) : QJsonValue(isoTime(index * 3, index));
    entry.json[QStringLiteral("family")] = index % 7 == 5 ? QJsonValue::Null : QJsonValue(latin(kind.family));
    org.bin.append(entry);
}

void fillBin(OrganisationData& org)
{
    for (int i = 0; i < 230; ++i)
        addBinEntry(org, QStringLiteral("Reel %1 of 230.mov").arg(i + 1, 3, 10, QLatin1Char('0')), i);
    for (int i = 0; i < 12; ++i)
        addBinEntry(org, QStringLiteral("Rushes 2025/Day %1.mov").arg(i + 1), i);
    for (int i = 0; i < 5; ++i)
        addBinEntry(org, QStringLiteral("Rushes 2025/Second unit & pick-ups/Take %1 100%.mov").arg(i + 1), i);
    addBinEntry(org, QStringLiteral("Örvar's films/Ævintýri #1?.mov"), 3);
}

OrganisationData organisation(const QString& id, const QString& name, const QString& slug)
{
    OrganisationData org{.id = id, .json = {{QStringLiteral("id"), id}, {QStringLiteral("name"), name}}};
    if (!slug.isEmpty())
        org.json[QStringLiteral("slug")] = slug;
    return org;
}

} // namespace

QJsonObject filedSpec(QJsonObject spec, const DeliveredFile& file)
{
    spec[QStringLiteral("assetObject")] = file.object;
    spec[QStringLiteral("assetFilename")] = file.filename;
    spec[QStringLiteral("assetBytes")] = QString::number(file.bytes);
    spec[QStringLiteral("assetType")] = file.contentType;
    if (file.contentType.startsWith(QStringLiteral("video/"))) {
        spec[QStringLiteral("assetDuration")] = QStringLiteral("5412.04");
        spec[QStringLiteral("assetWidth")] = QStringLiteral("3840");
        spec[QStringLiteral("assetHeight")] = QStringLiteral("2160");
        spec[QStringLiteral("assetChecked")] = true; // no text: readers leave it out
    }
    return spec;
}

QString binStorageKey(const QString& org, const QString& key)
{
    return QStringLiteral("bins/") + org + u'/' + key;
}

QString familyOf(const QString& contentType)
{
    for (const auto& kind : kinds)
        if (contentType == latin(kind.contentType))
            return latin(kind.family);
    auto family = contentType.section(u'/', 0, 0);
    if (family == QStringLiteral("image"))
        return QStringLiteral("artwork");
    return family == QStringLiteral("video") || family == QStringLiteral("audio") ? family
                                                                                  : QStringLiteral("documents");
}

QList<OrganisationData> sampleOrganisations()
{
    auto northlight = organisation(QStringLiteral("org-northlight"), QStringLiteral("Northlight Pictures"),
                                   QStringLiteral("northlight"));
    addProject(northlight, QStringLiteral("long-tide"), QStringLiteral("The Long Tide"), 432, true);
    addProject(northlight, QStringLiteral("paper-moon"), QStringLiteral("Paper Moon Rising"), 48, false);
    addProject(northlight, QStringLiteral("salt"), QStringLiteral("Salt"), 21, false);
    addProject(northlight, QStringLiteral("blank"), QStringLiteral("Not yet begun"), 0, false);
    fillBin(northlight);
    auto harbour = organisation(QStringLiteral("org harbour"), QStringLiteral("Harbour & Vale"), {});
    addProject(harbour, QStringLiteral("spring slate"), QStringLiteral("Spring Slate"), 64, false);
    auto kestrel = organisation(QStringLiteral("kestrel%41/7?b#c"), QStringLiteral("Kestrel Film Group"),
                                QStringLiteral("kestrel"));
    addProject(kestrel, QStringLiteral("p/100%?#1"), QStringLiteral("One Hundred Percent"), 30, false);
    auto empty = organisation(QStringLiteral("org-quiet"), QStringLiteral("Quiet Valley Films"), {});
    return {northlight, harbour, kestrel, empty};
}

} // namespace palvera::local
