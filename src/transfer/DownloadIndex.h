#pragma once

#include "files/LockFile.h"
#include "transfer/TransferTarget.h"

#include <QString>

#include <optional>
#include <vector>

namespace palvera {

/// What it takes to go on with a download that was cut off. A plain value, known by its key.
struct UnfinishedDownload {
    QString path;   ///< of the file that it writes, or would if the name is free
    QString source; ///< as in the record beside that file
    TransferTarget target;
    QString object;                        ///< key in storage
    std::optional<qint64> listedSize = {}; ///< bytes, as the platform lists them
    QString label = {};
    std::optional<QString> titleName = {};
    std::optional<QString> client = {};  ///< the organisation's name
    std::optional<QString> account = {}; ///< id of the user who began it; nothing where that is not known
    QString service = {};                ///< the service address that it was begun at
    bool isBegun = true;                 ///< it has claimed its file

    /// Its path; of one that has not begun, something else, since others may want that, too.
    QString key() const { return isBegun ? path : path + u'\n' + source; }
    bool operator==(const UnfinishedDownload&) const = default;
};

QByteArray encodeUnfinishedDownload(const UnfinishedDownload& download);
/// Nothing when `bytes` are none.
std::optional<UnfinishedDownload> decodeUnfinishedDownload(const QByteArray& bytes);

/// Which downloads have begun and not come to their ends, one small file each, so that the user need not remember their
/// folders. What is there of them is known by the records beside their files alone. Any thread; blocks on the disk.
class DownloadIndex {
public:
    struct Found {
        UnfinishedDownload download;
        qint64 received = 0; ///< bytes that are on the disk
        qint64 total = 0;    ///< 0 while nobody knows

        bool operator==(const Found&) const = default;
    };

    /// Keeps its files in "Palvera/Downloads" under `applicationSupport`, made on the way, and the locks in
    /// "Palvera/Staging".
    explicit DownloadIndex(const QString& applicationSupport);

    /// Enters a download, in place of one to the same file. Throws FileError: it may go on without, and is only not
    /// listed should it be cut off.
    void save(const UnfinishedDownload& download) const;
    void remove(const QString& path) const;
    /// Has a download outlive the program before anything of it is there, in "Palvera/Waiting downloads". Gives the
    /// lock by which others see that a program has it; nothing while it cannot be had. Throws FileError.
    std::optional<LockFile> saveWaiting(const UnfinishedDownload& download) const;
    void removeWaiting(const UnfinishedDownload& download) const;
    /// Those that no program goes on with at the moment: of which something is there, and that wait for their
    /// beginning. What nothing is left of is forgotten, unless its folder is away.
    std::vector<Found> load() const;
    /// The lock that is held while a download to that file goes, not taken yet. Throws FileError.
    LockFile lockOf(const QString& path) const;

private:
    QString folder() const;
    QString waitingFolder() const;
    QString waitingPathOf(const UnfinishedDownload& download) const;
    QString waitingLockPathOf(const UnfinishedDownload& download) const;
    bool isWaitingInSomeProgram(const UnfinishedDownload& download) const;
    QString stagingFolder() const;

    const QString m_home;
};

} // namespace palvera
