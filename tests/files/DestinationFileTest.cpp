#include "FileFixture.h"

#include "files/DestinationFile.h"
#include "support/FileCalls.h"

#include <sys/stat.h>

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using DestinationFileTest = FileFixture;

TEST_F(DestinationFileTest, holdsZerosUntilItIsWrittenInRoomThatIsReservedOrSaysHowMuchIsMissing)
{
    auto file = DestinationFile::open(path);
    file.reset(8);
    file.writeAt(5, std::string_view("xyz"));
    file.reset(6);
    EXPECT_EQ(readFile(path), QByteArray(6, '\0')); // nothing of before
    file.writeAt(4, std::string_view("ef"));
    file.writeAt(0, std::string_view("ab"));
    EXPECT_EQ(readFile(path), QByteArray("ab\0\0ef", 6));
    EXPECT_EQ(file.identity().size, 6);
    constexpr qint64 size = 3 << 20;
    file.reset(size);
    struct stat status{};
    ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
    EXPECT_GE(status.st_blocks * 512, size);
    EXPECT_THAT(failureOf([&] { file.reset(1LL << 60); }),
                HasSubstr("There is not enough room for “master.mov”: it needs 1152921.5 TB, and "));
    EXPECT_EQ(file.identity().size, 0);
}

TEST_F(DestinationFileTest, syncPutsWhatWasWrittenOnTheDiskOrFails)
{
    FileCalls calls;
    auto file = DestinationFile::open(path);
    file.writeAt(0, std::string_view("ab"));
    file.sync();
    EXPECT_THAT(calls.all(), ElementsAre("write " + path.toStdString(), "fdatasync " + path.toStdString()));
    for (const char* step : {"write", "fdatasync"}) {
        calls.fail(step, EIO);
        EXPECT_EQ(failureOf([&] {
                      file.writeAt(0, std::string_view("cd"));
                      file.sync();
                  }),
                  "“master.mov” cannot be written: Input/output error.");
    }
}

TEST_F(DestinationFileTest, opensNothingButAnOrdinaryFileAndMakesOneOnlyWhereNothingStands)
{
    ASSERT_TRUE(QFile::link(root.filePath("elsewhere"), root.filePath("link")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(root.filePath("pipe")).constData(), 0600), 0);
    for (const char* name : {"link", "pipe", "", "no folder/x"})
        EXPECT_NE(failureOf([&] { DestinationFile::open(root.filePath(name)); }), "") << name;
    EXPECT_FALSE(QFile::exists(root.filePath("elsewhere")));
    EXPECT_TRUE(DestinationFile::create(path));
    EXPECT_FALSE(DestinationFile::create(path)) << "somebody was quicker";
}

TEST_F(DestinationFileTest, noticesThatItsNameLeadsElsewhere)
{
    for (bool replaced : {false, true}) {
        auto file = DestinationFile::open(path);
        ASSERT_TRUE(QFile::remove(path));
        if (replaced)
            writeFile(path, "");
        EXPECT_EQ(failureOf([&] { file.sync(); }), "“master.mov” was moved or removed while it was being downloaded.");
        QFile::remove(path);
    }
}

} // namespace
} // namespace palvera
