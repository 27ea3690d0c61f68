#pragma once

#include <QString>

namespace palvera {

/// Has the desktop start `program` with "--background" whenever a session begins, or no more: an entry of the Desktop
/// Application Autostart Specification called `name` in `configFolder`. A failure shows at the next session.
void setAutostart(bool starts, const QString& name, const QString& program, const QString& configFolder);

/// A word of the command of a desktop entry, quoted where it must be.
QString quotedForEntry(const QString& word);

} // namespace palvera
