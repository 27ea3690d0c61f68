#include "cli/ProgressLine.h"

#include "cli/DisplayText.h"
#include "files/Quantities.h"
#include "text/VisibleText.h"

#include <QStringList>

#include <algorithm>

namespace palvera::cli {

namespace {

constexpr int longestName = 32, longestBar = 40, shortestBar = 12; // cells
const QString gap = QStringLiteral("  ");

QString percentText(const ProgressView& progress)
{
    return paddedBefore(QString::number(percentOf(progress.sent, progress.total)) + u'%', 4);
}

QString sizesText(const ProgressView& progress)
{
    return byteCountText(progress.sent) + QStringLiteral(" of ") + byteCountText(progress.total);
}

/// Nothing while the rate is not known or nothing moves.
QString timeLeftText(const ProgressView& progress)
{
    if (!progress.bytesPerSecond || *progress.bytesPerSecond <= 0)
        return {};
    const auto pace = progress.pace.value_or(*progress.bytesPerSecond);
    return durationText(double(progress.total - progress.sent) / pace) + QStringLiteral(" left");
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
    auto name = shortened(visibleText(progress.name), longestName);
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
            return joined(
                {before, barOf(fractionOf(progress.sent, progress.total), std::min(room, longestBar)), behind});
    }
    return percent.trimmed().size() <= cells ? percent.trimmed() : QString();
}

} // namespace palvera::cli
