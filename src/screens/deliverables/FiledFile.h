#pragma once

#include "service/Deliverable.h"

namespace palvera {

/// The file that is filed on a deliverable, as far as the platform describes it. A plain value.
struct FiledFile {
    QString object;   ///< its key in storage
    QString name;     ///< for people
    QString saveName; ///< for a download of it
    QString details;  ///< size, type, duration and picture size, each where it is known
};

/// Nothing when no file is filed.
std::optional<FiledFile> filedFile(const Deliverable& deliverable);

} // namespace palvera
