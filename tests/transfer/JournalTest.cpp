#include "transfer/Journal.h"
#include "transfer/JournalStore.h"

#include "service/JsonReader.h"

#include "support/QtPrinting.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {
namespace {

Journal sample()
{
    return {.key = "row-1",
            .orgId = "org",
            .projectId = "project",
            .object = "objects/ü \"quoted\".mov",
            .uploadId = "upload",
            .partSize = 10,
            .partCount = 12,
            .byteSize = 115,
            .filePath = "/films/über.mov",
            .filename = "über.mov",
            .bookmark = QByteArray("\0\xff\x10", 3),
            .fileStamp = "115-1731772800",
            .done = {{1, "a"}, {2, "b\"\\\n\x01"}, {10, "ten"}, {11, "eleven"}},
            .target = TransferTarget::Deliverable{"org", "project", "row-1"},
            .sessionId = "s 1/a+b"};
}

QJsonObject asJson(const Journal& journal)
{
    return QJsonDocument::fromJson(encodeJournal(journal)).object();
}

Journal decodeWith(const QJsonObject& object)
{
    return decodeJournal(QJsonDocument(object).toJson());
}

TEST(JournalTest, survivesTheDisk)
{
    EXPECT_EQ(decodeJournal(encodeJournal(sample())), sample());
    Journal bare = sample();
    bare.done = {};
    bare.bookmark = std::nullopt;
    bare.sessionId = std::nullopt;
    bare.target = std::nullopt;
    EXPECT_EQ(decodeJournal(encodeJournal(bare)), bare);
}

TEST(JournalTest, isWrittenInTheFormThatEveryVersionReads)
{
    QJsonObject object = asJson(sample());
    EXPECT_EQ(object["done"].toObject(),
              (QJsonObject{{"1", "a"}, {"2", "b\"\\\n\x01"}, {"10", "ten"}, {"11", "eleven"}}));
    EXPECT_EQ(object["bookmark"], "AP8Q");
    EXPECT_EQ(object["target"].toObject()["deliverable"].toObject()["deliverableId"], "row-1");
    EXPECT_EQ(object["partSize"], 10);
    Journal bare = sample();
    bare.bookmark = std::nullopt;
    bare.sessionId = std::nullopt;
    bare.target = std::nullopt;
    bare.done = {};
    EXPECT_EQ(asJson(bare)["done"], QJsonObject());
    EXPECT_EQ(asJson(bare).keys(), (QStringList{"byteSize", "done", "filePath", "fileStamp", "filename", "key",
                                                "object", "orgId", "partCount", "partSize", "projectId", "uploadId"}));
}

TEST(JournalTest, withoutATargetBelongsToTheDeliverableItsKeyNames)
{
    QJsonObject object = asJson(sample());
    object.remove("target");
    EXPECT_EQ(decodeWith(object).destination(), TransferTarget(TransferTarget::Deliverable{"org", "project", "row-1"}));
}

TEST(JournalTest, refusesWhatIsNoJournal)
{
    for (const QString& key : asJson(sample()).keys()) {
        if (QStringList{"bookmark", "target", "sessionId"}.contains(key))
            continue;
        QJsonObject without = asJson(sample());
        without.remove(key);
        EXPECT_THROW(decodeWith(without), DecodingError) << key.toStdString();
        QJsonObject wrong = asJson(sample());
        wrong[key] = true;
        EXPECT_THROW(decodeWith(wrong), DecodingError) << key.toStdString();
    }
    struct Case {
        const char* key;
        QJsonValue value;
    };
    for (const auto& [key, value] : {
             Case{"partSize", 0},
             Case{"partCount", 0},
             Case{"partCount", 13},
             Case{"partCount", 4294967308.0}, // 12 in its lower 32 bits
             Case{"byteSize", 121},
             Case{"done", QJsonObject{{"0", "a"}}},
             Case{"done", QJsonObject{{"13", "a"}}},
             Case{"done", QJsonObject{{"01", "a"}}},
             Case{"done", QJsonObject{{"one", "a"}}},
             Case{"done", QJsonObject{{"1", 1}}},
             Case{"key", "../escape"},
             Case{"bookmark", "***"},
         }) {
        QJsonObject object = asJson(sample());
        object[key] = value;
        EXPECT_THROW(decodeWith(object), DecodingError)
            << key << " " << QJsonDocument(QJsonArray{value}).toJson().toStdString();
    }
    for (const char* text : {"", "null", "[]", "{", "<html></html>"})
        EXPECT_THROW(decodeJournal(text), DecodingError) << text;
}

TEST(JournalTest, keysNameFilesInTheFolderOnly)
{
    for (const char* plain : {"row-1", "ünï", "a b", "bin-1f", "...", ".hidden", "a%2Fb"})
        EXPECT_TRUE(isPlainFileName(plain)) << plain;
    for (const QString& other :
         {QString(), QString("."), QString(".."), QString("a/b"), QString("../a"), QString("/etc/passwd"),
          QString("a") + QChar(0), QString(251, 'x'), QString(126, QChar(0xfc))})
        EXPECT_FALSE(isPlainFileName(other)) << other.toStdString();
}

TEST(JournalTest, binKeysTellFoldersApartAndFindTheSameFileAgain)
{
    // Worked out with another program.
    EXPECT_EQ(binJournalKey("org", "Masters/ü", "/films/a.mov"), "bin-72fbfcf28643dbf8");
    EXPECT_EQ(binJournalKey("", std::nullopt, ""), "bin-8e34c07b581a8a5");
    EXPECT_EQ(binJournalKey("org", std::nullopt, "/f17100"), "bin-d1e120f4b6abab") << "no leading zeros";
    EXPECT_EQ(binJournalKey("org", std::nullopt, "/a"), binJournalKey("org", "", "/a"));
    EXPECT_NE(binJournalKey("org", "x", "/a"), binJournalKey("org", "y", "/a"));
}

struct JournalStoreTest : testing::Test {
    QTemporaryDir home;
    JournalStore store{home.path()};

