#include "support/FileCalls.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <mutex>
#include <utility>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace palvera {

namespace {

std::atomic<FileCalls*> listing = nullptr;
std::mutex lock;
// Guarded by `lock`.
std::vector<std::string> calls;
std::string failing;
int failure = 0;

/// Calls the system itself and lists the call, both under the lock, so that the list has the order of the deeds.
template <class... Arguments>
long perform(const std::string& call, long number, Arguments... arguments)
{
    const std::lock_guard guard(lock);
    if (!call.starts_with("write") || calls.empty() || calls.back() != call)
        calls.push_back(call);
    if (failure == 0 || !call.starts_with(failing))
        return ::syscall(number, arguments...);
    errno = failure;
    return -1;
}

template <class... Arguments>
long performOn(const char* name, long number, int file, Arguments... arguments)
{
    if (!listing)
        return ::syscall(number, file, arguments...);
    std::error_code none;
    const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), none).string();
    if (!path.starts_with('/')) // a socket or a pipe, on which the call may block
        return ::syscall(number, file, arguments...);
    return perform(name + (' ' + path), number, file, arguments...);
}

std::size_t atOnce(std::size_t count)
{
    return listing ? std::min<std::size_t>(count, 300) : count;
}

} // namespace

FileCalls::FileCalls()
{
    const std::lock_guard guard(lock);
    calls.clear();
    failure = 0;
    listing = this;
}

FileCalls::~FileCalls()
{
    listing = nullptr;
}

std::vector<std::string> FileCalls::all() const
{
    const std::lock_guard guard(lock);
    return calls;
}

void FileCalls::fail(const std::string& start, int error)
{
    const std::lock_guard guard(lock);
    failing = start;
    failure = error;
}

} // namespace palvera

extern "C" {

ssize_t write(int file, const void* bytes, size_t count)
{
    return palvera::performOn("write", SYS_write, file, bytes, palvera::atOnce(count));
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset)
{
    return palvera::performOn("write", SYS_pwrite64, file, bytes, palvera::atOnce(count), offset);
}

int fsync(int file)
{
    return int(palvera::performOn("fsync", SYS_fsync, file));
}

int fdatasync(int file)
{
    const long result = palvera::performOn("fdatasync", SYS_fdatasync, file);
    const int error = errno;
    auto* calls = palvera::listing.load();
    if (auto happens = calls ? std::exchange(calls->whileSyncing, nullptr) : nullptr)
        happens();
    errno = error;
    return int(result);
}

int rename(const char* from, const char* to) noexcept
{
    if (!palvera::listing)
        return int(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
    const auto call = std::string("rename ") + from + ' ' + to;
    return int(palvera::perform(call, SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}
}
