#include "FileFixture.h"

#include "files/Bookmark.h"
#include "files/FileTypes.h"
#include "files/SourceFile.h"
#include "files/SourcePath.h"

#include <sys/stat.h>

namespace palvera {
namespace {

struct SourceFileTest : FileFixture {
    void SetUp() override { writeFile(path, "0123456789"); }
};

TEST_F(SourceFileTest, readsWhatIsThereAndLessOnlyAtTheEnd)
{
    const auto file = SourceFile::open(path);
    file.willNeed(0, 1 << 20); // changes nothing
    const std::tuple<qint64, qsizetype, const char*> cases[] = {{0, 4, "0123"}, {6, 4, "6789"}, {7, 4, "789"},
                                                                {10, 4, ""},    {100, 4, ""},   {3, 0, ""}};
    for (const auto& [offset, length, expected] : cases) {
        QByteArray bytes(length, '?');
        EXPECT_EQ(bytes.left(file.readAt(offset, {bytes.data(), std::size_t(length)})), expected) << offset;
    }
    char byte = 0;
    EXPECT_THROW(file.readAt(-1, {&byte, 1}), FileError) << "a read that fails is no end";
    EXPECT_EQ(file.identity().size, 10);
    writeFile(path, "more", QIODevice::Append);
    EXPECT_EQ(file.identity().size, 14) << "of this moment";
}

TEST_F(SourceFileTest, saysWhichFileCannotBeReadAndWhy)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(root.filePath("pipe")).constData(), 0600), 0);
    const std::pair<const char*, const char*> cases[] = {
        {"missing.mov", "“missing.mov” cannot be opened: No such file or directory."},
        {".", "“.” cannot be opened: Is a directory."},
        {"pipe", "“pipe” cannot be opened: Invalid argument."}, // and without waiting for its other end
    };
    for (const auto& [name, text] : cases)
        EXPECT_EQ(failureOf([&] { SourceFile::open(root.filePath(name)); }), text);
}

TEST(SourcePathTest, everyNameComesBackAsTheBytesThatItWas)
{
    const std::pair<QByteArray, const char16_t*> cases[] = {
        {"/films/Mäster 映画🎬.mov", u"Mäster 映画🎬.mov"},
        {"/films/\xff", u"\uFFFD"},
        {"/f\xe4/a\xe4\xf6.mov", u"a\uFFFD\uFFFD.mov"},
        {"/a\xc3", u"a\uFFFD"},
        {"/\xf0\x9f\x8e", u"\uFFFD\uFFFD\uFFFD"},
        {"/\xed\xb3\xbf", u"\uFFFD\uFFFD\uFFFD"}, // what would stand for a byte, as bytes
        {"/💀\xbf", u"💀\uFFFD"},                 // the second half of its pair would stand for a byte by itself
    };
    for (const auto& [bytes, name] : cases) {
        const auto path = pathFromBytes(bytes);
        EXPECT_EQ(pathToBytes(path), bytes) << bytes.toHex().constData();
        EXPECT_EQ(readableName(path), QString::fromUtf16(name));
    }
    EXPECT_NE(pathFromBytes("/\xff"), pathFromBytes("/\xfe"));
}

TEST(FileTypesTest, knowsATypeByItsExtensionAlone)
{
    EXPECT_EQ(mimeTypeForName("a master.of.masters.MOV"), "video/quicktime");
    EXPECT_EQ(mimeTypeForName("CMakeLists.txt"), "text/plain");
    for (const char* unknown : {"master.unheardof", "Makefile", ""})
        EXPECT_EQ(mimeTypeForName(unknown), "application/octet-stream") << unknown;
}

using BookmarkTest = SourceFileTest;
using bookmark::Resolved;

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

TEST_F(BookmarkTest, nothingElseIsTakenForAFileThatIsGoneOrForABookmark)
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
    const auto good = bookmark::make(renamed).value();
    for (qsizetype length = 0; length < good.size(); ++length)
        EXPECT_EQ(bookmark::resolve(good.left(length)), std::nullopt) << length;
    EXPECT_EQ(bookmark::resolve("X" + good.sliced(1)), std::nullopt);
}

} // namespace
} // namespace palvera
