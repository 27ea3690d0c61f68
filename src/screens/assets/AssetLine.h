#pragma once

#include "service/AssetRecords.h"
#include "service/BinRecords.h"
#include "transfers/Item.h"

#include <QHash>
#include <QLocale>

#include <memory>

namespace palvera {

/// The deliverables of delivered files, by id.
using RowsById = QHash<QString, std::shared_ptr<const OrgAssetRow>>;

/// What one line of the table of assets shows and stands for. Never changes once it is made, which may be on any
/// thread.
struct AssetLine {
    enum class Kind {
        uploads, ///< the way into the bin
        folder,  ///< of the bin
        object,  ///< of the bin
        file,    ///< delivered
        pending, ///< on its way into the bin
    };

    Kind kind = Kind::uploads;
    QString name = {};      ///< in one line, without what nobody sees
    QString note = {};      ///< a second line
    QString deal = {};      ///< what it was delivered on
    QString reference = {}; ///< of the project
    QString type = {};
    QString symbol = {};
    QString tint = {};
    qint64 bytes = 0;                   ///< 0 where nobody says
    std::optional<QDateTime> date = {}; ///< in UTC
    QString objection = {};             ///< why it cannot be downloaded, where it could be expected to
    QString path = {};                  ///< of a folder; the storage key of an object
    std::optional<OrgAssetFile> file = {};
    std::shared_ptr<const OrgAssetRow> row = {}; ///< of a delivered file, where it is known
    std::optional<Item> item = {};               ///< of what is on its way

    /// Whether it can be opened.
    bool isPlace() const { return kind == Kind::uploads || kind == Kind::folder; }
    /// Whether it can be selected.
    bool isSelectable() const { return kind != Kind::pending && objection.isEmpty(); }
    /// Whether it can be downloaded.
    bool isStored() const { return (kind == Kind::object || kind == Kind::file) && objection.isEmpty(); }

    bool operator==(const AssetLine&) const = default;
};

/// A line of the table, by the identity that it keeps when the list is loaded again.
struct AssetRow {
    QString key;
    std::shared_ptr<const AssetLine> line;

    bool operator==(const AssetRow& other) const
    {
        return key == other.key && (line == other.line || *line == *other.line);
    }
};

/// "uploads".
AssetRow uploadsRow();
/// "folder:" and the path. `name` is as the platform lists it below `prefix`, with or without that.
AssetRow folderRow(const QString& name, const QString& prefix);
/// "file:" and the key.
AssetRow objectRow(const BinObject& object);
/// "file:" and the key.
AssetRow fileRow(const OrgAssetFile& file, const RowsById& rowsById);
/// "pending:" and the item's id.
AssetRow pendingRow(const Item& item);

/// The last component of a path in the bin, which may end in "/".
QString folderName(const QString& path);
/// "Today 14:02", "Yesterday 09:10", else the day as `locale` writes it short. `now` has the user's time zone.
QString momentText(const QDateTime& moment, const QDateTime& now, const QLocale& locale);

} // namespace palvera
