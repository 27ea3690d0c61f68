#pragma once

#include "cli/Errands.h"

namespace palvera {

class API;
class JournalStore;
class Preferences;
class Session;
class Transfers;

namespace cli {

/// What commands work with; all of it outlives them. They run on the main thread.
struct Workbench {
    API& api;
    Preferences& preferences;
    Session& session;
    Transfers& transfers;
    const JournalStore& journals;
    Output& output;
    Clock& clock;
    Executor mainThread;
    Executor background;                ///< threads for disk work
    std::shared_ptr<CancelFlag> stop;   ///< stopped when the user interrupts the program
    std::shared_ptr<CancelFlag> cutOff; ///< cuts downloads off that were to finish what is in flight
    bool stopOnInterrupt = false;       ///< an interruption gives up what is in flight

    Errands::Environment errands() const
    {
        return {.transfers = transfers,
                .output = output,
                .clock = clock,
                .mainThread = mainThread,
                .stop = stop,
                .cutOff = cutOff,
                .stopOnInterrupt = stopOnInterrupt};
    }
};

} // namespace cli

} // namespace palvera
