#include "transfer/UploadRules.h"

#include <algorithm>
#include <cmath>

namespace palvera {

bool coversExactly(qint64 partSize, qint64 partCount, qint64 byteSize)
{
    return partSize >= 1 && partCount >= 1 && partCount <= mostParts && byteSize >= 1 &&
           (byteSize - 1) / partSize + 1 == partCount;
}

ByteRange rangeOfPart(int part, qint64 partSize, qint64 byteSize)
{
    qint64 offset = (part - 1) * partSize;
    return {.offset = offset, .length = std::min(partSize, byteSize - offset)};
}

std::vector<int> partsToSend(int partCount, const ConfirmedParts& done)
{
    std::vector<int> queue;
    for (int part = partCount; part >= 1; --part)
        if (!done.contains(part))
            queue.push_back(part);
    return queue;
}

bool isComplete(const ConfirmedParts& done, int partCount)
{
    return partCount >= 1 && done.size() == std::size_t(partCount) && done.begin()->first == 1 &&
           done.rbegin()->first == partCount;
}

int laneCount(int lanes, qint64 inFlightBudget, qint64 partSize, std::size_t queued)
{
    constexpr qint64 fullLanesUpTo = 32LL << 20;
    qint64 wanted = partSize <= fullLanesUpTo ? lanes : std::max(inFlightBudget / partSize, qint64(1));
    return int(std::clamp(wanted, qint64(1), std::max(qint64(queued), qint64(1))));
}

std::chrono::nanoseconds backOff(int attempt, double spread)
{
    std::chrono::duration<double> wait(std::min(0.5 * std::pow(2.0, attempt), 30.0) * spread);
    return std::chrono::duration_cast<std::chrono::nanoseconds>(wait);
}

bool saysGone(qint64 status)
{
    return status == 404 || status == 410;
}

QString unquoted(const QByteArray& etag)
{
    return QString::fromUtf8(etag).remove(QLatin1Char('"'));
}

} // namespace palvera
