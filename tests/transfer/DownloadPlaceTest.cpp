#include "transfer/DownloadPlace.h"
#include "TransferTest.h"

#include "files/DestinationFile.h"
#include "transfer/Partial.h"

namespace palvera {
namespace {

struct DownloadPlaceTest : testing::Test {
    QTemporaryDir disk;
    QDir folder{disk.path()};

    DownloadPlace place(const QString& name, const QString& source)
    {
        return DownloadPlace::claim(folder.path(), name, source);
    }
    QString claim(const QString& name, const QString& source = "one")
    {
        return folder.relativeFilePath(place(name, source).path());
    }
};

TEST_F(DownloadPlaceTest, makesAnyNameOneOfAFileInTheFolder)
{
    const std::pair<QString, QString> cases[] = {
        {"../../x", "x"},
        {"", "Download"},
        {".", "Download"},
        {"a/..", "Download"},
        {"a/", "Download"},
        {".bashrc", "bashrc"},
        {"two\nlines\t.mov", "two lines .mov"},
        {QString("nul") + QChar(0) + ".mov", "nul.mov"},
        {" spaced .mov ", "spaced .mov"},
        {QString::fromUtf8("Fo\u0308hn.mov"), QString::fromUtf8("F\u00f6hn.mov")},
        {"a\\b.mov", "a\\b.mov"},
    };
    for (const auto& [name, safe] : cases)
        EXPECT_EQ(safeFileName(name), safe) << name.toStdString();
    for (const auto& letter : {QString("x"), QString::fromUtf8("ö"), QString::fromUtf8("🎬")}) {
        auto safe = safeFileName(letter.repeated(300) + ".mov");
        EXPECT_TRUE(safe.endsWith(letter + ".mov"));
        EXPECT_LE(safe.toUtf8().size(), 243);
        EXPECT_GE(safe.toUtf8().size(), 239);
        EXPECT_EQ(claim(letter.repeated(300) + ".mov"), safe);
    }
    EXPECT_FALSE(safeFileName(QString("x").repeated(242) + " and more").endsWith(' ')) << "cut at a blank";
}

TEST_F(DownloadPlaceTest, touchesNoFileThatIsNotItsOwn)
{
    writeFile(folder.filePath("Master.mov"), "the user's");
    folder.mkdir("Master 2.mov");
    ASSERT_TRUE(QFile::link("/nowhere", folder.filePath("Master 3.mov")));
    EXPECT_EQ(claim("Master.mov"), "Master 4.mov");
    EXPECT_EQ(readFile(folder.filePath("Master.mov")), "the user's");
    EXPECT_EQ(claim("no extension"), "no extension");
    EXPECT_EQ(claim("no extension", "another"), "no extension 2");
}

TEST_F(DownloadPlaceTest, findsItsOwnUnfinishedFileAgain)
{
    for (int run = 1; run <= 2; ++run) {
        EXPECT_EQ(claim("Master.mov"), "Master.mov");
        EXPECT_EQ(claim("Master.mov", "another"), "Master 2.mov");
    }
    removePartial(folder.filePath("Master.mov")); // it is done
    EXPECT_EQ(claim("Master.mov"), "Master 3.mov");
    EXPECT_EQ(claim("Reel.mov", ""), "Reel.mov");
    EXPECT_EQ(claim("Reel.mov", ""), "Reel 2.mov"); // nobody knows whether it is the same
}

TEST_F(DownloadPlaceTest, leavesNothingOfADownloadThatNeverBegan)
{
    place("Master.mov", "one").removeIfEmpty();
    EXPECT_THAT(entriesOf(disk.path()), IsEmpty());

    auto begun = place("Master.mov", "one");
    savePartial(begun.path(), {.done = {3}, .total = 9000, .source = "one"});
    begun.removeIfEmpty();
    EXPECT_THAT(entriesOf(disk.path()), ElementsAre("Master.mov", "Master.mov.pvpart"));

    auto held = place("Reel.mov", "two");
    auto writer = DestinationFile::open(held.path());
    held.removeIfEmpty(); // another program writes it
    EXPECT_TRUE(QFile::exists(held.path()));
}

TEST(PartialTest, survivesItsFile)
{
    for (const auto& partial :
         {Partial{}, {.done = {0, 7, 1'000'000}, .total = 1LL << 40, .tag = "\"a\\b\"", .source = "“x”/y"}})
        EXPECT_EQ(decodePartial(encodePartial(partial)), partial);
    for (const char* broken : {"", "[]", "{}", R"({"done":[],"total":"5"})", R"({"done":["1"],"total":5})",
                               R"({"done":{},"total":5})", R"({"done":[1.5],"total":5})"})
        EXPECT_EQ(decodePartial(broken), std::nullopt) << broken;
}

} // namespace
} // namespace palvera
