// Preloaded into a program, fails one of its calls to the system, as PALVERA_FAULT=CLASS:N:HOW says: the Nth of its
// class on any thread, or each from there on for "N+". HOW is an errno's number, "short" for half of the bytes, or
// "cut-before" and "cut-after": the file system at PALVERA_FAULT_DISK loses all that was not synced, and the program is
// killed. PALVERA_FAULT_COUNTS names a file that holds how many calls of each class there were, 64 bits each, in the
// order of `Class`; it is mapped, so that it tells this of a program that was killed too.

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

enum Class {
    Open,
    Read,
    Write,
    Sync,
    Rename,
    Truncate,
    Unlink,
    Mkdir,
    Stat,
    Lock,
    Socket,
    Connect,
    Send,
    Receive,
    Poll,
    Events,
    Thread,
    Map,
    ClassCount
};
constexpr std::array<std::string_view, ClassCount> names{"open",   "read",    "write", "sync",   "rename", "truncate",
                                                         "unlink", "mkdir",   "stat",  "lock",   "socket", "connect",
                                                         "send",   "receive", "poll",  "events", "thread", "map"};

struct Fault {
    int which = ClassCount;
    std::uint64_t first = 0;
    bool goesOn = false;
    bool isShort = false;
    bool cutsBefore = false, cutsAfter = false;
    int error = 0;
};

Fault fault;
std::atomic<std::uint64_t>* counts = nullptr;
int disk = -1;

__attribute__((constructor)) void readFault()
{
    if (const char* path = std::getenv("PALVERA_FAULT_COUNTS")) {
        const int file = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC));
        void* mapped = ::mmap(nullptr, sizeof(std::uint64_t) * ClassCount, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        ::close(file);
        if (mapped == MAP_FAILED)
            std::abort();
        counts = static_cast<std::atomic<std::uint64_t>*>(mapped);
    }
    if (const char* path = std::getenv("PALVERA_FAULT_DISK"))
        disk = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC));
    const char* text = std::getenv("PALVERA_FAULT");
    if (!text)
        return;
    const std::string_view all = text;
    const auto afterName = all.find(':'), beforeHow = all.rfind(':');
    fault.first = std::strtoull(text + afterName + 1, nullptr, 10);
    fault.goesOn = all[beforeHow - 1] == '+';
    const auto how = all.substr(beforeHow + 1);
    fault.isShort = how == "short";
    fault.cutsBefore = how == "cut-before";
    fault.cutsAfter = how == "cut-after";
    fault.error = std::atoi(how.data());
    fault.which = static_cast<int>(std::ranges::find(names, all.substr(0, afterName)) - names.begin());
    if (fault.which == ClassCount)
        std::abort();
}

[[noreturn]] void cutPower()
{
    constexpr unsigned long shutdown = _IOR('X', 125, std::uint32_t); // EXT4_IOC_SHUTDOWN, without flushing the log
    std::uint32_t withoutLog = 2;
    ::syscall(SYS_ioctl, disk, shutdown, &withoutLog);
    ::syscall(SYS_kill, ::syscall(SYS_getpid), SIGKILL);
    std::abort();
}

bool isMeant(Class which)
{
    const auto number = counts ? ++counts[which] : 0;
    return which == fault.which && (number == fault.first || (fault.goesOn && number > fault.first));
}

/// Makes the call, or not. `half`, where there is one, makes it with half of the bytes.
template <class Call, class Half = Call>
auto perform(Class which, const Call& call, const Half* half = nullptr)
{
    if (!isMeant(which))
        return call();
    if (fault.cutsBefore)
        cutPower();
    if (fault.cutsAfter) {
        call();
        cutPower();
    }
    if (fault.isShort)
        return half ? (*half)() : call();
    errno = fault.error;
    return static_cast<decltype(call())>(-1);
}

bool isFile(int file)
{
    struct stat found;
    return ::syscall(SYS_fstat, file, &found) == 0 && S_ISREG(found.st_mode);
}

template <class Function>
Function next(Function, const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

std::size_t halfOf(std::size_t size)
{
    return std::max<std::size_t>(size / 2, 1);
}

} // namespace

#define REAL(name) static const auto real = next(&::name, #name)

#define PLAIN(which, result, name, parameters, ...)                                                                    \
    extern "C" result name parameters                                                                                  \
    {                                                                                                                  \
        REAL(name);                                                                                                    \
        return perform(which, [&] { return real(__VA_ARGS__); });                                                      \
    }

/// A call that moves `size` bytes of a file.
#define BYTES(which, name, buffer, ...)                                                                                \
    extern "C" ssize_t name(int file, buffer data, size_t size __VA_OPT__(, off_t offset))                             \
    {                                                                                                                  \
        REAL(name);                                                                                                    \
        auto whole = [&] { return real(file, data, size __VA_OPT__(, offset)); };                                      \
        auto half = [&] { return real(file, data, halfOf(size) __VA_OPT__(, offset)); };                               \
        return isFile(file) ? perform(which, whole, &half) : whole();                                                  \
    }

