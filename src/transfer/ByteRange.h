#pragma once

#include <QtGlobal>

namespace palvera {

/// A range of a file's bytes.
struct ByteRange {
    qint64 offset = 0;
    qint64 length = 0;

    bool operator==(const ByteRange&) const = default;
};

} // namespace palvera
