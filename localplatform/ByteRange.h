#pragma once

#include <QByteArray>

namespace palvera::local {

/// Bytes of an object, both inclusive.
struct ByteRange {
    qint64 first = 0;
    qint64 last = 0;

    qint64 length() const { return last - first + 1; }
};

/// What a Range header asks for of an object of `size` bytes. Any form but "bytes=FIRST-LAST" within the object is a
/// violation.
ByteRange readRange(const QByteArray& header, qint64 size);

/// The Content-Range of `range`; `off` is added to both bounds, to make a wrong one.
QByteArray contentRange(const ByteRange& range, qint64 size, qint64 off);

} // namespace palvera::local
