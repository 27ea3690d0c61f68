#pragma once

#include "async/Clock.h"

#include <QByteArray>
#include <QString>

namespace palvera {

/// Who may read a file that is written.
enum class FileAccess {
    ordinary,  ///< what the user's own mask leaves
    ownerOnly, ///< the user alone (0600)
};

/// Replaces the file at `path` by one that holds `bytes`, or leaves what was there: a reader, and a start after a
/// crash at any instant, sees the one or the other whole. Both the file and its name are on the disk on return.
///
/// The bytes are gathered in `stagingFolder`, which must exist on the file system of `path` and should not be a folder
/// that somebody lists for files like this one. Throws FileError, and then leaves nothing behind in the staging
/// folder. Blocks on the disk; any thread.
void writeFileAtomically(const QString& path, const QByteArray& bytes, const QString& stagingFolder,
                         FileAccess access = FileAccess::ordinary);

/// Removes from `folder` what a crash in the middle of `writeFileAtomically` left there more than a day ago. Touches
/// nothing else and reports no failure.
void sweepStaging(const QString& folder, Clock::WallTime now);

} // namespace palvera
