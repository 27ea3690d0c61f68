#include "transfer/DownloadRules.h"

#include "service/JsonReader.h"

#include <QObject>

#include <algorithm>

namespace palvera {

using namespace std::chrono_literals;

namespace {

/// Most bytes of a refusal's body, which nobody reads.
constexpr qint64 longestRefusal = 64 << 10;

struct ContentRange {
    QByteArray span;             ///< "0-499"
    std::optional<qint64> total; ///< nothing where storage does not say
};

ContentRange contentRangeOf(const HttpResponse& answer)
{
    auto text = answer.header("Content-Range").trimmed();
    auto slash = text.indexOf('/');
    auto space = text.indexOf(' ');
    if (slash < 0)
        return {};
    return {.span = text.mid(space + 1, slash - space - 1).trimmed(),
            .total = json::parseInteger(QString::fromLatin1(text.mid(slash + 1).trimmed()))};
}

std::optional<qint64> contentLengthOf(const HttpResponse& answer)
{
    return json::parseInteger(QString::fromLatin1(answer.header("Content-Length")));
}

QByteArray spanText(ByteRange range)
{
    return QByteArray::number(range.offset) + '-' + QByteArray::number(range.offset + range.length - 1);
}

} // namespace

qint64 chunkCount(qint64 total, qint64 chunkSize)
{
    return (total + chunkSize - 1) / chunkSize;
}

ByteRange rangeOfChunk(qint64 index, qint64 chunkSize, qint64 total)
{
    const auto first = index * chunkSize;
    return {.offset = first, .length = std::min(chunkSize, total - first)};
}

HttpRequest rangedRequest(const QByteArray& address, ByteRange range)
{
    return {.url = address,
            .headers = {{"Range", "bytes=" + spanText(range)}},
            .idleTimeout = 60s,
            .totalTimeout = 3600s,
            .answerLimit = longestRefusal};
}

std::optional<qint64> totalIn(const HttpResponse& answer)
{
    constexpr int partialContent = 206;
    auto total = contentRangeOf(answer).total;
    return total || answer.status == partialContent ? total : contentLengthOf(answer);
}

std::optional<QString> objectionTo(const HttpResponse& answer, ByteRange range)
{
    auto named = contentRangeOf(answer);
    if (!named.span.isEmpty() && named.span != spanText(range))
        return QObject::tr("Storage sent other bytes than those asked for.");
    auto announced = contentLengthOf(answer);
    if (announced && *announced != range.length)
        return QObject::tr("Storage sent %1 bytes of a chunk of %2.").arg(*announced).arg(range.length);
    return {};
}

bool namesRange(const HttpResponse& answer, ByteRange range)
{
    return contentRangeOf(answer).span == spanText(range);
}

bool isAnotherObject(const HttpResponse& answer, qint64 total, const QString& tag)
{
    auto named = contentRangeOf(answer).total;
    auto its = QString::fromLatin1(answer.header("ETag"));
    return (named && *named != total) || (!its.isEmpty() && !tag.isEmpty() && its != tag);
}

bool recordBinds(const Partial& record, const QString& source, const QByteArray& handle, qint64 fileSize)
{
    if (source.isEmpty() || (!record.source.isEmpty() && record.source != source))
        return false;
    if (!record.source.isEmpty() && !record.file.isEmpty() && !handle.isEmpty())
        return record.file == handle;
    return record.total == fileSize && (record.total > 0 || !record.source.isEmpty());
}

bool recordFits(const Partial& record, const Partial& now, qint64 fileSize, qint64 chunkSize)
{
    bool isSameObject =
        record.total == now.total && (record.tag.isEmpty() || now.tag.isEmpty() || record.tag == now.tag);
    bool areChunks =
        record.done.empty() || (*record.done.begin() >= 0 && *record.done.rbegin() < chunkCount(now.total, chunkSize));
    return isSameObject && fileSize == now.total && areChunks;
}

} // namespace palvera
