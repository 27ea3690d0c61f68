#include "cli/ProgressLine.h"

#include "cli/DisplayText.h"
#include "cli/Quantities.h"

#include <QStringList>

#include <algorithm>

namespace palvera::cli {

namespace {

constexpr int longestName = 32, longestBar = 40, shortestBar = 12; // cells
const QString gap = QStringLiteral("  ");

double fractionOf(const ProgressView& progress)
{
    if (progress.total <= 0)
        return 0;
    return std::clamp(double(progress.sent) / double(progress.total), 0.0, 1.0);
}

QString percentText(const ProgressView& progress)
{
    int percent =
        progress.sent >= progress.total && progress.total > 0 ? 100 : std::min(99, int(fractionOf(progress) * 100));
    return paddedBefore(QString::number(percent) + u'%', 4);
}

QString sizesText(const ProgressView& progress)
{
    return bytesText(progress.sent) + QStringLiteral(" of ") + bytesText(progress.total);
}

/// Nothing while the rate is not known or nothing moves.
QString timeLeftText(const ProgressView& progress)
{
    if (!progress.bytesPerSecond || *progress.bytesPerSecond <= 0)
        return {};
    return durationText(double(progress.total - progress.sent) / *progress.bytesPerSecond) + QStringLiteral(" left");
}

QString barOf(double fraction, int cells)
{
    int inner = cells - 2;
    int filled = int(fraction * inner);
    QString bar(filled, u'=');
    if (filled < inner)
        bar += u'>';
    return u'[' + bar.leftJustified(inner, u' ') + u']';
}

QString joined(QStringList pieces)
{
    pieces.removeAll(QString());
    return pieces.join(gap);
}

} // namespace

QString progressLine(const ProgressView& progress, int cells)
{
    auto percent = percentText(progress), sizes = sizesText(progress), left = timeLeftText(progress);
    auto rate = progress.bytesPerSecond ? rateText(*progress.bytesPerSecond) : QString();
    auto name = shortened(printable(progress.name), longestName);
    const QList<std::pair<QString, QString>> choices{
        // before the bar, behind it; the fullest first
        {name, joined({percent, sizes, rate, left})},
        {name, joined({percent, rate, left})},
        {name, joined({percent, left})},
        {{}, joined({percent, rate, left})},
        {{}, joined({percent, left})},
    };
    for (const auto& [before, behind] : choices) {
        int room = cells - cellsOf(before) - cellsOf(behind) - int(gap.size()) * (before.isEmpty() ? 1 : 2);
        if (room >= shortestBar)
            return joined({before, barOf(fractionOf(progress), std::min(room, longestBar)), behind});
    }
    return percent.trimmed().size() <= cells ? percent.trimmed() : QString();
}

} // namespace palvera::cli
