#include "transfer/DownloadPlace.h"

#include "files/AtomicFile.h"
#include "files/DestinationFile.h"
#include "files/FileError.h"
#include "transfer/Partial.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

bool isUnfinished(const QString& path, const QString& source)
{
    auto partial = loadPartial(path);
    return partial && !source.isEmpty() && partial->source == source && QFileInfo(path).isFile() &&
           !QFileInfo(path).isSymLink();
}

} // namespace

QString safeFileName(const QString& name)
{
    auto last = name.mid(name.lastIndexOf(u'/') + 1).normalized(QString::NormalizationForm_C);
    last.removeIf([](QChar c) { return c.category() == QChar::Other_Control || c == QChar(0); });
    last = last.trimmed();
    while (last.startsWith(u'.'))
        last.remove(0, 1);
    if (last.isEmpty())
        return QStringLiteral("Download");
    auto extension = last.mid(extensionOf(last));
    return cutTo(last.left(extensionOf(last)), longestName - extension.toUtf8().size()) + extension;
}

DownloadPlace DownloadPlace::claim(const QString& folder, const QString& name, const QString& source)
{
    sweepStaging(folder, std::chrono::system_clock::now());
    const auto safe = safeFileName(name);
    for (int number = 1; number <= mostNames; ++number) {
        DownloadPlace place(QDir(folder).filePath(numbered(safe, number)));
        if (isUnfinished(place.m_path, source))
            return place;
        if (QFileInfo::exists(recordPath(place.m_path)) || !DestinationFile::create(place.m_path))
            continue;
        savePartial(place.m_path, {.source = source});
        return place;
    }
    throw FileError(QStringLiteral("There are too many files named “%1” in that folder.").arg(safe));
}

void DownloadPlace::removeIfEmpty() const
{
    try {
        auto held = DestinationFile::open(m_path); // not while another program writes it
        auto partial = loadPartial(m_path);
        if (!partial || !partial->done.empty())
            return;
        QFile::remove(m_path);
        removePartial(m_path);
    } catch (const FileError&) { // somebody else's now
    }
}

} // namespace palvera
