#pragma once

#include "transfers/Item.h"

#include <QList>

namespace palvera {

/// One transfer as the panel shows it. A plain value.
struct TransferRow {
    QString key; ///< the item's id
    QString symbol;
    QString title;
    QString titleName; ///< empty when absent
    QString name;
    QString state; ///< see `nameOf`
    bool isInFlight = false;
    double fraction = 0;   ///< from 0 to 1
    QString percent;       ///< "42%"
    QString figures;       ///< after the percentage: how much, how fast, how long; while it runs
    QString status;        ///< in words, while it does not run
    QString detail;        ///< more about the status, for the curious
    QList<double> samples; ///< of the speed graph; empty where there is none
    double graphFraction = 1;
    QString spoken; ///< all that matters, for who cannot see it
    QString stopTitle;
    QString stopMessage;

    bool operator==(const TransferRow&) const = default;
};

TransferRow transferRow(const Item& item, Clock::WallTime now);

} // namespace palvera
