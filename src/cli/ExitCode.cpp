#include "cli/ExitCode.h"

#include "service/APIError.h"

#include <algorithm>
#include <array>

namespace palvera::cli {

ExitCode exitCodeFor(const std::exception_ptr& failure)
{
    if (!failure)
        return ExitCode::done;
    if (isCancellation(failure))
        return ExitCode::interrupted;
    try {
        std::rethrow_exception(failure);
    } catch (const APIError& error) {
        if (error.code() == QStringLiteral("delivery_doubt"))
            return ExitCode::confirmationNeeded;
        return error.status() == 401 ? ExitCode::notSignedIn : ExitCode::failed;
    } catch (const TransportError&) {
        return ExitCode::unreachable; // storage's failures come as an APIError, once all attempts at a part are used up
    } catch (...) {
        return ExitCode::failed;
    }
}

ExitCode worse(ExitCode a, ExitCode b)
{
    constexpr std::array byGravity{ExitCode::done,        ExitCode::confirmationNeeded, ExitCode::failed,
                                   ExitCode::notSignedIn, ExitCode::unreachable,        ExitCode::usage,
                                   ExitCode::interrupted};
    auto gravity = [&](ExitCode code) { return std::find(byGravity.begin(), byGravity.end(), code); };
    return gravity(a) < gravity(b) ? b : a;
}

QString adviceFor(ExitCode code)
{
    switch (code) {
    case ExitCode::notSignedIn:
        return QStringLiteral("Sign in with: palvera-cli sign-in --email E");
    case ExitCode::unreachable:
        return QStringLiteral("Check the connection, and the site with: palvera-cli site");
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
