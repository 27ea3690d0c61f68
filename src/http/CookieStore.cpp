#include "http/CookieStore.h"

#include "files/AtomicFile.h"
#include "files/FileError.h"
#include "files/Folders.h"
#include "files/LockFile.h"
#include "files/SmallFile.h"
#include "http/CookieFile.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QObject>

#include <cerrno>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr qint64 largestFile = 4 << 20;
/// The platform sets a handful. Each request takes all of its host's along, so more would make every one longer.
constexpr int mostOfOneDomain = 64;

/// By domain, path and name.
using Cookies = QMap<QByteArrayList, QByteArray>;

Cookies byName(const QByteArrayList& lines)
{
    Cookies cookies;
    for (const auto& line : lines) {
        auto fields = line.split('\t');
        cookies[{fields[0].replace("#HttpOnly_", ""), fields[2], fields[5]}] = line;
    }
    return cookies;
}

/// Those that outlast the program.
QByteArrayList keptOf(const QByteArrayList& cookies)
{
    return readCookies(cookies.join('\n'), std::chrono::system_clock::now());
}

/// The lock of the file at `path`, or none when somebody keeps it for longer than a write takes, or none is to be had:
/// a program that stands still must not hold the others up.
std::optional<LockFile> lockOf(const QString& path)
{
    try {
        for (auto left = 200; left > 0; --left) {
            auto lock = LockFile::open(path + QStringLiteral(".lock"));
            if (lock.tryLock() == LockFile::Outcome::taken)
                return lock;
            std::this_thread::sleep_for(10ms);
        }
    } catch (const FileError&) {
        // Then the last one to write wins.
    }
    return {};
}

} // namespace

CookieStore::CookieStore(QString file) : m_file(std::move(file))
{
    if (!m_file.isEmpty())
        sweepStaging(QFileInfo(m_file).absolutePath(), std::chrono::system_clock::now());
}

std::shared_ptr<CookieJar> CookieStore::jar()
{
    std::lock_guard guard(m_mutex);
    if (!m_file.isEmpty() && fileIdentity() != m_seen)
        merge();
    return m_jar;
}

void CookieStore::clear()
{
    std::lock_guard guard(m_mutex);
    m_jar = std::make_shared<CookieJar>();
    setProblem({});
    if (m_file.isEmpty())
        return;
    auto lock = lockOf(m_file);
    const auto path = QFile::encodeName(m_file);
    if (::unlink(path.constData()) == 0 || errno == ENOENT || ::truncate(path.constData(), 0) == 0) {
        m_common.clear();
    } else {
        m_common = keptOf(read().split('\n')); // to be removed with the next change
        setProblem(QObject::tr("The sign-in that was kept in %1 could not be removed.").arg(m_file));
    }
    m_seen = fileIdentity();
}

void CookieStore::save()
{
    std::lock_guard guard(m_mutex);
    QHash<QByteArray, int> counts;
    QByteArrayList beyond; // the latest first
    for (const auto& line : m_jar->all())
        if (++counts[line.left(line.indexOf('\t'))] > mostOfOneDomain)
            beyond.append(line);
    m_jar->remove(beyond);
    if (m_file.isEmpty())
        return;
    if (keptOf(m_jar->all()) != m_common)
        merge();
    const auto all = m_jar->all();
    if (problem().isEmpty() && !all.isEmpty() && keptOf(all).isEmpty())
        setProblem(QObject::tr("The platform's sign-in ends with the program."));
}

QString CookieStore::problem() const
{
    std::lock_guard guard(m_problemMutex);
    return m_problem;
}

void CookieStore::setProblem(const QString& problem)
{
    std::lock_guard guard(m_problemMutex);
    m_problem = problem;
}

/// Brings jar and file together: what changed in the one since they agreed goes into the other. Where both changed,
/// the jar has it.
void CookieStore::merge()
{
    const auto folder = QFileInfo(m_file).absolutePath();
    makePrivateFolder(folder);
    auto lock = lockOf(m_file);
    setProblem({});
    const auto common = byName(keptOf(m_common));
    const auto ours = byName(keptOf(m_jar->all()));
    const auto theirs = byName(keptOf(read().split('\n')));
    auto merged = ours;
    QByteArrayList taken;
    QByteArrayList gone;
    for (auto it = theirs.begin(); it != theirs.end(); ++it) {
        if (ours.value(it.key()) != common.value(it.key()) || *it == common.value(it.key()))
            continue;
        taken.append(*it);
        merged[it.key()] = *it;
    }
    for (auto it = common.begin(); it != common.end(); ++it) {
        if (theirs.contains(it.key()) || ours.value(it.key()) != *it)
            continue;
        gone.append(*it);
        merged.remove(it.key());
    }
    m_jar->put(taken);
    m_jar->remove(gone);
    try {
        if (merged != theirs) {
            writeFileAtomically(m_file, writeCookies(merged.values()), folder, FileAccess::ownerOnly);
            setProblem({});
        }
        m_common = keptOf(m_jar->all());
    } catch (const FileError& error) {
        setProblem(error.text()); // in memory they serve this run, and the next save tries again
    }
    m_seen = fileIdentity();
}

/// Notes a file that is there and cannot be read.
QByteArray CookieStore::read()
{
    auto contents = readSmallFile(m_file, largestFile);
    if (!contents && QFileInfo::exists(m_file))
        setProblem(QObject::tr("The sign-in that is kept in %1 cannot be read.").arg(m_file));
    return contents.value_or(QByteArray());
}

CookieStore::Identity CookieStore::fileIdentity() const
{
    struct stat found{};
    if (::stat(QFile::encodeName(m_file).constData(), &found) != 0)
        return {};
    constexpr qint64 second = 1'000'000'000;
    return {qint64(found.st_dev), qint64(found.st_ino), qint64(found.st_size),
            found.st_mtim.tv_sec * second + found.st_mtim.tv_nsec};
}

} // namespace palvera
