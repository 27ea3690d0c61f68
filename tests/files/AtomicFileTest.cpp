#include "FileFixture.h"

#include "files/AtomicFile.h"
#include "files/LockFile.h"
#include "files/SmallFile.h"
#include "support/FileCalls.h"

#include <QDateTime>

#include <sys/stat.h>

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct AtomicFileTest : FileFixture {
    const std::string target = root.filePath("target").toStdString();
    const QString staging = root.filePath("staging");

    void SetUp() override
    {
        QDir(root.path()).mkdir("target");
        QDir(root.path()).mkdir("staging");
        path = root.filePath("target/record.json");
    }
};

TEST_F(AtomicFileTest, replacesTheFileWithBytesThatAreOnTheDiskBeforeTheyTakeItsName)
{
    const auto bytes = patterned(200'000);
    writeFile(path, bytes + "that were there");
    const FileCalls calls;
    writeFileAtomically(path, bytes, staging);
    const auto all = calls.all();
    const std::string staged = all.front().substr(all.front().find('/'));
    EXPECT_TRUE(staged.starts_with(staging.toStdString() + "/.palvera-")) << staged;
    EXPECT_THAT(all, ElementsAre("write " + staged, "fsync " + staged, "rename " + staged + ' ' + path.toStdString(),
                                 "fsync " + target));
    EXPECT_EQ(readFile(path), bytes);
    EXPECT_THAT(entriesOf(root.filePath("target")), ElementsAre("record.json"));
    EXPECT_THAT(entriesOf(staging), IsEmpty());
}

TEST_F(AtomicFileTest, aWriteThatFailsAtAnyStepIsToldOfAndKeepsTheOldFile)
{
    writeFileAtomically(path, "old", staging);
    FileCalls calls;
    for (const char* step : {"write ", "fsync ", "rename "}) {
        calls.fail(step + staging.toStdString(), EIO);
        EXPECT_EQ(failureOf([&] { writeFileAtomically(path, "new", staging); }),
                  "“record.json” cannot be written: Input/output error.")
            << step;
        EXPECT_EQ(readFile(path), "old") << step;
        EXPECT_THAT(entriesOf(staging), IsEmpty()) << step;
    }
    calls.fail("fsync " + target, EIO);
    EXPECT_THROW(writeFileAtomically(path, "new", staging), FileError);
    calls.fail("fsync " + target, EINVAL);
    EXPECT_NO_THROW(writeFileAtomically(path, "new", staging)) << "a file system that cannot sync folders";
}

TEST_F(AtomicFileTest, sweepsOnlyOldStagingFilesOfOurs)
{
    const QString ours = ".palvera-0123456789abcdef0123456789abcdef.staging";
    const QString fresh = ".palvera-ffffffffffffffffffffffffffffffff.staging";
    const auto now = QDateTime::currentDateTimeUtc();
    for (const auto& name : {ours, fresh, QString("palvera-notes.staging"), "x" + ours, ours + ".json"}) {
        QFile file(staging + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const int hours = name == fresh ? 23 : 25;
        ASSERT_TRUE(file.setFileTime(now.addSecs(-hours * 3600), QFileDevice::FileModificationTime));
    }
    sweepStaging(staging, std::chrono::system_clock::from_time_t(now.toSecsSinceEpoch()));
    EXPECT_THAT(entriesOf(staging), ElementsAre(ours + ".json", fresh, "palvera-notes.staging", "x" + ours));
}

using SmallFileTest = FileFixture;

TEST_F(SmallFileTest, onlyAnOrdinaryFileOfModestSizeIsReadAndAddedToForItsOwnerAlone)
{
    const auto at = [this](const char* name) { return root.filePath(name); };
    appendToFile(at("file"), "12345");
    appendToFile(at("file"), "67890");
    EXPECT_EQ(QFile::permissions(at("file")) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    QFile::link(at("file"), at("link"));
    QFile::link(at("elsewhere"), at("dangling"));
    appendToFile(at("dangling"), "text");
    EXPECT_FALSE(QFile::exists(at("elsewhere")));
    ASSERT_EQ(::mkfifo(at("pipe").toUtf8().constData(), 0600), 0); // opening which would wait for ever
    const std::tuple<QString, qint64, std::optional<QByteArray>> cases[] = {
        {at("file"), 10, "1234567890"}, {at("file"), 9, {}},  {at("link"), 10, {}},    {at("pipe"), 10, {}},
        {root.path(), 10, {}},          {at("none"), 10, {}}, {"/dev/zero", 1000, {}},
    };
    for (const auto& [path, limit, read] : cases)
        EXPECT_EQ(readSmallFile(path, limit), read) << path.toStdString() << " " << limit;
}

using Outcome = LockFile::Outcome;

using LockFileTest = FileFixture;

TEST_F(LockFileTest, oneHasItAndLeavesAWordForWhoeverWaits)
{
    auto waiting = LockFile::open(path);
    {
        auto owner = LockFile::open(path);
        EXPECT_FALSE(LockFile::isHeld(path));
        EXPECT_EQ(owner.tryLock(), Outcome::taken);
        owner.setNote("a longer note");
        owner.setNote("at it");
        EXPECT_TRUE(LockFile::isHeld(path));
        EXPECT_EQ(waiting.tryLock(), Outcome::held);
        EXPECT_EQ(waiting.note(), "at it");
        owner.setNote("done");
    }
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(waiting.tryLock(), Outcome::released) << "it must not be taken for that of the next file";
    EXPECT_EQ(waiting.note(), "done");
    EXPECT_EQ(LockFile::open(path).tryLock(), Outcome::taken);
    EXPECT_THROW(LockFile::open(root.filePath("nowhere/lock")), FileError);
}

} // namespace
} // namespace palvera
