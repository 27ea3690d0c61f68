#pragma once

#include <QString>

namespace palvera {

// Quantities as the screens show them, in the user's number format.

/// Decimal units from KB (1000 bytes) to TB. KB have no decimals, all others have one, so that a figure that changes
/// keeps its width: "850 KB", "12.4 MB", "38.0 GB", "1.1 TB". Anything below 1 KB but nothing is "1 KB".
QString byteCountText(qint64 bytes);
/// The byte count of the whole part, and "/s".
QString rateText(double bytesPerSecond);
/// "42s", "3m 5s", "2h 10m", all rounded down; "—" for what is negative or no number.
QString durationText(double seconds);
/// "45%".
QString percentText(int percent);
/// How much of `total` has gone, from 0 to 1; 0 for a total below 1.
double fractionOf(qint64 sent, qint64 total);
/// The same in whole percent, rounded down.
int percentOf(qint64 sent, qint64 total);

} // namespace palvera
