#pragma once

#include "service/Deliverable.h"

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace palvera {

/// One delivered file. All but `key` and `rowId` is read leniently.
struct OrgAssetFile {
    QString key;
    QString rowId;       ///< the `id` of the deliverable against which it was filed
    QString object = {}; ///< the storage object for which one asks for a download address
    std::optional<QString> filename = {};
    std::optional<QString> label = {};
    QString family = {};
    std::optional<qint64> byteSize = {};
    std::optional<QString> deliveredAt = {};

    /// The moment that `deliveredAt` names, where it names one.
    std::optional<QDateTime> deliveredDate() const;

    static OrgAssetFile fromJson(const QJsonObject& object);
    bool operator==(const OrgAssetFile&) const = default;
};

/// A deliverable as it is seen from its organisation: with the project that it belongs to.
struct OrgAssetRow {
    Deliverable deliverable;
    QString projectId;
    QString projectName = {};
    std::optional<QString> projectReference = {};

    static OrgAssetRow fromJson(const QJsonObject& object);
    bool operator==(const OrgAssetRow&) const = default;
};

/// One page of an organisation's delivered files.
struct OrgAssetsPage {
    QList<OrgAssetFile> files;
    QList<OrgAssetRow> rows;
    qint64 total = 0;
    qint64 page = 0; ///< from 1
    qint64 pageSize = 0;

    static OrgAssetsPage fromJson(const QJsonObject& object);
    bool operator==(const OrgAssetsPage&) const = default;
};

struct SignedURL {
    QString url;

    static SignedURL fromJson(const QJsonObject& object);
    bool operator==(const SignedURL&) const = default;
};

} // namespace palvera
