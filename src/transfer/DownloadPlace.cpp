#include "transfer/DownloadPlace.h"

#include "files/AtomicFile.h"
#include "files/DestinationFile.h"
#include "files/FileError.h"
#include "text/VisibleText.h"
#include "transfer/DownloadRules.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>

namespace palvera {

namespace {

/// Bytes that a name may have: 255 in most file systems, less the record's extension and the longest number.
constexpr qsizetype longestName = 255 - 7 - 5;
constexpr int mostNames = 9999;

/// `text` without what is past `bytes` bytes of UTF-8, and without half a character.
QString cutTo(QString text, qsizetype bytes)
{
    while (text.toUtf8().size() > bytes)
        text.chop(text.size() > 1 && text.back().isLowSurrogate() ? 2 : 1);
    return text;
}

/// Where the extension begins, its dot included; the name's end when it has none.
qsizetype extensionOf(const QString& name)
{
    constexpr qsizetype longestExtension = 20;
    auto dot = name.lastIndexOf(u'.');
    return dot > 0 && name.size() - dot <= longestExtension ? dot : name.size();
}

QString numbered(const QString& name, int number)
{
    if (number == 1)
        return name;
    auto dot = extensionOf(name);
    return name.left(dot) + u' ' + QString::number(number) + name.mid(dot);
}

bool isTaken(const QString& path)
{
    QFileInfo there(path);
    return there.exists() || there.isSymLink();
}

/// Without the extension by which a record is known, also where case does not count.
QString withoutRecordExtension(const QString& name)
{
    const auto extension = recordPath({});
    return name.endsWith(extension, Qt::CaseInsensitive) ? name.chopped(extension.size()) : name;
}

/// Not longer than it may be, with its extension.
QString shortened(const QString& name)
{
    const auto extension = name.mid(extensionOf(name));
    return cutTo(name.left(extensionOf(name)), longestName - extension.toUtf8().size()) + extension;
}

QString withoutDot(const QString& name)
{
    return name.startsWith(u'.') ? name.mid(1) : name;
}

} // namespace

QString safeFileName(const QString& name)
{
    auto last = visibleText(name.mid(name.lastIndexOf(u'/') + 1)).normalized(QString::NormalizationForm_C);
    for (QString before; before != last;) {
        before = last;
        last = shortened(withoutRecordExtension(withoutDot(last.trimmed())));
    }
    return last.isEmpty() ? QStringLiteral("Download") : last;
}

DownloadPlace DownloadPlace::claim(const QString& folder, const QString& name, const QString& source)
{
    sweepStaging(folder, std::chrono::system_clock::now());
    const auto safe = safeFileName(name);
    for (int number = 1; number <= mostNames; ++number) {
        const auto path = QDir(folder).filePath(numbered(safe, number));
        if (progressOf(path, source))
            return DownloadPlace(path);
        if (isTaken(path))
            continue;
        // Before the file, so that a power cut in between leaves no empty file that nobody knows. What stands there
        // without its file means nothing.
        try {
            savePartial(path, {.source = source});
        } catch (const FileError&) { // NOLINT(bugprone-empty-catch): the engine says so
        }
        if (auto made = create(path))
            return *std::move(made);
    }
    throw FileError(QObject::tr("There are too many files named “%1” in that folder.").arg(safe));
}

std::optional<Partial> DownloadPlace::progressOf(const QString& path, const QString& source)
{
    if (!DestinationFile::isSoleFile(path))
        return {};
    auto partial = loadPartial(path);
    const auto file = identityOf(path);
    if (!partial || !file || !recordBinds(*partial, source, file->handle, file->size))
        return {};
    return partial;
}

void DownloadPlace::discard(const QString& path, const QString& source)
{
    if (!progressOf(path, source))
        return;
    const auto held = DestinationFile::open(path);
    if (!progressOf(path, source))
        return;
    if (!QFile::remove(path))
        throw FileError(QObject::tr("“%1” cannot be removed.").arg(QFileInfo(path).fileName()));
    removePartial(path);
}

std::optional<DownloadPlace> DownloadPlace::create(const QString& path)
try {
    if (!DestinationFile::create(path))
        return {};
    DownloadPlace place(path);
    place.m_made = identityOf(path);
    return place;
} catch (const FileError&) {
    removePartial(path);
    throw;
}

void DownloadPlace::removeIfEmpty() const
{
    if (!m_made)
        return;
    try {
        auto held = DestinationFile::open(m_path); // not while another program writes it
        auto partial = loadPartial(m_path);
        if ((partial && !partial->done.empty()) || held.identity().handle != m_made->handle)
            return;
        QFile::remove(m_path);
        removePartial(m_path);
    } catch (const FileError&) { // somebody else's now
    }
}

} // namespace palvera
