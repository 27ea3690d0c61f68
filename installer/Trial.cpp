#include "installer/Trial.h"

#include "installer/Refused.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" { // which glibc 2.36 leaves to whoever includes it
#include <sys/pidfd.h>
}

namespace palvera::installer {

namespace {

using Clock = std::chrono::steady_clock;

constexpr qsizetype longestOutput = 4096; // bytes
constexpr uid_t nobody = 65534;
constexpr int cannotStart = 127;

// The home is one that does not exist: what the program keeps for its user is not for a trial to read or write.
constexpr std::array environment{"PATH=/usr/bin:/bin",          "LANG=C.UTF-8",
                                 "QT_QPA_PLATFORM=offscreen",   "QT_QUICK_BACKEND=software",
                                 "HOME=/nonexistent",           "XDG_CONFIG_HOME=/nonexistent",
                                 "XDG_DATA_HOME=/nonexistent",  "XDG_STATE_HOME=/nonexistent",
                                 "XDG_CACHE_HOME=/nonexistent", "XDG_RUNTIME_DIR=/nonexistent"};

bool limitTo(__rlimit_resource_t resource, rlim_t most)
{
    const rlimit limit{most, most};
    return ::setrlimit(resource, &limit) == 0;
}

/// The worker's own limit of memory is not the program's.
bool liftMemoryLimit()
{
    rlimit limit;
    if (::getrlimit(RLIMIT_AS, &limit) != 0)
        return false;
    limit.rlim_cur = limit.rlim_max;
    return ::setrlimit(RLIMIT_AS, &limit) == 0;
}

bool becomeNobody()
{
    return ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
           ::setresuid(nobody, nobody, nobody) == 0;
}

/// In the child, where only calls to the system are allowed until the program is there.
[[noreturn]] void becomeProgram(const FileDescriptor& folder, int in, int out, pid_t parent)
{
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::signal(SIGPIPE, SIG_DFL);
    ::signal(SIGXFSZ, SIG_IGN); // what it tries to write fails, which need not be its end
    const bool isReady = ::setsid() >= 0 && ::dup2(in, STDIN_FILENO) >= 0 && ::dup2(out, STDOUT_FILENO) >= 0 &&
                         ::dup2(in, STDERR_FILENO) >= 0 && ::fchdir(folder.number()) == 0 &&
                         ::close_range(STDERR_FILENO + 1, ~0U, 0) == 0 && limitTo(RLIMIT_FSIZE, 0) &&
                         limitTo(RLIMIT_CORE, 0) && liftMemoryLimit() && (::geteuid() != 0 || becomeNobody()) &&
                         ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
                         ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && // after the change of user, which undoes it
                         ::getppid() == parent;
    if (isReady) {
        std::array<const char*, 3> words{"palvera", "--self-test", nullptr};
        std::array<const char*, environment.size() + 1> variables{};
        for (std::size_t place = 0; place < environment.size(); ++place)
            variables[place] = environment[place];
        ::execve("bin/palvera", const_cast<char* const*>(words.data()), const_cast<char* const*>(variables.data()));
    }
    ::_exit(cannotStart);
}

/// Adds what there is to read. False at the end of it, or when it is too much.
bool readSome(const FileDescriptor& pipe, QByteArray& output)
{
    std::array<char, 512> block;
    const auto count = ::read(pipe.number(), block.data(), block.size());
    if (count > 0)
        output.append(block.data(), count);
    return count > 0 ? output.size() <= longestOutput : count < 0 && (errno == EINTR || errno == EAGAIN);
}

/// Collects the output until the program has ended. False when it does not end in time, or says too much.
bool waitForEnd(const FileDescriptor& program, const FileDescriptor& pipe, Clock::time_point deadline,
                QByteArray& output)
{
    std::array<pollfd, 2> waits{pollfd{program.number(), POLLIN, 0}, pollfd{pipe.number(), POLLIN, 0}};
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        const int count = left > 0 ? ::poll(waits.data(), waits.size(), static_cast<int>(left)) : 0;
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        if (count < 0)
            continue;
        if (waits[1].revents != 0 && !readSome(pipe, output)) {
            if (output.size() > longestOutput)
                return false;
            waits[1].fd = -1;
        } else if (waits[1].revents == 0 && waits[0].revents != 0) // and all that it said has been read
            return true;
    }
}

} // namespace

void tryBuild(const FileDescriptor& folder, const QByteArray& expected, std::chrono::milliseconds limit,
              const std::function<void(pid_t)>& changed)
{
    const auto deadline = Clock::now() + limit;
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throwNotStored();
    const FileDescriptor out(ends[0]);
    FileDescriptor in(ends[1]);
    const FileDescriptor null(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (null.number() < 0 || ::fcntl(out.number(), F_SETFL, O_NONBLOCK) != 0)
        throwNotStored();
    const pid_t parent = ::getpid(), child = ::fork();
    if (child < 0)
        throwNotStored();
    if (child == 0)
        becomeProgram(folder, null.number(), in.number(), parent);
    in.close();
    changed(child);
    const FileDescriptor program(::pidfd_open(child, 0));
    QByteArray output;
    const bool hasEnded = program.number() >= 0 && waitForEnd(program, out, deadline, output);
    // The group before its leader is waited for, whose number could then be another's.
    ::kill(-child, SIGKILL);
    ::kill(child, SIGKILL);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    changed(0);
    if (!hasEnded || !WIFEXITED(status) || WEXITSTATUS(status) != 0 || output != expected)
        throw Refused{Refusal::doesNotRun};
}

} // namespace palvera::installer
