#pragma once

#include "service/Deliverable.h"
#include "transfers/StoredObject.h"

#include <QStringList>
#include <QUuid>

namespace palvera {

// What the model of transfers is asked for, and what it asks in turn. Plain values.

/// A file for a deliverable.
struct DeliverableUpload {
    QString file; ///< path
    QString orgId;
    QString projectId;
    Deliverable deliverable;
    QString client = {};    ///< the organisation's name, where it is known
    bool confirmed = false; ///< the user has answered the platform's question about it
};

/// Files for an organisation's Uploads bin.
struct BinUploads {
    QStringList files; ///< paths
    QString orgId;
    QString client = {}; ///< the organisation's name, where it is known
    std::optional<QString> caption = {};
    std::optional<QString> folder = {}; ///< nothing is the bin's top level
};

/// What became of files for the bin.
struct BinUploadsBegun {
    QList<QUuid> items;     ///< of those that were taken, in their order
    QStringList folders;    ///< names of folders, which are left out
    QStringList onTheirWay; ///< names of files that go there already
    QStringList objections; ///< why others are left out, for the user
};

/// A stored file to bring down.
struct Download {
    StoredObject object;
    std::optional<qint64> listedSize = {}; ///< bytes, as the platform lists them; nothing or 0 where it does not
    QString name;                          ///< for the file; only its last component counts
    QString label = {};
    std::optional<QString> titleName = {};
    QString client = {}; ///< the organisation's name, where it is known
    QString folder;      ///< path of an existing folder
};

/// A file that the platform wants confirmed before it takes it.
struct Doubt {
    QUuid id;
    QString message; ///< the platform's, for the user
    QString file;    ///< path of what was to be sent
    QString orgId;
    QString projectId;
    Deliverable deliverable;
    QString client = {};

    bool operator==(const Doubt&) const = default;
};

} // namespace palvera
