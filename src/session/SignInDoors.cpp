#include "session/SignInDoors.h"

namespace palvera {

Task<void> NoPasskeySignIn::signIn()
{
    throw SignInDoorError(QStringLiteral("Nothing here holds passkeys."));
    co_return;
}

} // namespace palvera
