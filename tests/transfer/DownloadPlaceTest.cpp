#include "transfer/DownloadPlace.h"

#include "files/DestinationFile.h"
#include "transfer/Partial.h"

#include "files/FileError.h"
#include "support/QtPrinting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct DownloadPlaceTest : testing::Test {
    QTemporaryDir disk;
    QString folder = disk.filePath("Downloads");

    void SetUp() override { QDir().mkpath(folder); }

    QString claim(const QString& name, const QString& source = "one")
    {
        return QDir(folder).relativeFilePath(DownloadPlace::claim(folder, name, source).path());
    }
    void put(const QString& name, const QByteArray& bytes)
    {
        QFile file(QDir(folder).filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray bytesOf(const QString& name)
    {
        QFile file(QDir(folder).filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList entries() const
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(DownloadPlaceTest, makesAnyNameOneOfAFileInTheFolder)
{
    std::pair<QString, QString> cases[] = {
        {"Master.mov", "Master.mov"},
        {"../../x", "x"},
        {"/etc/passwd", "passwd"},
        {"", "Download"},
        {".", "Download"},
        {"..", "Download"},
        {"a/..", "Download"},
        {"a/", "Download"},
        {".bashrc", "bashrc"},
        {"two\nlines\t.mov", "twolines.mov"},
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
}

TEST_F(DownloadPlaceTest, touchesNoFileThatIsNotItsOwn)
{
    put("Master.mov", "the user's");
    QDir(folder).mkdir("Master 2.mov");
    ASSERT_TRUE(QFile::link("/nowhere", folder + "/Master 3.mov"));
    EXPECT_EQ(claim("Master.mov"), "Master 4.mov");
    EXPECT_EQ(bytesOf("Master.mov"), "the user's");
    EXPECT_EQ(claim("Master.mov", "another"), "Master 5.mov");
    EXPECT_EQ(claim("no extension"), "no extension");
    EXPECT_EQ(claim("no extension", "another"), "no extension 2");
}

TEST_F(DownloadPlaceTest, findsItsOwnUnfinishedFileAgain)
{
    EXPECT_EQ(claim("Master.mov"), "Master.mov");
    EXPECT_EQ(claim("Master.mov", "another"), "Master 2.mov");
    EXPECT_EQ(claim("Master.mov"), "Master.mov");
    EXPECT_EQ(claim("Master.mov", "another"), "Master 2.mov");
    removePartial(folder + "/Master.mov"); // it is done
    EXPECT_EQ(claim("Master.mov"), "Master 3.mov");
    EXPECT_EQ(claim("Reel.mov", ""), "Reel.mov");
    EXPECT_EQ(claim("Reel.mov", ""), "Reel 2.mov"); // nobody knows whether it is the same
}

TEST_F(DownloadPlaceTest, leavesNothingOfADownloadThatNeverBegan)
{
    DownloadPlace::claim(folder, "Master.mov", "one").removeIfEmpty();
    EXPECT_THAT(entries(), IsEmpty());

    auto begun = DownloadPlace::claim(folder, "Master.mov", "one");
    savePartial(begun.path(), {.done = {3}, .total = 9000, .source = "one"});
    begun.removeIfEmpty();
    EXPECT_THAT(entries(), ElementsAre("Master.mov", "Master.mov.pvpart"));

    auto held = DownloadPlace::claim(folder, "Reel.mov", "two");
    auto writer = DestinationFile::open(held.path());
    held.removeIfEmpty(); // another program writes it
    EXPECT_TRUE(QFile::exists(held.path()));
}

TEST_F(DownloadPlaceTest, saysWhenTheFolderCannotBeWritten)
{
    EXPECT_THROW(DownloadPlace::claim(disk.filePath("nowhere"), "Master.mov", "one"), FileError);
}

TEST(PartialTest, survivesItsFile)
{
    const Partial partials[] = {{},
                                {.done = {0, 7, 1'000'000}, .total = 1LL << 40, .tag = "\"a\\b\"", .source = "“x”/y"}};
    for (const auto& partial : partials)
        EXPECT_EQ(decodePartial(encodePartial(partial)), partial);
    for (const char* broken : {"", "[]", "{}", R"({"done":[],"total":"5"})", R"({"done":["1"],"total":5})",
                               R"({"done":{},"total":5})", R"({"done":[1.5],"total":5})"})
        EXPECT_EQ(decodePartial(broken), std::nullopt) << broken;
    EXPECT_EQ(recordPath("/x/Master.mov"), "/x/Master.mov.pvpart");
}

} // namespace
} // namespace palvera