#define OPEN(name, before, ...)                                                                                        \
    extern "C" int name(__VA_OPT__(__VA_ARGS__, ) const char* path, int flags, ...)                                    \
    {                                                                                                                  \
        REAL(name);                                                                                                    \
        va_list rest;                                                                                                  \
        va_start(rest, flags);                                                                                         \
        const mode_t mode = flags & (O_CREAT | __O_TMPFILE) ? va_arg(rest, mode_t) : 0;                                \
        va_end(rest);                                                                                                  \
        return perform(Open, [&] { return real(before path, flags, mode); });                                          \
    }

#define FOLDER folder,
OPEN(open, )
OPEN(open64, )
OPEN(openat, FOLDER, int folder)
OPEN(openat64, FOLDER, int folder)
BYTES(Read, read, void*)
BYTES(Read, pread, void*, offset)
BYTES(Read, pread64, void*, offset)
BYTES(Write, write, const void*)
BYTES(Write, pwrite, const void*, offset)
BYTES(Write, pwrite64, const void*, offset)
PLAIN(Sync, int, fsync, (int file), file)
PLAIN(Sync, int, fdatasync, (int file), file)
PLAIN(Rename, int, rename, (const char* from, const char* to), from, to)
PLAIN(Rename, int, renameat, (int from, const char* a, int to, const char* b), from, a, to, b)
PLAIN(Rename, int, renameat2, (int from, const char* a, int to, const char* b, unsigned flags), from, a, to, b, flags)
PLAIN(Truncate, int, ftruncate, (int file, off_t size), file, size)
PLAIN(Truncate, int, ftruncate64, (int file, off64_t size), file, size)
PLAIN(Truncate, int, fallocate, (int file, int mode, off_t from, off_t size), file, mode, from, size)
PLAIN(Truncate, int, fallocate64, (int file, int mode, off64_t from, off64_t size), file, mode, from, size)
PLAIN(Unlink, int, unlink, (const char* path), path)
PLAIN(Unlink, int, unlinkat, (int folder, const char* path, int flags), folder, path, flags)
PLAIN(Mkdir, int, mkdir, (const char* path, mode_t mode), path, mode)
PLAIN(Stat, int, fstat, (int file, struct stat* into), file, into)
PLAIN(Stat, int, stat, (const char* path, struct stat* into), path, into)
PLAIN(Stat, int, lstat, (const char* path, struct stat* into), path, into)
PLAIN(Stat, int, statvfs, (const char* path, struct statvfs* into), path, into)
PLAIN(Stat, int, fstatvfs, (int file, struct statvfs* into), file, into)
PLAIN(Stat, int, statx, (int folder, const char* path, int flags, unsigned mask, struct statx* into), folder, path,
      flags, mask, into)
PLAIN(Lock, int, flock, (int file, int operation), file, operation)
PLAIN(Socket, int, socket, (int domain, int type, int protocol), domain, type, protocol)
PLAIN(Connect, int, connect, (int file, const sockaddr* to, socklen_t size), file, to, size)
PLAIN(Poll, int, poll, (pollfd * list, nfds_t count, int limit), list, count, limit)
PLAIN(Poll, int, epoll_wait, (int file, epoll_event* events, int count, int limit), file, events, count, limit)
PLAIN(Events, int, epoll_create1, (int flags), flags)
PLAIN(Events, int, eventfd, (unsigned value, int flags), value, flags)
PLAIN(Events, int, timerfd_create, (clockid_t clock, int flags), clock, flags)

extern "C" void* mmap(void* at, size_t size, int mode, int flags, int file, off_t from)
{
    REAL(mmap);
    return reinterpret_cast<void*>(
        perform(Map, [&] { return reinterpret_cast<std::intptr_t>(real(at, size, mode, flags, file, from)); }));
}

extern "C" ssize_t send(int file, const void* data, size_t size, int flags)
{
    REAL(send);
    auto half = [&] { return real(file, data, halfOf(size), flags); };
    return perform(Send, [&] { return real(file, data, size, flags); }, &half);
}

extern "C" ssize_t sendmsg(int file, const msghdr* message, int flags)
{
    REAL(sendmsg);
    return perform(Send, [&] { return real(file, message, flags); });
}

extern "C" ssize_t recv(int file, void* data, size_t size, int flags)
{
    REAL(recv);
    auto half = [&] { return real(file, data, halfOf(size), flags); };
    return perform(Receive, [&] { return real(file, data, size, flags); }, &half);
}

extern "C" ssize_t recvmsg(int file, msghdr* message, int flags)
{
    REAL(recvmsg);
    return perform(Receive, [&] { return real(file, message, flags); });
}

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*), void* argument)
{
    REAL(pthread_create);
    auto call = [&] { return real(thread, attributes, body, argument); };
    return perform(Thread, call) == -1 ? fault.error : 0;
}
