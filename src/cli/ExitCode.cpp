#include "cli/ExitCode.h"

#include "files/FileError.h"
#include "http/TransportError.h"
#include "service/APIError.h"
#include "transfers/RetryRules.h"

#include <algorithm>
#include <array>

namespace palvera::cli {

ExitCode exitCodeFor(const std::exception_ptr& failure)
{
    if (!failure)
        return ExitCode::done;
    if (isCancellation(failure))
        return ExitCode::interrupted;
    if (auto error = failureAs<APIError>(failure)) {
        if (isDeliveryDoubt(failure))
            return ExitCode::confirmationNeeded;
        return error->asksToSignIn() ? ExitCode::notSignedIn : ExitCode::failed;
    }
    if (auto error = failureAs<FileError>(failure); error && error->isFull())
        return ExitCode::diskFull;
    // Storage's failures come as an APIError, once all attempts at a part are used up.
    return failureAs<TransportError>(failure) ? ExitCode::unreachable : ExitCode::failed;
}

ExitCode worse(ExitCode a, ExitCode b)
{
    constexpr std::array byGravity{ExitCode::done,     ExitCode::confirmationNeeded, ExitCode::failed,
                                   ExitCode::diskFull, ExitCode::notSignedIn,        ExitCode::unreachable,
                                   ExitCode::usage,    ExitCode::interrupted};
    auto gravity = [&](ExitCode code) { return std::find(byGravity.begin(), byGravity.end(), code); };
    return gravity(a) < gravity(b) ? b : a;
}

QString adviceFor(ExitCode code)
{
    switch (code) {
    case ExitCode::notSignedIn:
        return QStringLiteral("Sign in with: palvera-cli sign-in --email E (or --web)");
    case ExitCode::unreachable:
        return QStringLiteral("Check the connection, and the site with: palvera-cli site");
    case ExitCode::diskFull:
        return QStringLiteral("Make room and give the same command again: it goes on with what has arrived.");
    case ExitCode::done:
    case ExitCode::failed:
    case ExitCode::usage:
    case ExitCode::confirmationNeeded:
    case ExitCode::interrupted:
        break;
    }
    return {};
}

} // namespace palvera::cli
