#include "installer/BuildsFolder.h"

#include "installer/Manifest.h"
#include "installer/Refused.h"
#include "installer/Tree.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace palvera::installer {

namespace {

constexpr qint64 reserve = 64 << 20; // bytes that others on that disk are left
constexpr const char* currentName = "current";
constexpr const char* lockName = "lock";
constexpr const char* unfinishedName = "new";
const QByteArray buildsPrefix = QByteArrayLiteral("builds/");

void requireOwn(const FileDescriptor& folder)
{
    struct stat found;
    if (::fstat(folder.number(), &found) != 0 || found.st_uid != ::geteuid() || (found.st_mode & (S_IWGRP | S_IWOTH)))
        throw Refused{Refusal::notOurs};
}

FileDescriptor makeFolder(const FileDescriptor& parent, const QByteArray& name, mode_t mode)
{
    if (::mkdirat(parent.number(), name.constData(), mode) != 0 && errno != EEXIST)
        throwNotStored();
    auto folder = openFolder(parent, name);
    if (folder.number() < 0)
        throwNotStored();
    requireOwn(folder);
    return folder;
}

void requireDone(int result)
{
    if (result != 0)
        throwNotStored();
}

} // namespace

BuildsFolder::BuildsFolder(const QString& root)
    : m_path(root), m_root(::open(QFile::encodeName(root).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_root.number() < 0 && errno != ENOENT)
        throwNotStored();
    requireOwn(m_root);
    m_work = makeFolder(m_root, ".work", 0711); // the build on trial is started from in there by nobody
    m_builds = makeFolder(m_root, "builds", 0755);
    m_lock = FileDescriptor(::openat(m_work.number(), lockName, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (m_lock.number() < 0)
        throwNotStored();
    if (::flock(m_lock.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK)
            throw Refused{Refusal::busy};
        throwNotStored();
    }
    if (!empty())
        throwNotStored();
}

BuildsFolder::~BuildsFolder()
{
    try {
        empty();
    } catch (const Refused&) { // the next start says so
    }
}

bool BuildsFolder::empty() const
{
    bool isEmpty = true;
    for (const auto& name : namesIn(m_work))
        isEmpty = isEmpty && (name == lockName || removeTree(m_work, name));
    return isEmpty;
}

qint64 BuildsFolder::current() const
{
    std::array<char, 64> text;
    const auto length = ::readlinkat(m_root.number(), currentName, text.data(), text.size());
    if (length < 0 && errno == ENOENT)
        return 0;
    const QByteArray target(text.data(), std::max<ssize_t>(length, 0));
    const auto build = target.startsWith(buildsPrefix) ? buildNumber(target.sliced(buildsPrefix.size())) : std::nullopt;
    if (!build)
        throw Refused{Refusal::foreignCopy};
    return *build;
}

QList<qint64> BuildsFolder::builds() const
{
    QList<qint64> numbers;
    for (const auto& name : namesIn(m_builds))
        if (const auto number = buildNumber(name))
            numbers << *number;
    std::ranges::sort(numbers);
    return numbers;
}

qint64 BuildsFolder::newest() const
{
    const auto all = builds();
    return all.isEmpty() ? 0 : all.last();
}

QByteArray BuildsFolder::manifestOf(qint64 build) const
{
    const auto folder = openFolder(m_builds, QByteArray::number(build));
    const auto file = openFile(folder, "manifest.json");
    QByteArray text(longestManifest, '\0');
    const auto count = ::pread(file.number(), text.data(), static_cast<std::size_t>(text.size()), 0);
    return text.first(std::max<ssize_t>(count, 0));
}

void BuildsFolder::requireRoom(qint64 bytes) const
{
    struct statvfs disk;
    requireDone(::fstatvfs(m_root.number(), &disk));
    if (static_cast<double>(disk.f_bavail) * static_cast<double>(disk.f_frsize) < static_cast<double>(bytes + reserve))
        throw Refused{Refusal::noRoom, m_path};
}

FileDescriptor BuildsFolder::makeFile() const
{
    // O_TMPFILE would need one call less, but not every file system has it.
    constexpr const char* name = "payload";
    FileDescriptor file(::openat(m_work.number(), name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (file.number() < 0)
        throwNotStored();
    requireDone(::unlinkat(m_work.number(), name, 0));
    return file;
}

FileDescriptor BuildsFolder::makeBuild() const
{
    requireDone(::mkdirat(m_work.number(), unfinishedName, 0755));
    auto folder = openFolder(m_work, unfinishedName);
    if (folder.number() < 0)
        throwNotStored();
    return folder;
}

void BuildsFolder::adopt(qint64 build)
{
    const auto name = QByteArray::number(build);
    if (!setAside(build) && errno != ENOENT)
        throwNotStored();
    requireDone(::renameat(m_work.number(), unfinishedName, m_builds.number(), name.constData()));
    sync(m_builds);
    sync(m_work);
}

void BuildsFolder::switchTo(qint64 build)
{
    m_predecessor = current();
    sync(m_builds); // what `current` is to lead to is on the disk before it leads there
    const auto target = buildsPrefix + QByteArray::number(build);
    requireDone(::symlinkat(target.constData(), m_work.number(), currentName));
    requireDone(::renameat(m_work.number(), currentName, m_root.number(), currentName));
}

bool BuildsFolder::setAside(qint64 build) const
{
    const auto name = QByteArray::number(build);
    return ::renameat(m_builds.number(), name.constData(), m_work.number(), ("old-" + name).constData()) == 0;
}

bool BuildsFolder::isRunning(qint64 build) const
{
    // A program that runs holds a shared lock on its manifest, which whoever may read it can take.
    const auto folder = openFolder(m_builds, QByteArray::number(build));
    const auto manifest = openFile(folder, "manifest.json");
    return manifest.number() >= 0 && ::flock(manifest.number(), LOCK_EX | LOCK_NB) != 0;
}

void BuildsFolder::sweep()
try {
    // The switch is on the disk before anything goes that the old `current` leads to. Where it cannot be put there the
    // build is current all the same, for whoever starts it; only a loss of power could bring back the one before, which
    // must be there then.
    sync(m_root);
    const auto now = current();
    const auto all = builds();
    const auto isOlder = [now](qint64 each) { return each < now; };
    if (!all.contains(m_predecessor) || !isOlder(m_predecessor)) {
        const auto last = std::ranges::find_if(all.rbegin(), all.rend(), isOlder);
        m_predecessor = last == all.rend() ? 0 : *last;
    }
    for (const auto each : all)
        if (isOlder(each) && each != m_predecessor && !isRunning(each))
            setAside(each); // and removed with all else that is in .work
} catch (const Refused&) {  // the update is installed: what is left over is no failure of it
}

} // namespace palvera::installer
