#pragma once

#include "transfer/Journal.h"

#include <QLockFile>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace palvera {

/// The journals of all unfinished uploads: one file each in one folder, replaced as a whole, so that a reader and a
/// crash see either the old one or the next. Any thread; operations block on the disk and report no errors: a journal
/// that cannot be written costs parts sent twice, never the upload.
class JournalStore {
public:
    /// Keeps journals in "Palvera/Uploads" under `applicationSupport`, made on the way. What is not a journal yet, and
    /// the locks, lie in "Palvera/Staging" beside it, where no listing meets them.
    explicit JournalStore(const QString& applicationSupport);

    QString journalFolder() const;
    /// Writes `journal` under its key, over an earlier one. A key that is not a plain file name is refused.
    void saveJournal(const Journal& journal) const;
    void removeJournal(const QString& key) const;
    /// The journal under `key`, unless there is none that reads and decodes.
    std::optional<Journal> loadJournal(const QString& key) const;
    /// Every file of the folder that reads and decodes. Others stay where they are.
    std::vector<Journal> loadJournals() const;

    /// Holds `key` for one run: null while another run, in this process or another that is alive, holds it.
    std::unique_ptr<QLockFile> tryLock(const QString& key) const;

private:
    QString pathOf(const QString& key) const;
    QString stagingFolder() const;

    const QString m_home;
};

/// "SIZE-SECONDS": what tells whether the file at `path` is still the one it was, from its size in bytes and the moment
/// of its last change in whole seconds since 1970-01-01 UTC. "0-0" for a file that cannot be looked at.
QString fileStamp(const QString& path);

} // namespace palvera
