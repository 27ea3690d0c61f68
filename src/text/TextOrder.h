#pragma once

#include <QStringList>

namespace palvera {

/// The places of the texts in the order in which the user's language sorts them, numbers within by their value; those
/// of equal texts stay in their order.
QList<qsizetype> textOrder(const QStringList& texts);

} // namespace palvera
