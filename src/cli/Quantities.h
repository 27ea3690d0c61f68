#pragma once

#include <QString>

namespace palvera::cli {

// Quantities for people, with three digits that count.

/// Decimal units from KB (1000 bytes) to TB: "1.07 GB", "104 MB"; "<1 KB" for less than that and "0 KB" for nothing.
QString bytesText(qint64 bytes);
/// "98.4 MB/s".
QString rateText(double bytesPerSecond);
/// "0:07", "12:34", "1:02:03"; "over 99 h" beyond that.
QString durationText(double seconds);

} // namespace palvera::cli
