#include "localplatform/ByteRange.h"

#include "localplatform/Wire.h"

namespace palvera::local {

namespace {

QByteArray spanText(qint64 first, qint64 last)
{
    return QByteArray::number(first) + '-' + QByteArray::number(last);
}

} // namespace

ByteRange readRange(const QByteArray& header, qint64 size)
{
    constexpr QByteArrayView unit = "bytes=";
    auto bounds = header.mid(unit.size()).split('-');
    ByteRange range{.first = bounds.value(0).toLongLong(), .last = bounds.value(1).toLongLong()};
    bool proper = header == unit.toByteArray() + spanText(range.first, range.last);
    if (proper && size == 0)
        refuse(416, QStringLiteral("InvalidRange"), QStringLiteral("The requested range cannot be satisfied."));
    if (!proper || range.first < 0 || range.last < range.first || range.last >= size)
        violate(QStringLiteral("the range \"%1\" of %2 bytes").arg(QString::fromLatin1(header)).arg(size));
    return range;
}

QByteArray contentRange(const ByteRange& range, qint64 size, qint64 off)
{
    return "bytes " + spanText(range.first + off, range.last + off) + '/' + QByteArray::number(size);
}

} // namespace palvera::local
