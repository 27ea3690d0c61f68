#pragma once

#include <QString>

namespace palvera {

/// More than anybody reads of a name or a message.
inline constexpr qsizetype longestText = 2'000;

enum class Lines {
    one,
    several, ///< breaks of lines stay
};

/// `text`, which may come from anywhere, as it can be shown on a screen or a terminal, be part of a file's name or
/// stand in a log: without what nobody sees, what turns the direction of writing around or what a terminal obeys. Other
/// white space is a blank, half a surrogate pair U+FFFD. The two joiners stay: names in Persian and emoji need them. A
/// letter carries at most six marks. What has more characters than `longest` ends in "…".
QString visibleText(const QString& text, Lines lines = Lines::one, qsizetype longest = longestText);
/// The name of something on one line, or `other`, such as its identifier, where the name shows nothing.
QString visibleName(const QString& name, const QString& other);

} // namespace palvera
