#pragma once

#include "cli/Table.h"
#include "service/AssetRecords.h"
#include "service/BinRecords.h"
#include "service/Organisations.h"
#include "service/SignInRecords.h"
#include "transfer/Journal.h"

#include <QJsonObject>

#include <vector>

namespace palvera::cli {

/// What a command lists: for people as a table, for programs as records with the platform's own keys.
struct Listing {
    QList<Column> columns;
    QString whenEmpty; ///< said to people when there is nothing to list
    QList<QStringList> rows = {};
    QList<QJsonObject> records = {};
};

Listing listingOf(const QList<Org>& orgs);
Listing listingOf(const QList<Project>& projects);
Listing listingOf(const QList<Deliverable>& deliverables);
/// `rows` tell of the deliverables and projects that the files belong to.
Listing listingOf(const QList<OrgAssetFile>& files, const QList<OrgAssetRow>& rows);
/// `folders` are those within `prefix`, the folder that is listed ("" at the top), with their whole path or without.
Listing listingOf(const QString& prefix, const QStringList& folders, const QList<BinObject>& objects);
Listing listingOf(const std::vector<Journal>& journals);

QJsonObject recordOf(const User& user);
QJsonObject recordOf(const TransferTarget& target);
/// Who somebody is, for people.
QString personText(const User& user);
/// Where an upload goes, for people.
QString placeText(const TransferTarget& target);

} // namespace palvera::cli
