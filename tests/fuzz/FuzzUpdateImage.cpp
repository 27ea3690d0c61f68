#include "Require.h"

#include "installer/Image.h"
#include "installer/Refused.h"
#include "installer/Tree.h"
#include "installer/Unpack.h"

#include <QTemporaryDir>

#include <cerrno>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace palvera {

namespace {

using namespace installer;

FileDescriptor memoryFile(const QByteArray& bytes)
{
    FileDescriptor file(::memfd_create("input", MFD_CLOEXEC));
    require(::pwrite(file.number(), bytes.constData(), static_cast<std::size_t>(bytes.size()), 0) == bytes.size(),
            "there is memory");
    return file;
}

/// A folder in memory, gone at the end, with one in it that inputs are unpacked into.
class Outside {
public:
    void unpackInside(const QByteArray& archive) const
    {
        require(::mkdirat(m_folder.number(), "build", 0755) == 0, "the folder is empty");
        const auto build = openFolder(m_folder, "build");
        try {
            unpack({.unpackedSize = 1 << 16, .files = 50}, memoryFile(archive), build);
        } catch (const Refused&) { // NOLINT(bugprone-empty-catch): what was unpacked before it is looked at
        }
        requireSound(build, build, {});
        require(namesIn(m_folder) == QByteArrayList{"build"}, "nothing lies outside");
        require(removeTree(m_folder, "build"), "it can be removed");
    }

private:
    static void requireSound(const FileDescriptor& top, const FileDescriptor& folder, const QByteArray& path)
    {
        for (const auto& name : namesIn(folder)) {
            struct stat found;
            require(::fstatat(folder.number(), name.constData(), &found, AT_SYMLINK_NOFOLLOW) == 0, "it is there");
            require(S_ISREG(found.st_mode) || S_ISDIR(found.st_mode) || S_ISLNK(found.st_mode),
                    "it is of a sound kind");
            require(S_ISLNK(found.st_mode) || (found.st_mode & 07022) == 0, "only we may write it");
            if (S_ISDIR(found.st_mode))
                requireSound(top, openFolder(folder, name), path + name + '/');
            else
                requireInside(top, path + name);
        }
    }

    /// The kernel says so when a way leads out, be it over a link.
    static void requireInside(const FileDescriptor& top, const QByteArray& path)
    {
        open_how how{.flags = O_PATH | O_CLOEXEC, .mode = 0, .resolve = RESOLVE_BENEATH};
        const FileDescriptor file(
            static_cast<int>(::syscall(SYS_openat2, top.number(), path.constData(), &how, sizeof how)));
        require(file.number() >= 0 || errno != EXDEV, "it leads inside");
    }

    QTemporaryDir m_temporary{"/dev/shm/palvera-fuzz-XXXXXX"};
    FileDescriptor m_folder{::open(m_temporary.path().toUtf8().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
};

} // namespace

// A file that says it is an update: its manifest and header, or, where the first byte is odd, its archive.
void check(const QByteArray& input)
{
    static const Outside outside;
    ::umask(022);
    const auto bytes = input.sliced(1);
    if (input.front() % 2 != 0)
        return outside.unpackInside(bytes);
    try {
        const auto manifest = readManifest(bytes);
        require(manifest.build > 0 && manifest.size > 0 && manifest.files > 0, "its numbers are in their ranges");
        require(buildNumber(QByteArray::number(manifest.build)) == manifest.build, "a build has one name");
    } catch (const Refused&) { // NOLINT(bugprone-empty-catch): as it should be
    }
    try {
        Image(memoryFile(bytes), {PublicKey(32, '\1')});
        require(false, "nobody has signed it");
    } catch (const Refused&) { // NOLINT(bugprone-empty-catch): as it should be
    }
}

} // namespace palvera
