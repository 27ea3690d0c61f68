#pragma once

#include <QByteArray>

class QWindow;

namespace palvera {

/// Shows `window` if it is not on screen and brings it to the front, with the right that `token` gives; see
/// Arrival::token. Without one, a desktop that lets nobody take the keyboard may only mark the window. Main thread.
void bringToFront(QWindow& window, const QByteArray& token);

} // namespace palvera
