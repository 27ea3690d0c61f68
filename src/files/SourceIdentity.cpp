#include "files/SourceIdentity.h"

#include "files/FileDescriptor.h"
#include "files/SourcePath.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace palvera {

namespace {

/// File systems without inode numbers of their own, or whose numbers come from a program: after they were unmounted a
/// number may stand for another file. Those of exFAT, SMB and 9P are missing in the header, or in older ones.
bool makesNumbersUp(const FileDescriptor& file)
{
    static constexpr std::array<quint32, 6> systems{FUSE_SUPER_MAGIC, MSDOS_SUPER_MAGIC, 0x2011BAB0,
                                                    0xFF534D42,       0xFE534D42,        0x01021997};
    struct statfs system{};
    return ::fstatfs(file.number(), &system) != 0 ||
           std::ranges::find(systems, quint32(system.f_type)) != systems.end();
}

QByteArray handleOf(const FileDescriptor& file)
{
    if (makesNumbersUp(file))
        return {};
    alignas(file_handle) std::array<std::byte, sizeof(file_handle) + MAX_HANDLE_SZ> room{};
    auto* handle = new (room.data()) file_handle{.handle_bytes = MAX_HANDLE_SZ, .handle_type = 0};
    int mount = 0;
    if (::name_to_handle_at(file.number(), "", handle, &mount, AT_EMPTY_PATH) != 0)
        return {};
    auto bytes = QByteArray(reinterpret_cast<const char*>(handle->f_handle), qsizetype(handle->handle_bytes));
    return QByteArray::number(handle->handle_type) + ':' + bytes;
}

} // namespace

std::optional<SourceIdentity> identityOf(const QString& path)
{
    // Only a name for it: nothing is read, no pipe waits and no permission on the file itself is asked for.
    const FileDescriptor file(::open(pathToBytes(path).constData(), O_PATH | O_CLOEXEC));
    if (file.number() < 0)
        return {};
    return identityOf(file);
}

std::optional<SourceIdentity> identityOf(const FileDescriptor& file)
{
    struct stat status{};
    if (::fstat(file.number(), &status) != 0)
        return {};
    SourceIdentity identity{.handle = handleOf(file)};
    if (!S_ISDIR(status.st_mode)) {
        constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
        identity.size = status.st_size;
        identity.changed = status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec;
    }
    return identity;
}

} // namespace palvera
