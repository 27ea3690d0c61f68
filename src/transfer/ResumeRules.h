#pragma once

#include "files/SourceIdentity.h"
#include "transfer/Journal.h"

namespace palvera {

/// One upload as the user asked for it: which file goes where, through which platform.
struct UploadSubject {
    QString path; ///< of the file, absolute
    SourceIdentity identity;
    TransferTarget target;
    QString service;                     ///< the service address
    std::optional<QString> account = {}; ///< id of the user

    bool operator==(const UploadSubject&) const = default;
};

/// "SIZE-SECONDS": what tells whether a file is still the one it was, from its size in bytes and the moment of its last
/// change in whole seconds since 1970-01-01 UTC.
QString fileStamp(const SourceIdentity& identity);

/// How a journal relates to an upload that is asked for under its key.
enum class JournalFit {
    fits,        ///< it is of this very upload, which can go on
    fileChanged, ///< of this file as it was before somebody wrote into it: what was sent is worth nothing any more
    otherFile,   ///< of another file on its way to the same place
    otherPlace,  ///< on its way to another place, through another platform, or another user's
};
/// A file is the same that has the same path or the same handle; it is unchanged when size and time are the same, to
/// the nanosecond where the journal's bookmark knows them.
JournalFit fitOf(const Journal& journal, const UploadSubject& subject);

/// Whether two runs send the same file, as it is, to the same place.
bool isSameUpload(const UploadSubject& a, const UploadSubject& b);

} // namespace palvera
