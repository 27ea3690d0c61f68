#include "async/Process.h"

#include "async/Failure.h"

#include <boost/system/system_error.hpp>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <new>
#include <system_error>

#include <sys/resource.h>
#include <unistd.h>

namespace palvera {

namespace {

void allowManyFiles()
{
    constexpr rlim_t enough = 65'536; // some programs that are started from here look at every number
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= enough)
        return;
    limit.rlim_cur = std::min(limit.rlim_max, enough);
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

[[noreturn]] void endWith(const QByteArray& sentence)
{
    (void)!::write(STDERR_FILENO, sentence.constData(), std::size_t(sentence.size()));
    std::_Exit(EXIT_FAILURE);
}

/// Of what is small: a coroutine that cannot go on for want of a few bytes would be waited for for ever. Large buffers
/// are asked for otherwise, and their want ends one transfer.
[[noreturn]] void endForWantOfMemory()
{
    endWith(QByteArrayLiteral("There is not enough memory.\n")); // which takes none
}

/// A fault of the program still leaves its trace for whoever looks for it.
[[noreturn]] void endWithSentence()
{
    const auto failure = std::current_exception();
    if (failureAs<std::bad_alloc>(failure))
        endForWantOfMemory();
    if (failureAs<std::system_error>(failure) || failureAs<boost::system::system_error>(failure))
        endWith(describe(failure).toUtf8() + '\n');
    std::abort();
}

bool isIgnored(int signal)
{
    struct sigaction now{};
    return ::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

} // namespace

void prepareProcess()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    allowManyFiles();
    std::set_new_handler(endForWantOfMemory);
    std::set_terminate(endWithSentence);
}

EndSignals::EndSignals(const Executor& main, std::function<void()> end) : m_signals(main)
{
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal))
            m_signals.add(signal);
    m_signals.async_wait([this, end = std::move(end)](const boost::system::error_code& failure, int) {
        if (failure)
            return;
        m_signals.clear();
        end();
    });
}

} // namespace palvera
