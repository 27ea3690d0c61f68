#include "FileFixture.h"

#include "files/Bookmark.h"

namespace palvera {
namespace {

using bookmark::Resolved;

struct BookmarkTest : FileFixture {
    void SetUp() override { append(path, ""); }
};

TEST_F(BookmarkTest, findsAFileOrAFolderWhereItWas)
{
    for (const auto& place : {path, root.path()})
        EXPECT_EQ(bookmark::resolve(bookmark::make(place).value()), (Resolved{.path = place, .stale = false}));
    EXPECT_EQ(bookmark::make(root.filePath("missing.mov")), std::nullopt);
}

TEST_F(BookmarkTest, findsARenamedFileAndSaysSoWhateverTookItsName)
{
    const auto bytes = bookmark::make(path).value();
    const QString renamed = root.filePath(".hidden ümlaut.mov");
    ASSERT_TRUE(QFile::rename(path, renamed));
    EXPECT_EQ(bookmark::resolve(bytes), (Resolved{.path = renamed, .stale = true}));
    append(path, "another");
    EXPECT_EQ(bookmark::resolve(bytes), (Resolved{.path = renamed, .stale = true}));
}

TEST_F(BookmarkTest, aFileThatLeftItsFolderIsLost)
{
    const auto bytes = bookmark::make(path).value();
    QDir(root.path()).mkdir("elsewhere");
    ASSERT_TRUE(QFile::rename(path, root.filePath("elsewhere/master.mov")));
    EXPECT_EQ(bookmark::resolve(bytes), std::nullopt);
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
