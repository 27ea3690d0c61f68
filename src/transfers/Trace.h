#pragma once

#include <QList>

namespace palvera {

/// The speed of one transfer over its whole life, in at most 240 samples: when they become more, neighbours are merged
/// and each sample stands for twice as many readings. Nothing is ever dropped. A plain value.
struct Trace {
    static constexpr qsizetype cap = 240; ///< most samples kept

    QList<double> samples; ///< averaged bytes per second, oldest first
    qint64 every = 1;      ///< how many readings make one sample
    double carry = 0;      ///< sum of the readings that are in no sample yet
    qint64 carried = 0;    ///< how many these are

    /// Takes in one reading in bytes per second.
    void add(double rate);

    bool operator==(const Trace&) const = default;
};

} // namespace palvera
