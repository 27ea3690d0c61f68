#include "cli/Program.h"

#include "async/TaskGroup.h"
#include "async/TaskScope.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/post.hpp>

#include <QCoreApplication>

namespace palvera::cli {

namespace asio = boost::asio;

Program::Program(Invocation invocation, Output& output)
    : m_invocation(std::move(invocation)),
      m_output(output),
      m_preferences(m_folders.preferences()),
      m_connections(Connections::make(m_folders, m_preferences)),
      m_engines(m_folders, m_clock, m_connections),
      m_mainThread(m_connections.engine.context()),
      m_signals(m_mainThread.executor(), [this] { m_stop->stop(); }),
      m_session({.main = m_mainThread.executor(),
                 .background = m_connections.engine.executor(),
                 .clock = m_clock,
                 .api = m_connections.api,
                 .preferences = m_preferences,
                 .network = m_engines.environment(m_mainThread.executor()).network}),
      m_transfers(environment(), {.retries = m_invocation.retry ? mostRetries : 0, .keepsWaiting = false}),
      m_bench{.api = m_connections.api,
              .preferences = m_preferences,
              .session = m_session,
              .transfers = m_transfers,
              .journals = m_engines.journals(),
              .output = m_output,
              .clock = m_clock,
              .mainThread = m_mainThread.executor(),
              .background = m_connections.engine.executor(),
              .stop = m_stop,
              .cutOff = m_cutOff,
              .stopOnInterrupt = m_invocation.stopOnInterrupt}
{}

Transfers::Environment Program::environment()
{
    auto environment = m_engines.environment(m_mainThread.executor());
    environment.download = [this, download = environment.download](DownloadRequest request) {
        return runUntilStopped(m_cutOff, download(std::move(request)));
    };
    return environment;
}

ExitCode Program::run()
{
    m_output.remark(m_preferences.setAside());
    m_output.remark(m_connections.api.serviceProblem());
    if (m_connections.api.isServiceExposed())
        m_output.remark(QStringLiteral("The service address that PV_API names is not encrypted: others on the way can "
                                       "read along."));
    std::optional<ExitCode> ended;
    std::exception_ptr failure;
    auto quit = [&](std::exception_ptr thrown) {
        failure = thrown;
        QCoreApplication::quit();
    };
    // Posted, since the event loop ignores a quit that comes before it runs.
    asio::post(m_bench.mainThread, [&] { asio::co_spawn(m_bench.mainThread, carryOut(ended), quit); });
    QCoreApplication::exec();
    return ended ? *ended : report(failure);
}

Task<void> Program::carryOut(std::optional<ExitCode>& ended)
{
    TaskScope limits(m_bench.mainThread);
    if (m_invocation.limitRate)
        m_engines.shares().set({.up = *m_invocation.limitRate, .down = *m_invocation.limitRate});
    else
        limits.start(keepLineLimits(m_preferences, m_clock, m_engines.shares()));
    auto outcome = co_await outcomeOf(runUntilStopped(m_bench.stop, perform(ended)));
    co_await limits.close();
    co_await m_transfers.suspend(); // what it still does in the background must not outlive the program
    if (outcome.failure)
        std::rethrow_exception(outcome.failure);
}

Task<void> Program::perform(std::optional<ExitCode>& ended)
{
    ended =
        co_await std::visit([this](const auto& chosen) { return cli::perform(chosen, m_bench); }, m_invocation.command);
}

ExitCode Program::report(const std::exception_ptr& failure)
{
    auto code = exitCodeFor(failure);
    if (code == ExitCode::interrupted)
        m_output.interrupted({{QStringLiteral("event"), QStringLiteral("interrupted")}});
    else
        m_output.fail(describe(failure));
    if (code == ExitCode::notSignedIn)
        m_output.remark(m_connections.api.signInProblem()); // it may have been signed in before
    m_output.remark(adviceFor(code));
    return code;
}

} // namespace palvera::cli
