#include "cli/Program.h"

#include "platform/EnginePool.h"
#include "platform/HttpSession.h"
#include "platform/NetworkThreads.h"
#include "service/API.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>

#include <QCoreApplication>

#include <csignal>
#include <random>

namespace palvera::cli {

namespace asio = boost::asio;

namespace {

double drawSpread()
{
    thread_local std::minstd_rand generator(std::random_device{}());
    return std::uniform_real_distribution<>(0.8, 1.2)(generator);
}

/// Each lane's session keeps to one thread. Like the engine pool's, these are never released.
std::unique_ptr<HttpClient> makeStorageClient()
{
    static auto& threads = *new NetworkThreads;
    return std::make_unique<HttpSession>(threads.next(), HttpSessionOptions::storage());
}

} // namespace

Program::Program(Output& output)
    : m_output(output),
      m_preferences(m_folders.preferences()),
      m_journals(m_folders.applicationSupport),
      m_uploader({.engine = enginePool().get_executor(),
                  .clock = m_clock,
                  .api = API::shared(),
                  .storage = makeStorageClient,
                  .journals = m_journals,
                  .libraryFolder = m_folders.library,
                  .spread = drawSpread}),
      m_mainThread(enginePool()),
      m_bench{.clock = m_clock,
              .preferences = m_preferences,
              .api = API::shared(),
              .journals = m_journals,
              .uploader = m_uploader,
              .output = m_output,
              .mainThread = m_mainThread.executor(),
              .stop = std::make_shared<CancelFlag>()}
{}

ExitCode Program::run(const Command& command)
{
    asio::signal_set signals(m_bench.mainThread, SIGINT, SIGTERM);
    signals.async_wait([this, &signals](boost::system::error_code failure, int) {
        if (failure)
            return;
        signals.clear(); // the next one ends the process: journals hold all that is worth keeping
        m_bench.stop->stop();
    });
    std::optional<ExitCode> ended;
    std::exception_ptr failure;
    auto quit = [&](std::exception_ptr thrown) {
        failure = thrown;
        QCoreApplication::quit();
    };
    // Posted, since the event loop ignores a quit that comes before it runs.
    asio::post(m_bench.mainThread, [&] {
        asio::co_spawn(m_bench.mainThread, runUntilStopped(m_bench.stop, perform(command, ended)), quit);
    });
    QCoreApplication::exec();
    return ended ? *ended : report(failure);
}

Task<void> Program::perform(Command command, std::optional<ExitCode>& ended)
{
    ended = co_await std::visit([this](auto& chosen) { return cli::perform(std::move(chosen), m_bench); }, command);
}

ExitCode Program::report(const std::exception_ptr& failure)
{
    auto code = exitCodeFor(failure);
    if (code == ExitCode::interrupted)
        m_output.interrupted({{QStringLiteral("event"), QStringLiteral("interrupted")}});
    else
        m_output.fail(describe(failure));
    if (auto advice = adviceFor(code); !advice.isEmpty())
        m_output.remark(advice);
    return code;
}

} // namespace palvera::cli
