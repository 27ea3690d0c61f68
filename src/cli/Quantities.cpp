#include "cli/Quantities.h"

#include <array>
#include <cmath>

namespace palvera::cli {

namespace {

constexpr std::array units{"KB", "MB", "GB", "TB"};

QString threeDigits(double value)
{
    int decimals = value < 9.995 ? 2 : value < 99.95 ? 1 : 0;
    return QString::number(value, 'f', decimals);
}

} // namespace

QString bytesText(qint64 bytes)
{
    if (bytes < 1000)
        return bytes <= 0 ? QStringLiteral("0 KB") : QStringLiteral("<1 KB");
    double value = double(bytes) / 1000;
    std::size_t unit = 0;
    while (value >= 999.5 && unit + 1 < units.size()) {
        value /= 1000;
        ++unit;
    }
    return threeDigits(value) + u' ' + QLatin1String(units[unit]);
}

QString rateText(double bytesPerSecond)
{
    return bytesText(std::llround(bytesPerSecond)) + QStringLiteral("/s");
}

QString durationText(double seconds)
{
    constexpr double longest = 99 * 3600;
    if (!(seconds <= longest))
        return QStringLiteral("over 99 h");
    auto whole = qint64(std::ceil(std::max(seconds, 0.0)));
    auto twoDigits = [](qint64 number) { return QString::number(number).rightJustified(2, u'0'); };
    auto rest = u':' + twoDigits(whole % 60);
    if (whole < 3600)
        return QString::number(whole / 60) + rest;
    return QString::number(whole / 3600) + u':' + twoDigits(whole / 60 % 60) + rest;
}

} // namespace palvera::cli
