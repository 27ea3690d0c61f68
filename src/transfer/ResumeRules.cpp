#include "transfer/ResumeRules.h"

#include "files/Bookmark.h"

namespace palvera {

namespace {

/// Whether a handle of a file that may have changed stands for the same one.
bool isSameHandle(const SourceIdentity& a, const SourceIdentity& b)
{
    return !a.handle.isEmpty() && a.handle == b.handle;
}

bool isUnchanged(const SourceIdentity& a, const SourceIdentity& b)
{
    return a.size == b.size && a.changed == b.changed;
}

} // namespace

QString fileStamp(const SourceIdentity& identity)
{
    constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
    return QStringLiteral("%1-%2").arg(identity.size).arg(identity.changed / nanosecondsPerSecond);
}

JournalFit fitOf(const Journal& journal, const UploadSubject& subject)
{
    const bool isAnothers = journal.account && subject.account && journal.account != subject.account;
    if (isAnothers || journal.destination() != subject.target ||
        journal.service.value_or(subject.service) != subject.service)
        return JournalFit::otherPlace;
    auto kept = journal.bookmark ? bookmark::read(*journal.bookmark) : std::nullopt;
    auto known = kept ? kept->identity : std::nullopt;
    bool isSameFile = subject.path == journal.filePath || (kept && subject.path == kept->path) ||
                      (known && isSameHandle(*known, subject.identity));
    if (!isSameFile)
        return JournalFit::otherFile;
    bool isAsItWas = journal.byteSize == subject.identity.size && journal.fileStamp == fileStamp(subject.identity) &&
                     (!known || isUnchanged(*known, subject.identity));
    return isAsItWas ? JournalFit::fits : JournalFit::fileChanged;
}

bool isSameUpload(const UploadSubject& a, const UploadSubject& b)
{
    return a.target == b.target && a.service == b.service &&
           (a.path == b.path || isSameHandle(a.identity, b.identity)) && isUnchanged(a.identity, b.identity);
}

} // namespace palvera
