#pragma once

#include "files/LockFile.h"
#include "transfer/Journal.h"

#include <QString>

#include <optional>
#include <vector>

namespace palvera {

/// The journals of all unfinished uploads: one file each in one folder, replaced as a whole, so that a reader and a
/// crash see either the old one or the next. Any thread; operations block on the disk.
class JournalStore {
public:
    /// Keeps journals in "Palvera/Uploads" under `applicationSupport`, made on the way. What is not a journal yet, and
    /// the locks, lie in "Palvera/Staging" beside it, where no listing meets them.
    explicit JournalStore(const QString& applicationSupport);

    QString journalFolder() const;
    /// Writes `journal` under its key, over an earlier one. Throws FileError: the upload may go on without, at the cost
    /// of parts that are sent twice.
    void saveJournal(const Journal& journal) const;
    void removeJournal(const QString& key) const;
    /// Moves `journal` to the next free key, its own with "~2" and so on after it, so that another upload may take its
    /// place; there it is listed, resumed and given up like any other. Throws FileError, and then it is where it was.
    void setAside(Journal journal) const;
    /// The journal under `key`, unless there is none that reads and decodes.
    std::optional<Journal> loadJournal(const QString& key) const;
    /// Every file of the folder that reads and decodes, by the names of the files: in the same order each time. Others
    /// stay where they are.
    std::vector<Journal> loadJournals() const;

    // Uploads that have not begun, so that they are not forgotten with the program. Each is a journal of one part and
    // of no multipart upload, in "Palvera/Waiting"; it says nothing once there is a journal under its key.

    void saveWaiting(const Journal& journal) const;
    void removeWaiting(const QString& key) const;
    std::optional<Journal> loadWaiting(const QString& key) const;
    std::vector<Journal> loadAllWaiting() const;

    /// The lock that a run of the upload `key` holds, not taken yet. Throws FileError where none can be made.
    LockFile lockOf(const QString& key) const;
    /// Whether a run of it goes, in this process or another.
    bool isRunning(const QString& key) const;

private:
    QString waitingFolder() const;
    QString pathOf(const QString& key) const;
    QString lockPathOf(const QString& key) const;
    QString stagingFolder() const;

    const QString m_home;
};

} // namespace palvera
