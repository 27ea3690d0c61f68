#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace palvera::local {

/// A file delivered on a row.
struct DeliveredFile {
    QString projectId;
    QString rowId;
    QString object;
    QString filename;
    qint64 bytes = 0;
    QString contentType;
    QString deliveredAt; ///< ISO 8601
};

/// One object of a bin. `key` is its path in the bin.
struct BinEntry {
    QString key;
    qint64 bytes = 0;
    QJsonObject json = {}; ///< as the listing shows it
};

struct ProjectData {
    QString id;
    QJsonObject json;
    QList<QJsonObject> deliverables = {}; ///< loosely typed, as real rows are
};

struct OrganisationData {
    QString id;
    QJsonObject json;
    QList<ProjectData> projects = {};
    QList<DeliveredFile> files = {}; ///< in the order of delivery
    QList<BinEntry> bin = {};
};

/// Organisations with everything in them: the same at every call. Several identifiers hold characters that a path must
/// escape.
QList<OrganisationData> sampleOrganisations();

/// What a delivered file leaves in the `spec` of its row: loosely typed in places.
QJsonObject filedSpec(QJsonObject spec, const DeliveredFile& file);

/// The key in storage of what lies at `key` in the bin of `org`.
QString binStorageKey(const QString& org, const QString& key);

/// The family that the platform sees in a type.
QString familyOf(const QString& contentType);

} // namespace palvera::local
