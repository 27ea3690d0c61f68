#include "session/SignInDoors.h"

namespace palvera {

Task<QString> NoWebSignIn::signIn(QByteArray /*address*/)
{
    throw SignInDoorError(QStringLiteral("The sign-in window could not open."));
    co_return QString(); // makes it a coroutine
}

Task<void> NoPasskeySignIn::signIn()
{
    throw SignInDoorError(QStringLiteral("Nothing here holds passkeys."));
    co_return;
}

} // namespace palvera
