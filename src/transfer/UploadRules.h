#pragma once

#include "transfer/ByteRange.h"

#include <QString>

#include <chrono>
#include <map>
#include <vector>

namespace palvera {

/// The entity tag of each part that storage confirmed, by part number (from 1).
using ConfirmedParts = std::map<int, QString>;

/// Most parts of an upload: far above what storage takes, and few enough to list.
inline constexpr qint64 mostParts = 1'000'000;

/// Whether `partCount` parts of `partSize` bytes, the last one possibly shorter but not empty, are exactly `byteSize`
/// bytes. False for any value below 1 and for more than `mostParts` parts.
bool coversExactly(qint64 partSize, qint64 partCount, qint64 byteSize);

/// The bytes of `part` (from 1) in a file of `byteSize` bytes.
ByteRange rangeOfPart(int part, qint64 partSize, qint64 byteSize);

/// The parts from 1 to `partCount` that are not in `done`, highest first, so that taking from the end gives the lowest.
std::vector<int> partsToSend(int partCount, const ConfirmedParts& done);

/// Whether `done` holds each part from 1 to `partCount` and nothing else.
bool isComplete(const ConfirmedParts& done, int partCount);

/// How many lanes send `queued` parts: `lanes` for parts of up to 32 MiB, beyond that as many as have `inFlightBudget`
/// bytes under way at most, never more than there are parts and never none.
int laneCount(int lanes, qint64 inFlightBudget, qint64 partSize, std::size_t queued);

/// The wait before `attempt` (from 1; attempt 0 goes at once): it doubles from a second up to half a minute.
/// `spread`, from 0.8 to 1.2, keeps lanes that failed together from coming back together.
std::chrono::nanoseconds backOff(int attempt, double spread);

/// Whether the platform's refusal means that it has no such upload, or none any more.
bool saysGone(qint64 status);

/// The entity tag in an answer's header, without the quotes around it.
QString unquoted(const QByteArray& etag);

} // namespace palvera
