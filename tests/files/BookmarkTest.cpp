#include "files/Bookmark.h"
#include "support/QtPrinting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using bookmark::Resolved;

struct BookmarkTest : testing::Test {
    QTemporaryDir root;
    QString path = root.filePath("master.mov");

    void SetUp() override { put(path); }

    static void put(const QString& file)
    {
        QFile opened(file);
        ASSERT_TRUE(opened.open(QIODevice::WriteOnly));
    }
};

TEST_F(BookmarkTest, findsTheFileWhereItWas)
{
    const auto bytes = bookmark::make(path);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bookmark::resolve(*bytes), (Resolved{.path = path, .stale = false}));
}

TEST_F(BookmarkTest, findsAFolder)
{
    const auto bytes = bookmark::make(root.path());
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bookmark::resolve(*bytes), (Resolved{.path = root.path(), .stale = false}));
}

TEST_F(BookmarkTest, findsARenamedFileAndSaysSo)
{
    const auto bytes = bookmark::make(path);
    const QString renamed = root.filePath(".hidden ümlaut.mov");
    ASSERT_TRUE(QFile::rename(path, renamed));
    EXPECT_EQ(bookmark::resolve(bytes.value()), (Resolved{.path = renamed, .stale = true}));
}

TEST_F(BookmarkTest, anotherFileUnderTheNameIsNotTakenForIt)
{
    const auto bytes = bookmark::make(path);
    ASSERT_TRUE(QFile::rename(path, root.filePath("renamed.mov")));
    put(path);
    EXPECT_EQ(bookmark::resolve(bytes.value()), (Resolved{.path = root.filePath("renamed.mov"), .stale = true}));
}

TEST_F(BookmarkTest, aFileThatLeftItsFolderIsLost)
{
    const auto bytes = bookmark::make(path);
    QDir(root.path()).mkdir("elsewhere");
    ASSERT_TRUE(QFile::rename(path, root.filePath("elsewhere/master.mov")));
    EXPECT_EQ(bookmark::resolve(bytes.value()), std::nullopt);
}

TEST_F(BookmarkTest, nothingIsNotBookmarked)
{
    EXPECT_EQ(bookmark::make(root.filePath("missing.mov")), std::nullopt);
}

TEST_F(BookmarkTest, otherBytesAreNoBookmark)
{
    const QByteArray good = bookmark::make(path).value();
    EXPECT_EQ(bookmark::resolve({}), std::nullopt);
    EXPECT_EQ(bookmark::resolve("not a bookmark"), std::nullopt);
    for (qsizetype length = 0; length < good.size(); ++length)
        EXPECT_EQ(bookmark::resolve(good.left(length)), std::nullopt) << length;
    QByteArray otherKind = good;
    otherKind[0] = 'X';
    EXPECT_EQ(bookmark::resolve(otherKind), std::nullopt);
}

} // namespace
} // namespace palvera
