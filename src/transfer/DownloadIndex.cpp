#include "transfer/DownloadIndex.h"

#include "files/AtomicFile.h"
#include "files/FileError.h"
#include "files/Folders.h"
#include "files/SmallFile.h"
#include "service/JsonReader.h"
#include "transfer/DownloadPlace.h"
#include "transfer/Downloader.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSet>

namespace palvera {

namespace {

constexpr qint64 largestEntry = 1 << 20;

QString nameFor(const QString& path)
{
    return QString::fromLatin1(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex().left(32));
}

/// Nothing while another program goes on with it.
std::optional<LockFile> holdOf(LockFile lock)
{
    if (lock.tryLock() == LockFile::Outcome::taken)
        return lock;
    return {};
}

} // namespace

QByteArray encodeUnfinishedDownload(const UnfinishedDownload& download)
{
    QJsonObject object{
        {QStringLiteral("path"), download.path},     {QStringLiteral("source"), download.source},
        {QStringLiteral("object"), download.object}, {QStringLiteral("target"), download.target.toJson()},
        {QStringLiteral("label"), download.label},   {QStringLiteral("service"), download.service}};
    json::put(object, QStringLiteral("listedSize"), download.listedSize);
    json::put(object, QStringLiteral("titleName"), download.titleName);
    json::put(object, QStringLiteral("client"), download.client);
    json::put(object, QStringLiteral("account"), download.account);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<UnfinishedDownload> decodeUnfinishedDownload(const QByteArray& bytes)
try {
    const auto object = json::parseObject(bytes);
    const JsonReader reader(object);
    return UnfinishedDownload{.path = reader.required<QString>(QStringLiteral("path")),
                              .source = reader.required<QString>(QStringLiteral("source")),
                              .target = reader.required<TransferTarget>(QStringLiteral("target")),
                              .object = reader.required<QString>(QStringLiteral("object")),
                              .listedSize = reader.optional<qint64>(QStringLiteral("listedSize")),
                              .label = reader.textOrEmpty(QStringLiteral("label")),
                              .titleName = reader.optional<QString>(QStringLiteral("titleName")),
                              .client = reader.optional<QString>(QStringLiteral("client")),
                              .account = reader.optional<QString>(QStringLiteral("account")),
                              .service = reader.required<QString>(QStringLiteral("service"))};
} catch (const DecodingError&) {
    return std::nullopt;
}

DownloadIndex::DownloadIndex(const QString& applicationSupport)
    : m_home(applicationSupport + QStringLiteral("/Palvera"))
{}

void DownloadIndex::save(const UnfinishedDownload& download) const
{
    writeFileAtomically(folder() + u'/' + nameFor(download.path), encodeUnfinishedDownload(download), stagingFolder(),
                        FileAccess::ownerOnly);
}

void DownloadIndex::remove(const QString& path) const
{
    QFile::remove(folder() + u'/' + nameFor(path));
}

std::vector<DownloadIndex::Found> DownloadIndex::load() const
{
    std::vector<Found> all;
    QSet<QString> begun; // or held up, or away for now
    const QDir entries(folder());
    for (const auto& name : entries.entryList(QDir::Files, QDir::Name)) {
        const auto bytes = readSmallFile(entries.filePath(name), largestEntry);
        auto download = bytes ? decodeUnfinishedDownload(*bytes) : std::nullopt;
        if (!download || nameFor(download->path) != name)
            continue;
        begun.insert(waitingPathOf(*download));
        try {
            const auto held = holdOf(lockOf(download->path));
            if (!held)
                continue;
            if (const auto progress = DownloadPlace::progressOf(download->path, download->source))
                all.push_back({.download = *std::move(download),
                               .received = progress->received(Downloader::Settings().chunkSize),
                               .total = progress->total});
            else if (QFileInfo(download->path).dir().exists()) {
                remove(download->path);
                removeWaiting(*download); // the user has removed it
            }
        } catch (const FileError&) { // NOLINT(bugprone-empty-catch): it may go on in another program
        }
    }
    const QDir waiting(waitingFolder());
    for (const auto& name : waiting.entryList(QDir::Files, QDir::Name)) {
        const auto bytes = readSmallFile(waiting.filePath(name), largestEntry);
        auto download = bytes ? decodeUnfinishedDownload(*bytes) : std::nullopt;
        if (!download || waitingPathOf(*download) != waiting.filePath(name) || isWaitingInSomeProgram(*download))
            continue;
        download->isBegun = false;
        if (!begun.contains(waiting.filePath(name)))
            all.push_back({.download = *download, .total = std::max<qint64>(0, download->listedSize.value_or(0))});
    }
    return all;
}

bool DownloadIndex::isWaitingInSomeProgram(const UnfinishedDownload& download) const
{
    return LockFile::isHeld(waitingLockPathOf(download));
}

QString DownloadIndex::waitingLockPathOf(const UnfinishedDownload& download) const
{
    return stagingFolder() + u'/' + QFileInfo(waitingPathOf(download)).fileName() + QStringLiteral(".hold");
}

std::optional<LockFile> DownloadIndex::saveWaiting(const UnfinishedDownload& download) const
{
    auto held = holdOf(LockFile::open(waitingLockPathOf(download)));
    writeFileAtomically(waitingPathOf(download), encodeUnfinishedDownload(download), stagingFolder(),
                        FileAccess::ownerOnly);
    return held;
}

void DownloadIndex::removeWaiting(const UnfinishedDownload& download) const
{
    QFile::remove(waitingPathOf(download));
}

/// One for each object and folder, whatever its file is called there.
QString DownloadIndex::waitingPathOf(const UnfinishedDownload& download) const
{
    return waitingFolder() + u'/' + nameFor(download.source + u'\n' + QFileInfo(download.path).path());
}

QString DownloadIndex::waitingFolder() const
{
    return makePrivateFolder(m_home + QStringLiteral("/Waiting downloads"));
}

LockFile DownloadIndex::lockOf(const QString& path) const
{
    return LockFile::open(stagingFolder() + u'/' + nameFor(path) + QStringLiteral(".hold"));
}

QString DownloadIndex::folder() const
{
    return makePrivateFolder(m_home + QStringLiteral("/Downloads"));
}

QString DownloadIndex::stagingFolder() const
{
    return makePrivateFolder(m_home + QStringLiteral("/Staging"));
}

} // namespace palvera
