#pragma once

#include <QString>
#include <QStringList>

namespace palvera {

struct PasskeyPrompt;

// What a security key asks for, in words for the user.

/// What to do; empty when nothing.
QString textFor(const PasskeyPrompt& prompt);
/// What went wrong, or is about to; empty when nothing.
QString noteFor(const PasskeyPrompt& prompt);
/// The accounts to choose from, of which the key may have no names.
QStringList accountsOf(const PasskeyPrompt& prompt);

} // namespace palvera
