// Preloaded into a program, fails one of its calls to the system, as PALVERA_FAULT=CLASS:N:HOW says: the Nth of its
// class on any thread. HOW is an errno's number, "short" for half of the bytes, or "cut-before" and "cut-after": the
// file system at PALVERA_FAULT_DISK loses all that was not synced, and the program is killed. PALVERA_FAULT_COUNTS
// names a file that holds how many calls of each class there were, 64 bits each, in the order of `names`; it is mapped,
// so that it tells this of a program that was killed too.

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

constexpr std::array<std::string_view, 18> names{"open",   "read",    "write", "sync",   "rename", "truncate",
                                                 "unlink", "mkdir",   "stat",  "lock",   "socket", "connect",
                                                 "send",   "receive", "poll",  "events", "thread", "map"};

/// The place of a class among the names, which the compiler finds.
consteval std::size_t placeOf(std::string_view name)
{
    const auto* found = std::ranges::find(names, name);
    return found < names.end() ? static_cast<std::size_t>(found - names.begin()) : throw "there is no such class";
}

struct Fault {
    std::size_t which = names.size();
    std::uint64_t number = 0;
    std::string_view how;
};

Fault fault;
std::atomic<std::uint64_t>* counts = nullptr;
int disk = -1;

__attribute__((constructor)) void readFault()
{
    if (const char* path = std::getenv("PALVERA_FAULT_COUNTS")) {
        const int file = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC));
        void* mapped =
            ::mmap(nullptr, sizeof(std::uint64_t) * names.size(), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
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
    fault = {.which = static_cast<std::size_t>(std::ranges::find(names, all.substr(0, afterName)) - names.begin()),
             .number = std::strtoull(text + afterName + 1, nullptr, 10),
             .how = all.substr(beforeHow + 1)};
    if (fault.which == names.size())
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

bool isMeant(std::size_t which)
{
    const auto number = counts ? ++counts[which] : 0;
    return which == fault.which && number == fault.number;
}

/// Makes the call, or not. `half`, where there is one, makes it with half of the bytes.
template <class Call, class Half = Call>
auto perform(std::size_t which, const Call& call, const Half* half = nullptr)
{
    if (!isMeant(which))
        return call();
    if (fault.how == "cut-before")
        cutPower();
    if (fault.how == "cut-after") {
        call();
        cutPower();
    }
    if (fault.how == "short")
        return half ? (*half)() : call();
    errno = std::atoi(fault.how.data());
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
        return perform(placeOf(which), [&] { return real(__VA_ARGS__); });                                             \
    }

/// A call that moves `size` bytes of what `isMeantFor` holds for.
#define BYTES(which, isMeantFor, name, buffer, ...)                                                                    \
    extern "C" ssize_t name(int file, buffer data, size_t size __VA_OPT__(, __VA_ARGS__ last))                         \
    {                                                                                                                  \
        REAL(name);                                                                                                    \
        auto whole = [&] { return real(file, data, size __VA_OPT__(, last)); };                                        \
        auto half = [&] { return real(file, data, halfOf(size) __VA_OPT__(, last)); };                                 \
        return isMeantFor(file) ? perform(placeOf(which), whole, &half) : whole();                                     \
    }

#define OPEN(name, before, ...)                                                                                        \
    extern "C" int name(__VA_OPT__(__VA_ARGS__, ) const char* path, int flags, ...)                                    \
    {                                                                                                                  \
        REAL(name);                                                                                                    \
        va_list rest;                                                                                                  \
        va_start(rest, flags);                                                                                         \
        const mode_t mode = flags & (O_CREAT | __O_TMPFILE) ? va_arg(rest, mode_t) : 0;                                \
        va_end(rest);                                                                                                  \
        return perform(placeOf("open"), [&] { return real(before path, flags, mode); });                               \
    }

#define FOLDER folder,
OPEN(open, )
OPEN(open64, )
OPEN(openat, FOLDER, int folder)
OPEN(openat64, FOLDER, int folder)
BYTES("read", isFile, read, void*)
BYTES("read", isFile, pread, void*, off_t)
BYTES("read", isFile, pread64, void*, off_t)
BYTES("write", isFile, write, const void*)
BYTES("write", isFile, pwrite, const void*, off_t)
BYTES("write", isFile, pwrite64, const void*, off_t)
PLAIN("sync", int, fsync, (int file), file)
PLAIN("sync", int, fdatasync, (int file), file)
PLAIN("rename", int, rename, (const char* from, const char* to), from, to)
PLAIN("rename", int, renameat, (int from, const char* a, int to, const char* b), from, a, to, b)
PLAIN("rename", int, renameat2, (int from, const char* a, int to, const char* b, unsigned flags), from, a, to, b, flags)
PLAIN("truncate", int, ftruncate, (int file, off_t size), file, size)
PLAIN("truncate", int, ftruncate64, (int file, off64_t size), file, size)
PLAIN("truncate", int, fallocate, (int file, int mode, off_t from, off_t size), file, mode, from, size)
PLAIN("truncate", int, fallocate64, (int file, int mode, off64_t from, off64_t size), file, mode, from, size)
PLAIN("unlink", int, unlink, (const char* path), path)
PLAIN("unlink", int, unlinkat, (int folder, const char* path, int flags), folder, path, flags)
PLAIN("mkdir", int, mkdir, (const char* path, mode_t mode), path, mode)
PLAIN("mkdir", int, mkdirat, (int folder, const char* path, mode_t mode), folder, path, mode)
PLAIN("mkdir", int, symlinkat, (const char* to, int folder, const char* path), to, folder, path)
PLAIN("stat", int, fstat, (int file, struct stat* into), file, into)
PLAIN("stat", int, stat, (const char* path, struct stat* into), path, into)
PLAIN("stat", int, lstat, (const char* path, struct stat* into), path, into)
PLAIN("stat", int, statvfs, (const char* path, struct statvfs* into), path, into)
PLAIN("stat", int, fstatvfs, (int file, struct statvfs* into), file, into)
PLAIN("stat", int, statx, (int folder, const char* path, int flags, unsigned mask, struct statx* into), folder, path,
      flags, mask, into)
PLAIN("lock", int, flock, (int file, int operation), file, operation)
PLAIN("socket", int, socket, (int domain, int type, int protocol), domain, type, protocol)
PLAIN("connect", int, connect, (int file, const sockaddr* to, socklen_t size), file, to, size)
BYTES("send", !isFile, send, const void*, int)
BYTES("receive", !isFile, recv, void*, int)
PLAIN("send", ssize_t, sendmsg, (int file, const msghdr* message, int flags), file, message, flags)
PLAIN("receive", ssize_t, recvmsg, (int file, msghdr* message, int flags), file, message, flags)
PLAIN("poll", int, poll, (pollfd * list, nfds_t count, int limit), list, count, limit)
PLAIN("poll", int, epoll_wait, (int file, epoll_event* events, int count, int limit), file, events, count, limit)
PLAIN("events", int, epoll_create1, (int flags), flags)
PLAIN("events", int, eventfd, (unsigned value, int flags), value, flags)
PLAIN("events", int, timerfd_create, (clockid_t clock, int flags), clock, flags)

extern "C" void* mmap(void* at, size_t size, int mode, int flags, int file, off_t from)
{
    REAL(mmap);
    return reinterpret_cast<void*>(perform(
        placeOf("map"), [&] { return reinterpret_cast<std::intptr_t>(real(at, size, mode, flags, file, from)); }));
}

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*), void* argument)
{
    REAL(pthread_create);
    auto call = [&] { return real(thread, attributes, body, argument); };
    const int result = perform(placeOf("thread"), call);
    return result == -1 ? errno : result;
}
