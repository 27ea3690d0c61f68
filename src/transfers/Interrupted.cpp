#include "transfers/Interrupted.h"

#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Bookmark.h"
#include "files/FileError.h"
#include "files/SourcePath.h"
#include "service/API.h"
#include "transfer/DownloadPlace.h"
#include "transfer/ResumeRules.h"
#include "transfers/DiscardUpload.h"

namespace palvera {

namespace {

bool isGone(const Journal& journal)
{
    const auto found = journal.bookmark ? bookmark::resolve(*journal.bookmark) : std::nullopt;
    return !statusOf(found ? found->path : journal.filePath);
}

bool isOf(const Journal& journal, const QString& path)
{
    const auto identity = identityOf(path);
    return identity && identity->size == journal.byteSize && fileStamp(*identity) == journal.fileStamp;
}

std::optional<Journal> journalOf(const JournalStore& journals, const QString& key)
{
    auto journal = journals.loadJournal(key);
    return journal ? journal : journals.loadWaiting(key);
}

template <class List>
auto findIn(const List& list, auto&& matches)
{
    const auto found = std::ranges::find_if(list, matches);
    return found == list.end() ? nullptr : &*found;
}

} // namespace

Interrupted::Interrupted(Environment environment) : m_environment(std::move(environment)) {}

const InterruptedUpload* Interrupted::findUpload(const QString& key) const
{
    return findIn(m_uploads, [&](const auto& upload) { return upload.journal.key == key; });
}

const InterruptedDownload* Interrupted::findDownload(const QString& key) const
{
    return findIn(m_downloads, [&](const auto& found) { return found.download.key() == key; });
}

const InterruptedUpload* Interrupted::findUploadTo(const QString& deliverableId) const
{
    const InterruptedUpload* furthest = nullptr;
    for (const auto& upload : m_uploads) {
        const auto to = upload.journal.destination();
        const bool isThere = to.asDeliverable() && to.asDeliverable()->deliverableId == deliverableId;
        if (isThere && (!furthest || upload.journal.done.size() > furthest->journal.done.size()))
            furthest = &upload;
    }
    return furthest;
}

Task<void> Interrupted::load()
{
    return read(this, m_environment);
}

/// The files that are sent last: one that lies on a network may keep whoever looks for it waiting.
Task<void> Interrupted::read(QPointer<Interrupted> self, Environment environment)
{
    std::vector<InterruptedUpload> uploads;
    std::vector<InterruptedDownload> downloads;
    const auto service = QString::fromUtf8(environment.api.makeURL(QString()));
    co_await callOn(environment.disk, [&] {
        for (auto& journal : environment.journals.loadJournals())
            if (journal.service.value_or(service) == service && !environment.journals.isRunning(journal.key))
                uploads.push_back({.journal = std::move(journal)});
        for (auto& journal : environment.journals.loadAllWaiting())
            if (journal.service.value_or(service) == service && !environment.journals.isRunning(journal.key) &&
                !environment.journals.loadJournal(journal.key))
                uploads.push_back({.journal = std::move(journal), .isBegun = false});
        downloads = environment.index.load();
        std::erase_if(downloads, [&](const auto& found) { return found.download.service != service; });
    });
    if (!self)
        co_return;
    for (auto& upload : uploads) {
        const auto* known =
            findIn(self->m_allUploads, [&](const auto& earlier) { return earlier.journal.key == upload.journal.key; });
        upload.isSourceGone = known && known->isSourceGone;
    }
    self->m_allUploads = uploads;
    self->m_allDownloads = std::move(downloads);
    self->update();
    co_await callOn(environment.disk, [&] {
        for (auto& upload : uploads)
            upload.isSourceGone = isGone(upload.journal);
    });
    if (!self)
        co_return;
    self->m_allUploads = std::move(uploads);
    self->update();
}

bool Interrupted::isOurs(const std::optional<QString>& account) const
{
    if (!m_environment.account)
        return true;
    const auto now = m_environment.account();
    return now && (!account || account == now->userId);
}

void Interrupted::update()
{
    auto uploads = m_allUploads;
    std::erase_if(uploads, [this](const InterruptedUpload& upload) {
        const auto& journal = upload.journal;
        return !isOurs(journal.account) || m_hidden.contains(journal.key) || m_environment.isBusy(journal.key);
    });
    auto downloads = m_allDownloads;
    std::erase_if(downloads, [this](const InterruptedDownload& found) {
        return !isOurs(found.download.account) || m_hidden.contains(found.download.key());
    });
    if (uploads == m_uploads && downloads == m_downloads)
        return;
    m_uploads = std::move(uploads);
    m_downloads = std::move(downloads);
    Q_EMIT changed();
}

void Interrupted::hide(const QString& key)
{
    m_hidden.insert(key);
    update();
}

void Interrupted::show(const QString& key)
{
    if (m_hidden.remove(key))
        update();
}

void Interrupted::showAll()
{
    m_hidden.clear();
    update();
}

Task<void> Interrupted::discardUpload(QString key)
{
    hide(key);
    Q_EMIT discarded(key);
    const auto api = m_environment.api.pinned();
    co_await palvera::discardUpload(*api, m_environment.journals, m_environment.disk, key);
    co_await load();
    show(key);
}

Task<void> Interrupted::discardDownload(QString key)
{
    const auto* found = findDownload(key);
    if (!found)
        co_return;
    const auto download = found->download;
    hide(key);
    const auto discarded = co_await outcomeOf(callOn(m_environment.disk, [&] {
        m_environment.index.removeWaiting(download);
        if (!download.isBegun)
            return;
        DownloadPlace::discard(download.path, download.source);
        m_environment.index.remove(download.path);
    }));
    co_await load();
    show(key);
    if (discarded.failure)
        std::rethrow_exception(discarded.failure);
}

Task<bool> Interrupted::isSource(QString key, QString path)
{
    bool is = false;
    co_await callOn(m_environment.disk, [&] {
        const auto journal = journalOf(m_environment.journals, key);
        is = journal && isOf(*journal, path);
    });
    co_return is;
}

Task<bool> Interrupted::moveSource(QString key, QString path)
{
    bool isMoved = false;
    co_await callOn(m_environment.disk, [&] {
        auto held = m_environment.journals.lockOf(key);
        const bool isBegun = m_environment.journals.loadJournal(key).has_value();
        auto journal = journalOf(m_environment.journals, key);
        if (held.tryLock() != LockFile::Outcome::taken || !journal || !isOf(*journal, path))
            return;
        journal->filePath = path;
        journal->bookmark = bookmark::make(path);
        isBegun ? m_environment.journals.saveJournal(*journal) : m_environment.journals.saveWaiting(*journal);
        isMoved = true;
    });
    co_await load();
    co_return isMoved;
}

} // namespace palvera
