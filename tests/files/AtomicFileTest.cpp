#include "files/AtomicFile.h"
#include "files/FileError.h"
#include "support/QtPrinting.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <atomic>
#include <csignal>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>

namespace palvera {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

struct AtomicFileTest : testing::Test {
    QTemporaryDir root;
    QString target = root.filePath("target");
    QString staging = root.filePath("staging");
    QString path = target + "/record.json";

    void SetUp() override
    {
        QDir().mkpath(target);
        QDir().mkpath(staging);
    }

    static QByteArray contentOf(const QString& file)
    {
        QFile opened(file);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("cannot be opened");
    }
    static QStringList entriesOf(const QString& folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    static mode_t modeOf(const QString& file)
    {
        struct stat status{};
        ::stat(QFile::encodeName(file).constData(), &status);
        return status.st_mode & 0777;
    }
    static void put(const QString& file, const QByteArray& bytes, const QDateTime& modified)
    {
        QFile opened(file);
        ASSERT_TRUE(opened.open(QIODevice::WriteOnly));
        opened.write(bytes);
        opened.flush();
        ASSERT_TRUE(opened.setFileTime(modified, QFileDevice::FileModificationTime));
    }
};

/// Lets no file of this process grow past `bytes`, as a full disk would.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{.rlim_cur = bytes, .rlim_max = m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }

private:
    void (*m_signal)(int);
    rlimit m_before{};
};

TEST_F(AtomicFileTest, replacesTheFileAndLeavesNothingBesideIt)
{
    writeFileAtomically(path, "a longer first text", staging);
    writeFileAtomically(path, "second", staging);

    EXPECT_EQ(contentOf(path), "second");
    EXPECT_THAT(entriesOf(target), ElementsAre("record.json"));
    EXPECT_THAT(entriesOf(staging), IsEmpty());
}

TEST_F(AtomicFileTest, onlyTheOwnerMayReadWhatIsPrivate)
{
    const mode_t before = ::umask(022);
    writeFileAtomically(path, "x", staging);
    EXPECT_EQ(modeOf(path), 0644u);
    writeFileAtomically(path, "x", staging, FileAccess::ownerOnly);
    EXPECT_EQ(modeOf(path), 0600u);
    ::umask(before);
}

TEST_F(AtomicFileTest, aWriteThatFailsHalfWayKeepsTheOldFile)
{
    writeFileAtomically(path, "old", staging);
    {
        const FileSizeLimit fullDisk(1000);
        EXPECT_THROW(writeFileAtomically(path, QByteArray(5000, 'n'), staging), FileError);
    }
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_THAT(entriesOf(staging), IsEmpty());
}

TEST_F(AtomicFileTest, aTargetThatCannotBeReplacedFailsWithItsNameAndReason)
{
    QDir().mkpath(path + "/not empty");
    try {
        writeFileAtomically(path, "x", staging);
        FAIL() << "a folder was replaced";
    } catch (const FileError& error) {
        EXPECT_EQ(error.text(), "“record.json” cannot be written: Is a directory.");
    }
    EXPECT_THAT(entriesOf(staging), IsEmpty());
}

TEST_F(AtomicFileTest, aMissingFolderFails)
{
    EXPECT_THROW(writeFileAtomically(path, "x", root.filePath("nowhere")), FileError);
    EXPECT_THROW(writeFileAtomically(root.filePath("nowhere/record"), "x", staging), FileError);
    EXPECT_THAT(entriesOf(staging), IsEmpty());
}

TEST_F(AtomicFileTest, aReaderSeesOneOrTheOtherWhole)
{
    const QByteArray first(20'000, 'a');
    const QByteArray second(20'000, 'b');
    writeFileAtomically(path, first, staging);
    std::atomic<bool> ended = false;
    std::thread writer([&] {
        for (int count = 0; count < 50; ++count)
            writeFileAtomically(path, count % 2 ? first : second, staging);
        ended = true;
    });
    while (!ended)
        EXPECT_THAT(contentOf(path), AnyOf(first, second));
    writer.join();
}

TEST_F(AtomicFileTest, sweepsOnlyOldStagingFilesOfOurs)
{
    const QString ours = ".palvera-0123456789abcdef0123456789abcdef.staging";
    const QString fresh = ".palvera-ffffffffffffffffffffffffffffffff.staging";
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const QDateTime old = now.addSecs(-25 * 3600);
    put(staging + '/' + ours, "x", old);
    put(staging + '/' + fresh, "x", now.addSecs(-23 * 3600));
    put(staging + "/palvera-notes.staging", "x", old);
    put(staging + "/x" + ours, "x", old);
    put(staging + '/' + ours + ".json", "x", old);

    sweepStaging(staging, std::chrono::system_clock::from_time_t(now.toSecsSinceEpoch()));

    EXPECT_THAT(entriesOf(staging), ElementsAre(ours + ".json", fresh, "palvera-notes.staging", "x" + ours));
}

} // namespace
} // namespace palvera
