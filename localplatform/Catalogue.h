#pragma once

#include "localplatform/ByteStore.h"
#include "localplatform/Routes.h"
#include "localplatform/SampleData.h"

namespace palvera::local {

/// The organisations with their projects, rows, delivered files and bins, and the answers of browsing them.
/// One thread at a time.
class Catalogue {
public:
    Catalogue();

    Reply orgs() const;
    Reply projects(const Call& call) const;
    Reply deliverables(const Call& call) const;
    Reply assetFiles(const Call& call) const;
    Reply bin(const Call& call) const;

    /// The key in storage of what the call downloads. Refuses when there is none.
    QString binObject(const Call& call) const;
    QString rowObject(const Call& call) const;

    /// Refuses an organisation, or a row, that there is not.
    void checkOrg(const QString& org) const;
    void checkRow(const QString& org, const QString& project, const QString& row) const;
    bool holdsBinKey(const QString& org, const QString& key) const;

    /// Puts a file on its row, in the place of an earlier one.
    void deliver(const QString& org, const DeliveredFile& file);
    void addToBin(const QString& org, const QString& key, const QString& contentType, qint64 bytes,
                  const QString& when);

    /// The bytes of a sample file; null for anything else.
    std::shared_ptr<const StoredObject> sample(const QString& key) const;

private:
    const OrganisationData& org(const QString& id) const;
    const ProjectData& project(const OrganisationData& org, const QString& id) const;

    QList<OrganisationData> m_orgs;
    QHash<QString, qint64> m_samples; // sizes by object key
};

} // namespace palvera::local
