#include "transfers/LineLimits.h"

#include "files/Preferences.h"

#include <QDateTime>

#include <cmath>

namespace palvera {

using namespace std::chrono_literals;

namespace {

const QString uploadKey = QStringLiteral("pv.uploadLimit");
const QString downloadKey = QStringLiteral("pv.downloadLimit");
const QString hoursKey = QStringLiteral("pv.limitHours");
const QString timeFormat = QStringLiteral("HH:mm");

void store(Preferences& preferences, const QString& key, const QString& value)
{
    if (value.isEmpty())
        preferences.remove(key);
    else
        preferences.setString(key, value);
}

QString textOfRate(qint64 bytesPerSecond)
{
    return bytesPerSecond > 0 ? QString::number(bytesPerSecond) : QString();
}

qint64 rateIn(const Preferences& preferences, const QString& key)
{
    return std::max(0LL, preferences.string(key).value_or(QString()).toLongLong());
}

} // namespace

LineLimits::Rates LineLimits::at(QTime time) const
{
    if (!hours)
        return rates;
    const bool isAfter = time >= hours->from, isBefore = time < hours->to;
    const bool holds = hours->from < hours->to ? isAfter && isBefore : isAfter || isBefore;
    return holds ? rates : Rates{};
}

std::optional<qint64> rateFrom(const QString& text)
{
    constexpr double least = 0.1, most = 100'000, megabyte = 1'000'000;
    if (text == QStringLiteral("off"))
        return 0;
    bool isNumber = false;
    const double rate = text.toDouble(&isNumber);
    return isNumber && rate >= least && rate <= most ? std::optional(std::llround(rate * megabyte)) : std::nullopt;
}

std::optional<LineLimits::Hours> hoursFrom(const QString& text)
{
    const auto ends = text.split(u'-');
    const LineLimits::Hours hours{.from = QTime::fromString(ends.value(0), timeFormat),
                                  .to = QTime::fromString(ends.value(1), timeFormat)};
    const bool areHours = ends.size() == 2 && hours.from.isValid() && hours.to.isValid() && hours.from != hours.to;
    return areHours ? std::optional(hours) : std::nullopt;
}

QString textOf(const LineLimits::Hours& hours)
{
    return hours.from.toString(timeFormat) + u'-' + hours.to.toString(timeFormat);
}

QTime localTime(Clock::WallTime moment)
{
    return QDateTime::fromSecsSinceEpoch(Clock::WallTime::clock::to_time_t(moment)).time();
}

LineLimits lineLimitsIn(const Preferences& preferences)
{
    return {.rates = {.up = rateIn(preferences, uploadKey), .down = rateIn(preferences, downloadKey)},
            .hours = hoursFrom(preferences.string(hoursKey).value_or(QString()))};
}

void storeLineLimits(Preferences& preferences, const LineLimits& limits)
{
    store(preferences, uploadKey, textOfRate(limits.rates.up));
    store(preferences, downloadKey, textOfRate(limits.rates.down));
    store(preferences, hoursKey, limits.hours ? textOf(*limits.hours) : QString());
}

void LineShares::set(LineLimits::Rates rates) const
{
    up->set(rates.up);
    down->set(rates.down);
}

Task<void> keepLineLimits(Preferences& preferences, Clock& clock, LineShares shares)
{
    for (;;) {
        preferences.reread();
        const auto now = clock.wallNow();
        shares.set(lineLimitsIn(preferences).at(localTime(now)));
        co_await clock.sleep(1min - now.time_since_epoch() % 1min);
    }
}

} // namespace palvera
