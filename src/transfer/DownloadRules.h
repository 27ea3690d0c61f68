#pragma once

#include "http/HttpClient.h"
#include "transfer/ByteRange.h"
#include "transfer/Partial.h"

namespace palvera {

// A stored object is downloaded in chunks of one size, the last one possibly shorter, with indexes from 0.

/// How many chunks of `chunkSize` bytes an object of `total` bytes has.
qint64 chunkCount(qint64 total, qint64 chunkSize);

/// The bytes of the chunk of that index.
ByteRange rangeOfChunk(qint64 index, qint64 chunkSize, qint64 total);

/// The request for `range` of the object at `address`.
HttpRequest rangedRequest(const QByteArray& address, ByteRange range);

/// The object's size by the answer to a request for its first byte: what "Content-Range" says, else the
/// "Content-Length" of a whole answer, that of a part being the part's. Nothing where storage does not say.
std::optional<qint64> totalIn(const HttpResponse& answer);

/// What speaks against the body that follows these headers being the bytes of `range`; nothing when nothing does.
std::optional<QString> objectionTo(const HttpResponse& answer, ByteRange range);

/// Whether the answer says itself that these bytes are its body.
bool namesRange(const HttpResponse& answer, ByteRange range);

/// Whether the answer is about another object than one of `total` bytes with the entity tag `tag`, where both name one.
bool isAnotherObject(const HttpResponse& answer, qint64 total, const QString& tag);

/// Whether `record` speaks of the file beside it, which has `handle` and `fileSize` bytes, as of an unfinished download
/// of `source`. A record with a handle knows its file by that; one without, by its size. A record of nothing but chunks
/// and total does not say what it is of: it counts as long as the sizes fit.
bool recordBinds(const Partial& record, const QString& source, const QByteArray& handle, qint64 fileSize);

/// Whether what `record` lists is there for a download of what storage has now, as `now` says, into a file of
/// `fileSize` bytes.
bool recordFits(const Partial& record, const Partial& now, qint64 fileSize, qint64 chunkSize);

} // namespace palvera
