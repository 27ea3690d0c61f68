#pragma once

#include <QString>

#include <optional>

namespace palvera::cli {

/// How far one file is.
struct ProgressView {
    QString name;
    qint64 sent = 0;  ///< bytes
    qint64 total = 0; ///< bytes
    std::optional<double> bytesPerSecond = {};
    std::optional<double> pace = {}; ///< the same over a longer time, by which the time left goes where it is known
};

/// One line of at most `cells` terminal cells that shows `progress`: its name, a bar, the percentage, the sizes, the
/// rate and the time left, as many of them as there is room for. 100% is shown only when all is sent.
QString progressLine(const ProgressView& progress, int cells);

} // namespace palvera::cli
