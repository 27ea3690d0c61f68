#include "installer/Tree.h"

#include "installer/Refused.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace palvera::installer {

FileDescriptor openFolder(const FileDescriptor& parent, const QByteArray& name)
{
    return FileDescriptor(::openat(parent.number(), name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

FileDescriptor openFile(const FileDescriptor& parent, const QByteArray& name)
{
    // Without O_NONBLOCK a pipe of that name would keep us waiting.
    return FileDescriptor(::openat(parent.number(), name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

QByteArrayList namesIn(const FileDescriptor& folder)
{
    // The stream closes what it is given, and moves its offset.
    const int again = ::openat(folder.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, decltype([](DIR* each) { ::closedir(each); })> stream(again < 0 ? nullptr
                                                                                               : ::fdopendir(again));
    if (!stream)
        throwNotStored();
    QByteArrayList names;
    errno = 0;
    while (const auto* entry = ::readdir(stream.get())) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            names << name;
        errno = 0;
    }
    if (errno != 0)
        throwNotStored();
    std::ranges::sort(names);
    return names;
}

bool removeTree(const FileDescriptor& parent, const QByteArray& name)
{
    if (::unlinkat(parent.number(), name.constData(), 0) == 0 || errno == ENOENT)
        return true;
    if (errno != EISDIR)
        return false;
    const auto folder = openFolder(parent, name);
    if (folder.number() < 0)
        return false;
    for (const auto& inner : namesIn(folder))
        if (!removeTree(folder, inner))
            return false;
    return ::unlinkat(parent.number(), name.constData(), AT_REMOVEDIR) == 0;
}

void writeAll(const FileDescriptor& file, QByteArrayView bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const auto count = ::write(file.number(), bytes.data() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count >= 0)
            done += count;
        else if (errno != EINTR)
            throwNotStored();
    }
}

void sync(const FileDescriptor& file)
{
    if (::fsync(file.number()) != 0 && errno != EINVAL) // EINVAL: a file system that cannot sync a folder
        throwNotStored();
}

void syncFolders(const FileDescriptor& folder)
{
    for (const auto& name : namesIn(folder))
        if (const auto inner = openFolder(folder, name); inner.number() >= 0)
            syncFolders(inner);
        else if (errno != ENOTDIR && errno != ELOOP) // a file, or a link
            throwNotStored();
    sync(folder);
}

} // namespace palvera::installer
