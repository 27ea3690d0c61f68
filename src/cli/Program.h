#pragma once

#include "async/MainThread.h"
#include "async/Process.h"
#include "cli/Commands.h"
#include "files/Folders.h"
#include "files/Preferences.h"
#include "service/Connections.h"
#include "session/Session.h"
#include "transfers/TransferEngines.h"

namespace palvera::cli {

/// Builds all that commands work with and runs one of them. Main thread, within a QCoreApplication.
class Program {
public:
    /// For `invocation`, to be carried out with `run`.
    Program(Invocation invocation, Output& output);

    /// Carries the command out in the application's event loop, reports a failure and returns the program's exit code.
    /// The first SIGINT, SIGTERM or SIGHUP stops the command, which ends as interrupted; a second one ends the process:
    /// journals hold all that is worth keeping.
    ExitCode run();

private:
    Transfers::Environment environment();
    Task<void> carryOut(std::optional<ExitCode>& ended);
    Task<void> perform(std::optional<ExitCode>& ended);
    ExitCode report(const std::exception_ptr& failure);

    const Invocation m_invocation;
    Output& m_output;
    const Folders m_folders = Folders::ofUser();
    SystemClock m_clock;
    Preferences m_preferences;
    const Connections m_connections;
    TransferEngines m_engines;
    MainThread m_mainThread;
    const std::shared_ptr<CancelFlag> m_stop = std::make_shared<CancelFlag>();
    const std::shared_ptr<CancelFlag> m_cutOff = std::make_shared<CancelFlag>();
    const EndSignals m_signals; // what may throw comes before what begins to work
    Session m_session;
    Transfers m_transfers;
    Workbench m_bench;
};

} // namespace palvera::cli
