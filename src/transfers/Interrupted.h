#pragma once

#include "async/Task.h"
#include "service/Account.h"
#include "transfer/DownloadIndex.h"
#include "transfer/JournalStore.h"

#include <QObject>
#include <QPointer>
#include <QSet>

#include <functional>

namespace palvera {

class API;

/// An upload that was cut off.
struct InterruptedUpload {
    Journal journal;
    bool isBegun = true;       ///< else there is nothing of it but the wish
    bool isSourceGone = false; ///< no file is at its path, nor beside it under another name

    bool operator==(const InterruptedUpload&) const = default;
};

using InterruptedDownload = DownloadIndex::Found;

/// What earlier runs and this one left unfinished, of whoever is signed in at the service in use, as of the last
/// reading: but for what is on its way again, here or in another program.
///
/// Lives on the main thread. Its operations are awaited there and outlived by it; disk work happens in the background.
class Interrupted final : public QObject {
    Q_OBJECT

public:
    /// What it works with. Everything referred to outlives it.
    struct Environment {
        Executor disk; ///< a strand: the latest reading comes last
        API& api;
        const JournalStore& journals;
        const DownloadIndex& index;
        std::function<std::optional<Account>()> account = {}; ///< who is signed in; empty where that is not asked
        std::function<bool(const QString& key)> isBusy;       ///< whether the upload of that journal is on its way
    };

    explicit Interrupted(Environment environment);

    const std::vector<InterruptedUpload>& uploads() const { return m_uploads; }
    const std::vector<InterruptedDownload>& downloads() const { return m_downloads; }
    int count() const { return int(m_uploads.size() + m_downloads.size()); }
    /// Null when there is none of that journal key.
    const InterruptedUpload* findUpload(const QString& key) const;
    /// Null when there is none of that key.
    const InterruptedDownload* findDownload(const QString& key) const;
    /// The upload to that deliverable that got furthest; null when there is none.
    const InterruptedUpload* findUploadTo(const QString& deliverableId) const;

    /// Reads again what there is.
    Task<void> load();
    /// Gives up an upload: has the platform drop what it holds of it, and removes the journal, also when the platform
    /// cannot be told. It is not listed from the call on. Cancelling leaves the journal.
    Task<void> discardUpload(QString key);
    /// Removes what there is of a download. It is not listed from the call on. Throws FileError where the file stays.
    Task<void> discardDownload(QString key);
    /// Whether the file at `path` has the size and the time of what the upload was sending.
    Task<bool> isSource(QString key, QString path);
    /// Has the upload go on from the file at `path`. False where that is not what it was sending, or it is on its way.
    /// Throws FileError where the journal cannot be written.
    Task<bool> moveSource(QString key, QString path);

    /// Leaves out what has that key until `show`.
    void hide(const QString& key);
    void show(const QString& key);
    /// Looks anew at who is signed in and what is on its way, without reading.
    void update();
    /// Nothing that was hidden is.
    void showAll();

Q_SIGNALS:
    void changed();
    /// The upload of that journal was given up.
    void discarded(const QString& key);

private:
    static Task<void> read(QPointer<Interrupted> self, Environment environment);
    bool isOurs(const std::optional<QString>& account) const;

    const Environment m_environment;
    QSet<QString> m_hidden;
    // As read.
    std::vector<InterruptedUpload> m_allUploads;
    std::vector<InterruptedDownload> m_allDownloads;
    // Of these, what is listed.
    std::vector<InterruptedUpload> m_uploads;
    std::vector<InterruptedDownload> m_downloads;
};

} // namespace palvera
