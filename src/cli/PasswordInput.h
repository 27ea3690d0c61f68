#pragma once

#include "async/Task.h"
#include "desktop/PasskeyService.h"

#include <QString>

namespace palvera::cli {

// Cancelling ends either wait, with the terminal as it was.

/// The first line of standard input, without its end. Throws Failure when there is none.
Task<QString> passwordFromStandardInput();

/// Asks for a password on the terminal, without showing what is typed. Throws Failure when the program has no terminal.
Task<QString> passwordFromTerminal(QString prompt);

/// The same for the PIN of a security key.
Task<Pin> pinFromTerminal(QString prompt);

/// The same for an address that ends a sign-in in the browser.
Task<QString> addressFromTerminal(QString prompt);

/// The same for a code, which is shown, and empty where the user entered nothing.
Task<QString> codeFromTerminal(QString prompt);

/// The same for the number of an account.
Task<QString> numberFromTerminal(QString prompt);

/// Whether the program has a terminal to ask on.
bool hasTerminal();

} // namespace palvera::cli
