#pragma once

#include <QString>

namespace palvera {

/// `text` without what nobody sees or what turns the direction of writing around: control and format characters, breaks
/// of lines, letters that are blank. The two joiners stay: names in Persian and emoji need them.
QString visibleText(const QString& text);

} // namespace palvera
