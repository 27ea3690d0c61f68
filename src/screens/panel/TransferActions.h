#pragma once

#include "transfers/Item.h"

#include <QList>
#include <QObject>

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// What a user can do with a transfer, for QML.
namespace TransferAction {
Q_NAMESPACE
QML_ELEMENT
enum class Value {
    None,
    StartNow,
    Pause,
    Resume,
    TryAgain,
    Stop, ///< which is asked about first
    ShowInFolder,
    Open,
    ShowDeliverable,
    CopyError,
    CopyName,
    Remove
};
Q_ENUM_NS(Value)
} // namespace TransferAction

/// What can be done with it as it stands, in the order of its menu.
QList<TransferAction::Value> actionsFor(const Item& item);
/// What Enter and a double click do.
TransferAction::Value mainActionFor(const Item& item);
QString textOf(TransferAction::Value action);

} // namespace palvera
