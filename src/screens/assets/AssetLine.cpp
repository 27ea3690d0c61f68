#include "screens/assets/AssetLine.h"

#include "files/Quantities.h"
#include "screens/TransferTexts.h"
#include "screens/Wording.h"
#include "text/VisibleText.h"

#include <QObject>
#include <QTimeZone>

namespace palvera {

namespace {

using Kind = AssetLine::Kind;

AssetRow rowOf(const QString& key, AssetLine line)
{
    return {.key = key, .line = std::make_shared<const AssetLine>(std::move(line))};
}

/// What is said where the platform knows no family: the extension, as "MOV".
QString typeOf(const QString& family, const QString& name)
{
    if (!family.isEmpty())
        return familyName(family, capitalisedWords(humanised(family)));
    constexpr qsizetype longest = 5;
    const auto extension = name.section(u'.', 1).section(u'.', -1);
    return extension.isEmpty() || extension.size() > longest ? QObject::tr("File") : extension.toUpper();
}

QString objectionTo(const OrgAssetFile& file, const RowsById& rowsById)
{
    if (file.object.isEmpty())
        return QObject::tr("The platform does not say where this file is stored.");
    if (!rowsById.contains(file.rowId))
        return QObject::tr("The platform does not say on which deliverable this file is.");
    return {};
}

QString dealOf(const OrgAssetRow& row)
{
    QStringList deal{visibleText(row.projectName), visibleText(row.deliverable.label)};
    deal.removeAll(QString());
    return deal.join(QStringLiteral(" · "));
}

QString noteOf(const Item& item)
{
    if (std::holds_alternative<Item::Failed>(item.state) || std::holds_alternative<Item::Retrying>(item.state))
        return plainReason(item.state);
    if (const auto* waiting = std::get_if<Item::Waiting>(&item.state))
        return waitingText(*waiting);
    if (std::holds_alternative<Item::Done>(item.state))
        return QObject::tr("Done");
    if (auto trouble = troubleOf(item); !trouble.isEmpty())
        return trouble;
    const auto what = headlineOf(item);
    return item.total > 0 ? QStringLiteral("%1 %2").arg(what, percentText(percentOf(item.sent, item.total))) : what;
}

} // namespace

QString folderName(const QString& path)
{
    return path.section(u'/', -1, -1, QString::SectionSkipEmpty);
}

AssetRow uploadsRow()
{
    return rowOf(QStringLiteral("uploads"), {.kind = Kind::uploads,
                                             .name = QObject::tr("Uploads"),
                                             .note = QObject::tr("Masters added before a deal exists"),
                                             .symbol = QStringLiteral("tray"),
                                             .tint = QStringLiteral("blue")});
}

AssetRow folderRow(const QString& name, const QString& prefix)
{
    const auto path = name.startsWith(prefix) ? name : prefix + name;
    return rowOf(QStringLiteral("folder:") + path, {.kind = Kind::folder,
                                                    .name = visibleText(folderName(path)),
                                                    .deal = QObject::tr("Uploads"),
                                                    .type = QObject::tr("Folder"),
                                                    .symbol = QStringLiteral("folder.fill"),
                                                    .tint = QStringLiteral("blue"),
                                                    .path = path});
}

AssetRow objectRow(const BinObject& object)
{
    const auto family = object.family.value_or(QString());
    return rowOf(QStringLiteral("file:") + object.key, {.kind = Kind::object,
                                                        .name = visibleText(object.name),
                                                        .deal = QObject::tr("Uploads"),
                                                        .type = typeOf(family, object.name),
                                                        .symbol = familySymbol(family),
                                                        .tint = familyTint(family),
                                                        .bytes = object.size,
                                                        .date = object.updatedDate(),
                                                        .path = object.key});
}

AssetRow fileRow(const OrgAssetFile& file, const RowsById& rowsById)
{
    const auto row = rowsById.value(file.rowId);
    const auto name = file.filename.value_or(QString());
    const auto shown = name.isEmpty() ? folderName(file.object) : name;
    const auto objection = objectionTo(file, rowsById);
    return rowOf(QStringLiteral("file:") + file.key,
                 {.kind = Kind::file,
                  .name = visibleText(shown.isEmpty() ? QObject::tr("A file without a name") : shown),
                  .note = objection,
                  .deal = row ? dealOf(*row) : QString(),
                  .reference = row ? visibleText(row->projectReference.value_or(QString())) : QString(),
                  .type = typeOf(file.family, shown),
                  .symbol = familySymbol(file.family),
                  .tint = familyTint(file.family),
                  .bytes = file.byteSize.value_or(0),
                  .date = file.deliveredDate(),
                  .objection = objection,
                  .file = file,
                  .row = row});
}

AssetRow pendingRow(const Item& item)
{
    return rowOf(QStringLiteral("pending:") + item.id.toString(QUuid::WithoutBraces),
                 {.kind = Kind::pending,
                  .name = visibleText(item.name),
                  .note = noteOf(item),
                  .deal = QObject::tr("Uploads"),
                  .type = typeOf({}, item.name),
                  .symbol = QStringLiteral("arrow.up.circle.fill"),
                  .tint = QStringLiteral("blue"),
                  .bytes = item.total,
                  .item = item});
}

QString momentText(const QDateTime& moment, const QDateTime& now, const QLocale& locale)
{
    const auto local = moment.toTimeZone(now.timeZone());
    const auto time = local.time().toString(QStringLiteral("HH:mm"));
    switch (local.date().daysTo(now.date())) {
    case 0:
        return QObject::tr("Today %1").arg(time);
    case 1:
        return QObject::tr("Yesterday %1").arg(time);
    default:
        return locale.toString(local.date(), QLocale::ShortFormat);
    }
}

} // namespace palvera
