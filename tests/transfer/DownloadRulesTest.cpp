#include "transfer/DownloadRules.h"
#include "TransferTest.h"

#include "files/DestinationFile.h"
#include "transfer/DownloadPlace.h"

namespace palvera {
namespace {

TEST(DownloadRulesTest, chunksCoverTheWholeAndNothingElse)
{
    for (auto [total, chunkSize, chunks, last] : std::vector<std::array<qint64, 4>>{
             {1, 10, 1, 1}, {10, 10, 1, 10}, {11, 10, 2, 1}, {1LL << 50, 32LL << 20, 1LL << 25, 32LL << 20}}) {
        EXPECT_EQ(chunkCount(total, chunkSize), chunks);
        EXPECT_EQ(rangeOfChunk(chunks - 1, chunkSize, total), (ByteRange{(chunks - 1) * chunkSize, last})) << total;
    }
    EXPECT_EQ(rangedRequest("https://s/o", {500, 250}).headers, (HttpHeaders{{"Range", "bytes=500-749"}}));
}

TEST(DownloadRulesTest, theSizeIsWhatTheRangeSaysElseTheLength)
{
    EXPECT_EQ(totalIn({.headers = {{"Content-Range", "bytes 0-0/1234"}, {"Content-Length", "1"}}}), 1234);
    EXPECT_EQ(totalIn({.status = 206, .headers = {{"Content-Range", "bytes 0-0/*"}, {"Content-Length", "1"}}}),
              std::nullopt)
        << "that is the length of the part";
    EXPECT_EQ(totalIn({.status = 200, .headers = {{"Content-Range", "nonsense"}}}), std::nullopt);
}

TEST(DownloadRulesTest, aRecordSpeaksOfItsOwnFileOnly)
{
    const std::tuple<const char*, Partial, QByteArray, qint64, bool> cases[] = {
        {"its file", {.total = 9, .source = "one", .file = "h"}, "h", 9, true},
        {"not begun", {.source = "one"}, "h", 0, true},
        {"of another object", {.total = 9, .source = "two", .file = "h"}, "h", 9, false},
        {"of another file", {.total = 9, .source = "one", .file = "h"}, "g", 9, false},
        {"no handles here", {.total = 9, .source = "one", .file = "h"}, "", 9, true},
        {"no handles here, another size", {.total = 9, .source = "one"}, "", 8, false},
        {"of another program", {.done = {0}, .total = 9}, "h", 9, true},
        {"of another program, another size", {.done = {0}, .total = 9}, "h", 8, false},
        {"of another program, empty", {}, "h", 0, false},
    };
    for (const auto& [what, record, handle, size, binds] : cases)
        EXPECT_EQ(recordBinds(record, "one", handle, size), binds) << what;
    EXPECT_FALSE(recordBinds({.total = 9, .file = "h"}, "", "h", 9)) << "nobody knows what is asked for";
}

TEST(DownloadRulesTest, anAnswerWithOtherBytesOrOfAnotherObjectIsObjectedTo)
{
    const char* const otherBytes = "Storage sent other bytes than those asked for.";
    const std::tuple<HttpHeaders, const char*, const char*, bool> cases[] = {
        // to bytes 10-19 of 100
        {{}, "\"a\"", "", false},
        {{{"Content-Range", "bytes 10-19/100"}, {"Content-Length", "10"}, {"ETag", "\"a\""}}, "\"a\"", "", false},
        {{{"content-range", "  bytes   10-19 / 100"}}, "", "", false},
        {{{"Content-Range", "bytes 10-19/*"}}, "", "", false},
        {{{"Content-Range", "bytes 0-9/100"}}, "", otherBytes, false},
        {{{"Content-Range", "bytes 10-18/100"}}, "", otherBytes, false},
        {{{"Content-Length", "9"}}, "", "Storage sent 9 bytes of a chunk of 10.", false},
        {{{"Content-Length", "nine"}}, "", "", false},
        {{{"Content-Range", "bytes 10-19/101"}}, "", "", true},
        {{{"ETag", "\"b\""}}, "\"a\"", "", true},
        {{{"ETag", "\"b\""}}, "", "", false},
    };
    for (const auto& [headers, tag, objection, isAnother] : cases) {
        EXPECT_EQ(objectionTo({.headers = headers}, {10, 10}).value_or(QString()), objection);
        EXPECT_EQ(isAnotherObject({.headers = headers}, 100, tag), isAnother) << tag;
    }
}

TEST(DownloadRulesTest, aRecordIsGoneOnWithWhereItFits)
{
    const std::tuple<const char*, Partial, qint64, bool> cases[] = {
        {"all as it was", {.done = {0, 9}, .total = 100, .tag = "a"}, 100, true},
        {"nothing is there yet", {.total = 100, .tag = "a"}, 100, true},
        {"no tag then", {.done = {1}, .total = 100}, 100, true},
        {"another tag", {.done = {1}, .total = 100, .tag = "b"}, 100, false},
        {"another size", {.done = {1}, .total = 99, .tag = "a"}, 100, false},
        {"the file was cut", {.done = {1}, .total = 100, .tag = "a"}, 99, false},
        {"a chunk beyond the end", {.done = {10}, .total = 100, .tag = "a"}, 100, false},
        {"a chunk before the start", {.done = {-1}, .total = 100, .tag = "a"}, 100, false},
    };
    for (const auto& [what, record, fileSize, fits] : cases)
        EXPECT_EQ(recordFits(record, {.total = 100, .tag = "a"}, fileSize, 10), fits) << what;
}

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

TEST_F(DownloadPlaceTest, touchesNoFileThatIsNotItsOwnAndFindsItsOwnUnfinishedOneAgain)
{
    writeFile(folder.filePath("Master.mov"), "the user's");
    folder.mkdir("Master 2.mov");
    ASSERT_TRUE(QFile::link("/nowhere", folder.filePath("Master 3.mov")));
    for (int run = 1; run <= 2; ++run) {
        EXPECT_EQ(claim("Master.mov"), "Master 4.mov");
        EXPECT_EQ(claim("Master.mov", "another"), "Master 5.mov");
    }
    EXPECT_EQ(readFile(folder.filePath("Master.mov")), "the user's");
    removePartial(folder.filePath("Master 4.mov")); // it is done
    EXPECT_EQ(claim("Master.mov"), "Master 6.mov");
    EXPECT_EQ(claim("no extension", ""), "no extension");
    EXPECT_EQ(claim("no extension", ""), "no extension 2"); // nobody knows whether it is the same
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
