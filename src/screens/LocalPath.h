#pragma once

#include <QString>
#include <QUrl>

namespace palvera {

/// The path on this computer of what was dropped or chosen; empty where it is elsewhere.
QString localPath(QUrl file);

} // namespace palvera
