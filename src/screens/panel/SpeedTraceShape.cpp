#include "screens/panel/SpeedTraceShape.h"

#include <algorithm>
#include <cmath>

namespace palvera {

double peakOf(const QList<double>& samples)
{
    constexpr double least = 0.000001; // so that one can divide by it
    return samples.isEmpty() ? least : std::max(least, std::ranges::max(samples));
}

QString peakText(const QList<double>& samples)
{
    constexpr double million = 1e6, thousand = 1e3;
    const auto peak = peakOf(samples);
    if (peak >= million)
        return QStringLiteral("%1M").arg(std::llround(peak / million));
    return QStringLiteral("%1K").arg(std::llround(peak / thousand));
}

double usedFraction(double fraction)
{
    return std::clamp(fraction, 0.02, 1.0);
}

QList<QPointF> tracePoints(const QList<double>& samples, double fraction, const QSizeF& size)
{
    if (samples.size() < 2)
        return {};
    const auto peak = peakOf(samples);
    const auto step = usedFraction(fraction) * size.width() / double(samples.size() - 1);
    QList<QPointF> points;
    for (qsizetype i = 0; i < samples.size(); ++i)
        points.append({step * double(i), size.height() - (size.height() - 2) * (samples[i] / peak) - 1});
    return points;
}

QColor traceColor(double sample, double peak)
{
    constexpr double green = 0.33;
    return QColor::fromHsvF(float(std::clamp(green * (sample / peak), 0.0, green)), 0.85F, 0.92F);
}

} // namespace palvera