    QString journalPath(const QString& name) const { return store.journalFolder() + "/" + name; }
    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(journalPath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
};

TEST_F(JournalStoreTest, keepsOneFileAJournalAndNothingElseBesideIt)
{
    store.saveJournal(sample());
    Journal further = sample();
    further.done[3] = "c";
    store.saveJournal(further);
    EXPECT_EQ(QDir(home.filePath("Palvera/Uploads")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList("row-1.json"));
    EXPECT_EQ(store.loadJournal("row-1"), further);
    store.removeJournal("row-1");
    store.removeJournal("row-1");
    EXPECT_EQ(store.loadJournal("row-1"), std::nullopt);
}

TEST_F(JournalStoreTest, strayFilesAreSkippedAndLeftInPlace)
{
    store.saveJournal(sample());
    put("notes.txt", "hello");
    put("half.json", encodeJournal(sample()).left(40));
    put("copy.json", encodeJournal(sample()));
    QDir(store.journalFolder()).mkdir("folder.json");
    EXPECT_EQ(store.loadJournals().size(), 2u) << "the journal and its copy, which speaks for the same key";
    EXPECT_EQ(store.loadJournal("copy"), std::nullopt);
    EXPECT_TRUE(QFile::exists(journalPath("notes.txt")));
    EXPECT_TRUE(QFile::exists(journalPath("half.json")));
}

TEST_F(JournalStoreTest, aKeyThatIsNoPlainNameIsRefused)
{
    Journal evil = sample();
    evil.key = "../evil";
    store.saveJournal(evil);
    EXPECT_FALSE(QFile::exists(home.filePath("Palvera/evil.json")));
    put("../outside.json", "keep");
    store.removeJournal("../outside");
    EXPECT_TRUE(QFile::exists(home.filePath("Palvera/outside.json")));
}

TEST_F(JournalStoreTest, aSaveThatFailsLosesNoEarlierJournal)
{
    store.saveJournal(sample());
    ASSERT_TRUE(QDir().rename(home.filePath("Palvera/Staging"), home.filePath("Palvera/away")));
    put("../Staging", "a file where the staging folder should be");
    Journal further = sample();
    further.done[3] = "c";
    store.saveJournal(further);
    EXPECT_EQ(store.loadJournal("row-1"), sample());
}

TEST_F(JournalStoreTest, aKeyIsHeldByOneRunAtATime)
{
    auto held = store.tryLock("row-1");
    ASSERT_TRUE(held);
    EXPECT_FALSE(JournalStore(home.path()).tryLock("row-1"));
    EXPECT_TRUE(store.tryLock("row-2"));
    held.reset();
    EXPECT_TRUE(store.tryLock("row-1"));
}

TEST(FileStampTest, isSizeAndWholeSecondsOfTheLastChange)
{
    QTemporaryDir folder;
    QFile file(folder.filePath("film.mov"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.resize(73'400'320);
    ASSERT_TRUE(file.setFileTime(QDateTime::fromMSecsSinceEpoch(1'731'772'800'750), QFileDevice::FileModificationTime));
    EXPECT_EQ(fileStamp(file.fileName()), "73400320-1731772800");
    ASSERT_TRUE(file.setFileTime(QDateTime::fromMSecsSinceEpoch(1'731'772'801'000), QFileDevice::FileModificationTime));
    EXPECT_EQ(fileStamp(file.fileName()), "73400320-1731772801");
    EXPECT_EQ(fileStamp(folder.filePath("nothing")), "0-0");
}

} // namespace
} // namespace palvera
