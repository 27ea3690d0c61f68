#pragma once

#include "async/Task.h"

namespace palvera {

class PasskeyService;

namespace cli {

class Output;

/// Asks on the terminal what a security key asks for, until it is cancelled or the terminal gives no more, which is a
/// Failure. Main thread; both outlive it.
Task<void> answerPrompts(PasskeyService& service, Output& output);

} // namespace cli

} // namespace palvera
