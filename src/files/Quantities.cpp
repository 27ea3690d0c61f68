#include "files/Quantities.h"

#include <QLocale>
#include <QObject>

#include <array>
#include <cmath>

namespace palvera {

namespace {

struct Unit {
    const char* name;
    double bytes;
    int decimals;
};
constexpr std::array units{Unit{"KB", 1e3, 0}, Unit{"MB", 1e6, 1}, Unit{"GB", 1e9, 1}, Unit{"TB", 1e12, 1}};

/// Whether `bytes` come to a thousand of `unit` once they are rounded to its decimals.
bool isTooMuchFor(const Unit& unit, double bytes)
{
    auto scale = std::pow(10.0, unit.decimals);
    return std::round(bytes / unit.bytes * scale) >= 1000 * scale;
}

} // namespace

QString byteCountText(qint64 bytes)
{
    double count = bytes <= 0 ? 0 : std::max(double(bytes), 1e3);
    const auto* unit = units.begin();
    while (unit + 1 != units.end() && isTooMuchFor(*unit, count))
        ++unit;
    auto locale = QLocale();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(count / unit->bytes, 'f', unit->decimals) + u' ' + QLatin1String(unit->name);
}

QString rateText(double bytesPerSecond)
{
    constexpr double most = 9e18; // what a count of bytes can hold
    return byteCountText(qint64(std::clamp(bytesPerSecond, 0.0, most))) + QStringLiteral("/s");
}

QString durationText(double seconds)
{
    constexpr double longest = 9e15; // beyond that a double no longer counts single seconds
    if (!(seconds >= 0 && seconds <= longest))
        return QStringLiteral("—");
    auto whole = qint64(seconds);
    if (whole < 60)
        return QObject::tr("%1s").arg(whole);
    if (whole < 3600)
        return QObject::tr("%1m %2s").arg(whole / 60).arg(whole % 60);
    return QObject::tr("%1h %2m").arg(whole / 3600).arg(whole / 60 % 60);
}

QString percentText(int percent)
{
    return QObject::tr("%1%").arg(percent);
}

double fractionOf(qint64 sent, qint64 total)
{
    return total < 1 ? 0 : std::clamp(double(sent) / double(total), 0.0, 1.0);
}

int percentOf(qint64 sent, qint64 total)
{
    if (total < 1 || sent <= 0)
        return 0;
    if (sent >= total)
        return 100;
    // In whole numbers: 29 of 100 is 28.999… percent in a double.
    constexpr qint64 largest = std::numeric_limits<qint64>::max() / 100;
    return int(std::min<qint64>(99, sent <= largest ? sent * 100 / total : sent / (total / 100)));
}

} // namespace palvera
