#include "transfer/JournalStore.h"

#include "files/AtomicFile.h"
#include "files/FileError.h"
#include "files/Folders.h"
#include "files/SmallFile.h"
#include "service/JsonReader.h"

#include <QDir>
#include <QFile>
#include <QObject>

namespace palvera {

namespace {

/// Far above any journal, which is about 100 bytes a part: a stray film is not read into memory.
constexpr qint64 largestJournal = 64LL << 20;

std::optional<Journal> readJournal(const QString& path)
{
    auto bytes = readSmallFile(path, largestJournal);
    if (!bytes)
        return std::nullopt;
    try {
        return decodeJournal(*bytes);
    } catch (const DecodingError&) {
        return std::nullopt;
    }
}

std::vector<Journal> readJournals(const QString& folder)
{
    std::vector<Journal> found;
    const QDir files(folder);
    for (const QString& name : files.entryList(QDir::Files | QDir::Hidden, QDir::Name))
        if (auto journal = readJournal(files.filePath(name)))
            found.push_back(std::move(*journal));
    return found;
}

std::optional<Journal> readJournalOf(const QString& key, const QString& folder)
{
    auto journal = isUsableKey(key) ? readJournal(folder + QLatin1Char('/') + journalFileName(key)) : std::nullopt;
    return journal && journal->key == key ? journal : std::nullopt; // a copied file does not speak for another key
}

} // namespace

JournalStore::JournalStore(const QString& applicationSupport) : m_home(applicationSupport + QStringLiteral("/Palvera"))
{
    sweepStaging(stagingFolder(), std::chrono::system_clock::now());
}

QString JournalStore::journalFolder() const
{
    return makePrivateFolder(m_home + QStringLiteral("/Uploads"));
}

QString JournalStore::stagingFolder() const
{
    return makePrivateFolder(m_home + QStringLiteral("/Staging"));
}

QString JournalStore::pathOf(const QString& key) const
{
    return journalFolder() + QLatin1Char('/') + journalFileName(key);
}

void JournalStore::saveJournal(const Journal& journal) const
{
    if (!isUsableKey(journal.key))
        throw FileError(QObject::tr("This upload cannot be recorded under the name “%1”.").arg(journal.key));
    writeFileAtomically(pathOf(journal.key), encodeJournal(journal), stagingFolder(), FileAccess::ownerOnly);
}

void JournalStore::removeJournal(const QString& key) const
{
    if (isUsableKey(key))
        QFile::remove(pathOf(key));
}

void JournalStore::setAside(Journal journal) const
{
    const auto from = journal.key;
    journal.target = journal.destination(); // which its key may no longer tell
    for (int number = 2; QFile::exists(pathOf(journal.key)); ++number)
        journal.key = QStringLiteral("%1~%2").arg(from).arg(number);
    saveJournal(journal);
    removeJournal(from);
}

std::optional<Journal> JournalStore::loadJournal(const QString& key) const
{
    return readJournalOf(key, journalFolder());
}

std::vector<Journal> JournalStore::loadJournals() const
{
    return readJournals(journalFolder());
}

QString JournalStore::waitingFolder() const
{
    return makePrivateFolder(m_home + QStringLiteral("/Waiting"));
}

void JournalStore::saveWaiting(const Journal& journal) const
{
    if (isUsableKey(journal.key))
        writeFileAtomically(waitingFolder() + QLatin1Char('/') + journalFileName(journal.key), encodeJournal(journal),
                            stagingFolder(), FileAccess::ownerOnly);
}

void JournalStore::removeWaiting(const QString& key) const
{
    if (isUsableKey(key))
        QFile::remove(waitingFolder() + QLatin1Char('/') + journalFileName(key));
}

std::optional<Journal> JournalStore::loadWaiting(const QString& key) const
{
    return readJournalOf(key, waitingFolder());
}

std::vector<Journal> JournalStore::loadAllWaiting() const
{
    return readJournals(waitingFolder());
}

LockFile JournalStore::lockOf(const QString& key) const
{
    return LockFile::open(lockPathOf(key));
}

bool JournalStore::isRunning(const QString& key) const
{
    return LockFile::isHeld(lockPathOf(key));
}

QString JournalStore::lockPathOf(const QString& key) const
{
    // Another name than that of the lock files of earlier versions, which outlived their owners.
    auto name = journalFileName(key);
    name.replace(name.size() - 5, 5, QStringLiteral(".hold"));
    return stagingFolder() + QLatin1Char('/') + name;
}

} // namespace palvera
