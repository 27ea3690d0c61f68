#pragma once

#include <QString>

#include <exception>

namespace palvera::cli {

/// What the program ends with.
enum class ExitCode {
    done = 0,
    failed = 1,
    usage = 2,
    notSignedIn = 3,
    confirmationNeeded = 4, ///< the platform asks about a delivery before it takes it
    unreachable = 5,        ///< the platform, not storage
    diskFull = 6,
    interrupted = 130,
};

/// The code for a command that ended with `failure`; done when that is null.
ExitCode exitCodeFor(const std::exception_ptr& failure);

/// Of two files' codes the one to end with: an interruption before all, a question before success.
ExitCode worse(ExitCode a, ExitCode b);

/// What to do about `code`, in one line for the user; empty when the failure's own text says all there is.
QString adviceFor(ExitCode code);

} // namespace palvera::cli
