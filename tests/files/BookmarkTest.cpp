#include "FileFixture.h"

#include "files/Bookmark.h"

namespace palvera {
namespace {

using bookmark::Resolved;

struct BookmarkTest : FileFixture {
    void SetUp() override { writeFile(path, ""); }
};

TEST_F(BookmarkTest, findsAFileOrAFolderUnderAnyNameAndSaysSoUnlessAnotherTookItsName)
{
    for (const auto& place : {path, root.filePath("folder")}) {
        QDir(root.path()).mkdir("folder");
        const auto bytes = bookmark::make(place).value();
        EXPECT_EQ(bookmark::resolve(bytes), (Resolved{.path = place, .stale = false}));
        if (identityOf(place)->handle.isEmpty())
            GTEST_SKIP() << "a file system without handles";
        const QString renamed = root.filePath(".hidden ümlaut");
        ASSERT_TRUE(QFile::rename(place, renamed));
        EXPECT_EQ(bookmark::resolve(bytes), (Resolved{.path = renamed, .stale = true}));
        writeFile(place, "another");
        EXPECT_EQ(bookmark::resolve(bytes), (Resolved{.path = place, .stale = true})) << "the path wins";
        QFile::remove(place);
        ASSERT_TRUE(QDir(renamed).exists() ? QDir(renamed).removeRecursively() : QFile::remove(renamed));
    }
}

TEST_F(BookmarkTest, nothingElseIsTakenForAFileThatIsGone)
{
    writeFile(path, "film");
    const auto bytes = bookmark::make(path).value();
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(bookmark::make(path), std::nullopt);
    for (int number = 0; number < 50; ++number) // some of them under its inode number
        writeFile(root.filePath(QString::number(number)), "film");
    EXPECT_EQ(bookmark::resolve(bytes), std::nullopt);
    writeFile(path, "film");
    const auto known = bookmark::make(path).value();
    const auto renamed = root.filePath("renamed.mov");
    ASSERT_TRUE(QFile::rename(path, renamed));
    writeFile(renamed, "film and more");
    EXPECT_EQ(bookmark::resolve(known), std::nullopt) << "it is not what it was";
}

TEST_F(BookmarkTest, otherBytesAreNoBookmark)
{
    const QByteArray good = bookmark::make(path).value();
    for (qsizetype length = 0; length < good.size(); ++length)
        EXPECT_EQ(bookmark::resolve(good.left(length)), std::nullopt) << length;
    EXPECT_EQ(bookmark::resolve("X" + good.sliced(1)), std::nullopt);
}

} // namespace
} // namespace palvera
