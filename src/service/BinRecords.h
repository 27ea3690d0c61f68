#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace palvera {

/// One object in an organisation's Uploads bin. All but `key` is read leniently.
struct BinObject {
    QString key;     ///< the storage key: its full path in the bin
    QString name;    ///< the last component of `key` unless the platform names it
    qint64 size = 0; ///< bytes; 0 when unknown
    std::optional<QString> contentType = {};
    std::optional<QString> updatedAt = {};
    std::optional<QString> family = {};
    std::optional<QString> previewUrl = {};

    /// The moment that `updatedAt` names, where it names one.
    std::optional<QDateTime> updatedDate() const;

    static BinObject fromJson(const QJsonObject& object);
    bool operator==(const BinObject&) const = default;
};

/// One page of the bin.
struct BinPage {
    QList<BinObject> objects;
    std::optional<QList<QString>> folders = {};
    std::optional<QString> nextCursor = {}; ///< nothing on the last page

    static BinPage fromJson(const QJsonObject& object);
    bool operator==(const BinPage&) const = default;
};

/// A signed download of one object of the bin.
struct BinDownload {
    QString url;
    std::optional<QString> filename = {};
    std::optional<qint64> expiresInSeconds = {};

    static BinDownload fromJson(const QJsonObject& object);
    bool operator==(const BinDownload&) const = default;
};

} // namespace palvera
