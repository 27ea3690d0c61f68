#include "screens/assets/AssetRules.h"

#include "screens/Wording.h"

#include <QObject>

#include <algorithm>

namespace palvera {

using namespace std::chrono_literals;

namespace {

QString withoutSlash(QString folder)
{
    while (folder.endsWith(u'/'))
        folder.chop(1);
    return folder;
}

} // namespace

AssetsMessage emptyMessage(const AssetsQuery& query)
{
    if (query.place == AssetsPlace::uploads) {
        if (query.search.isEmpty())
            return {.icon = QStringLiteral("tray"),
                    .title = QObject::tr("Nothing in Uploads yet"),
                    .detail =
                        QObject::tr("Drop master files here, or choose Upload. They can be added to projects later.")};
        return {.icon = QStringLiteral("tray"),
                .title = QObject::tr("Nothing matches"),
                .detail = QObject::tr("Try another word, or clear the search.")};
    }
    if (query.search.isEmpty() && query.family.isEmpty())
        return {.icon = QStringLiteral("shippingbox"),
                .title = QObject::tr("Nothing delivered yet"),
                .detail = QObject::tr("Files delivered on the organisation's projects appear here. Masters added "
                                      "before a deal exists live under Uploads.")};
    return {.icon = QStringLiteral("shippingbox"),
            .title = QObject::tr("Nothing matches"),
            .detail = QObject::tr("Try another word or kind, or clear the search.")};
}

bool showsUploads(const AssetsQuery& query)
{
    return query.place == AssetsPlace::files && query.search.isEmpty() && query.family.isEmpty();
}

std::optional<AssetsQuery> placeBefore(const AssetsQuery& query)
{
    if (query.place == AssetsPlace::files)
        return {};
    if (query.prefix.isEmpty())
        return AssetsQuery{};
    return AssetsQuery{.place = AssetsPlace::uploads};
}

QString downloadText(int count)
{
    return count < 2 ? QObject::tr("Download") : QObject::tr("Download %n files", nullptr, count);
}

QString dropText(const QString& prefix)
{
    return QObject::tr("Drop to add to %1").arg(prefix.isEmpty() ? QObject::tr("Uploads") : folderName(prefix));
}

QString leftOutText(const BinUploadsBegun& begun)
{
    QStringList said;
    const auto& [items, folders, onTheirWay, objections] = begun;
    if (folders.size() == 1)
        said.append(QObject::tr("1 folder was left out: only files can be added. %1").arg(namesText(folders)));
    else if (!folders.isEmpty())
        said.append(QObject::tr("%n folders were left out: only files can be added. %1", nullptr, int(folders.size()))
                        .arg(namesText(folders)));
    if (onTheirWay.size() == 1)
        said.append(QObject::tr("%1 is on its way already.").arg(namesText(onTheirWay)));
    else if (!onTheirWay.isEmpty())
        said.append(QObject::tr("%n files are on their way already. %1", nullptr, int(onTheirWay.size()))
                        .arg(namesText(onTheirWay)));
    said.append(objections);
    return said.join(u'\n');
}

bool isUploadTo(const AssetsQuery& query, const Item& item)
{
    const auto* bin = item.target.asBin();
    if (item.kind != Item::Kind::upload || (bin != nullptr) != (query.place == AssetsPlace::uploads))
        return false;
    return !bin || withoutSlash(bin->folder.value_or(QString())) == withoutSlash(query.prefix);
}

QList<AssetRow> pendingRows(const std::vector<Item>& items, const QString& orgId, const AssetsQuery& query,
                            const QSet<QUuid>& awaited)
{
    QList<AssetRow> rows;
    if (query.place != AssetsPlace::uploads)
        return rows;
    QSet<QString> begunAgain;
    for (auto item = items.rbegin(); item != items.rend(); ++item) { // the latest attempt at a file speaks for it
        if (item->target.orgId() != orgId || !isUploadTo(query, *item))
            continue;
        const auto key = item->journalKey.value_or(QString());
        const bool hasFailed = std::holds_alternative<Item::Failed>(item->state);
        const bool isShown = item->isInFlight() || (hasFailed && !begunAgain.contains(key)) ||
                             (std::holds_alternative<Item::Done>(item->state) && awaited.contains(item->id));
        begunAgain.insert(key);
        if (isShown && item->name.contains(query.search, Qt::CaseInsensitive))
            rows.append(pendingRow(*item));
    }
    std::ranges::reverse(rows);
    return rows;
}

void RenewalPlan::noteArrival(Clock::Moment now)
{
    constexpr auto interval = 2s;
    m_late = now + 20s;
    if (!m_soon)
        m_soon = m_last ? std::max(now + 500ms, *m_last + interval) : now + 500ms;
}

std::optional<Clock::Moment> RenewalPlan::next() const
{
    return m_soon ? m_soon : m_late;
}

void RenewalPlan::noteRenewal(Clock::Moment now)
{
    m_last = now;
    m_soon.reset();
    if (m_late && *m_late <= now)
        m_late.reset();
}

} // namespace palvera
