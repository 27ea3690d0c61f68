#pragma once

#include "transfers/Item.h"

#include <QList>
#include <QObject>

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// How a transfer stands, for QML: the states of an Item, in their order.
namespace TransferState {
Q_NAMESPACE
QML_ELEMENT
enum class Value { Waiting, Running, Retrying, Paused, Failed, Done, Stopped };
Q_ENUM_NS(Value)
} // namespace TransferState

/// One transfer as the panel shows it. A plain value.
struct TransferRow {
    QString key; ///< the item's id
    QString symbol;
    QString title;
    QString titleName; ///< empty when absent
    QString name;
    TransferState::Value state = {};
    bool isInFlight = false;
    double fraction = 0;   ///< from 0 to 1
    QString percent;       ///< "42%"; empty while the size is not known
    QString figures;       ///< after the percentage: how much, how fast, how long; while it runs
    QString status;        ///< in words: how it stands while it does not run, else what is remarkable
    QString detail;        ///< more than the status says, for the curious
    QList<double> samples; ///< of the speed graph; empty where there is none
    double graphFraction = 1;
    QString spoken; ///< all that matters, for users who cannot see it

    bool operator==(const TransferRow&) const = default;
};

TransferRow transferRow(const Item& item, Clock::WallTime now);

} // namespace palvera
