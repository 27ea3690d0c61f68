#pragma once

#include "transfer/ResumeRules.h"

#include <optional>

namespace palvera {

/// What a run leaves in the lock of its upload for other programs that meet it.
struct UploadNote {
    UploadSubject subject;
    bool isDone = false; ///< the platform has the file whole and, for a deliverable, filed

    bool operator==(const UploadNote&) const = default;
};

QByteArray encodeNote(const UploadNote& note);
/// Nothing for bytes that are no note.
std::optional<UploadNote> decodeNote(const QByteArray& bytes);

} // namespace palvera
