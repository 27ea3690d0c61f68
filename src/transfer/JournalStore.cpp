#include "transfer/JournalStore.h"

#include "files/AtomicFile.h"
#include "files/FileError.h"
#include "service/JsonReader.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace palvera {

namespace {

/// Far above any journal, which is about 100 bytes a part: a stray film is not read into memory.
constexpr qint64 largestJournal = 64LL << 20;

std::optional<Journal> readJournal(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestJournal)
        return std::nullopt;
    try {
        return decodeJournal(file.readAll());
    } catch (const DecodingError&) {
        return std::nullopt;
    }
}

} // namespace

JournalStore::JournalStore(const QString& applicationSupport) : m_home(applicationSupport + QStringLiteral("/Palvera"))
{
    sweepStaging(stagingFolder(), std::chrono::system_clock::now());
}

QString JournalStore::journalFolder() const
{
    QString folder = m_home + QStringLiteral("/Uploads");
    QDir().mkpath(folder);
    return folder;
}

QString JournalStore::stagingFolder() const
{
    QString folder = m_home + QStringLiteral("/Staging");
    QDir().mkpath(folder);
    return folder;
}

QString JournalStore::pathOf(const QString& key) const
{
    return journalFolder() + QLatin1Char('/') + key + QStringLiteral(".json");
}

void JournalStore::saveJournal(const Journal& journal) const
{
    if (!isPlainFileName(journal.key))
        return;
    try {
        writeFileAtomically(pathOf(journal.key), encodeJournal(journal), stagingFolder(), FileAccess::ownerOnly);
    } catch (const FileError&) { // NOLINT(bugprone-empty-catch): the next save may succeed
    }
}

void JournalStore::removeJournal(const QString& key) const
{
    if (isPlainFileName(key))
        QFile::remove(pathOf(key));
}

std::optional<Journal> JournalStore::loadJournal(const QString& key) const
{
    auto journal = isPlainFileName(key) ? readJournal(pathOf(key)) : std::nullopt;
    return journal && journal->key == key ? journal : std::nullopt; // a copied file does not speak for another key
}

std::vector<Journal> JournalStore::loadJournals() const
{
    std::vector<Journal> found;
    QDir folder(journalFolder());
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden, QDir::Unsorted))
        if (auto journal = readJournal(folder.filePath(name)))
            found.push_back(std::move(*journal));
    return found;
}

std::unique_ptr<QLockFile> JournalStore::tryLock(const QString& key) const
{
    auto lock = std::make_unique<QLockFile>(stagingFolder() + QLatin1Char('/') + key + QStringLiteral(".lock"));
    lock->setStaleLockTime(0); // an upload may take days: only a dead owner gives its lock up
    return lock->tryLock() ? std::move(lock) : nullptr;
}

QString fileStamp(const QString& path)
{
    QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("0-0");
    constexpr qint64 millisecondsPerSecond = 1000;
    qint64 changed = file.lastModified().toMSecsSinceEpoch() / millisecondsPerSecond;
    return QStringLiteral("%1-%2").arg(file.size()).arg(changed);
}

} // namespace palvera
