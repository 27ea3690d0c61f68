#include "screens/panel/Footing.h"

#include "files/Quantities.h"

#include <QDateTime>
#include <QLocale>
#include <QObject>

namespace palvera {

namespace {

constexpr double longest = 7 * 24 * 3600; // seconds; beyond a week no time is worth saying

QString timeText(const QDateTime& then, const QDateTime& now)
{
    const auto time = then.toString(QStringLiteral("HH:mm"));
    const auto days = now.date().daysTo(then.date());
    if (days == 0)
        return QObject::tr("about %1").arg(time);
    if (days == 1)
        return QObject::tr("about %1 tomorrow").arg(time);
    return QObject::tr("about %1 on %2").arg(time, QLocale().dayName(then.date().dayOfWeek()));
}

} // namespace

Footing footingOf(const std::vector<Item>& items)
{
    Footing footing;
    for (const auto& item : items) {
        if (!item.isInFlight())
            continue;
        if (item.total > 0) {
            footing.sent += std::min(item.sent, item.total);
            footing.total += item.total;
        }
        if (item.isPaused()) {
            ++footing.paused;
            continue;
        }
        ++footing.moving;
        if (std::holds_alternative<Item::Running>(item.state)) {
            const double rate = std::max(0.0, item.rate.value_or(0));
            footing.rate += rate;
            footing.pace += item.pace.value_or(rate);
        }
        if (item.total < 1)
            footing.isMoreLeft = true;
        else
            footing.left += std::max<qint64>(0, item.total - item.sent);
    }
    return footing;
}

QString footingText(const Footing& footing, Clock::WallTime now)
{
    if (footing.moving == 0)
        return footing.paused > 0 ? QObject::tr("Paused") : QString();
    QStringList texts;
    if (footing.rate > 0)
        texts.append(rateText(footing.rate));
    if (footing.left > 0)
        texts.append((footing.isMoreLeft ? QObject::tr("more than %1 left") : QObject::tr("%1 left"))
                         .arg(byteCountText(footing.left)));
    const double seconds = footing.pace > 0 ? double(footing.left) / footing.pace : longest;
    if (footing.left > 0 && !footing.isMoreLeft && seconds < longest) {
        const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch());
        const auto then = QDateTime::fromMSecsSinceEpoch(milliseconds.count());
        texts.append(timeText(then.addSecs(qint64(seconds)), then));
    }
    return texts.join(QStringLiteral(" · "));
}

std::optional<int> overallPercent(const Footing& footing)
{
    return footing.total < 1 ? std::nullopt : std::optional(percentOf(footing.sent, footing.total));
}

} // namespace palvera
