#include "transfer/Journal.h"
#include "TransferTest.h"

#include "files/Bookmark.h"
#include "files/FileError.h"
#include "files/SourcePath.h"
#include "support/Json.h"
#include "transfer/JournalStore.h"
#include "transfer/ResumeRules.h"
#include "transfer/UploadNote.h"
#include "transfer/UploadRules.h"

namespace palvera {
namespace {

const QByteArray bare = R"({"key":"row-1","orgId":"org","projectId":"project","object":"objects/ü \"quoted\".mov",
    "uploadId":"upload","partSize":10,"partCount":12,"byteSize":115,"filePath":"/films/über.mov","filename":"über.mov",
    "fileStamp":"115-1731772800","done":{}})";
const QByteArray full = QByteArray(bare).replace(R"("done":{}})", R"("done":{"1":"a","2":"b\"\\\n\u0001","10":"ten"},
    "bookmark":"AP8Q","target":{"bin":{"orgId":"org","folder":"folder"}},"sessionId":"s 1/a+b","service":"https://api","account":"user",
    "label":"Picture master","client":"Northlight"})");
Journal sample()
{
    return decodeJournal(full);
}

Journal decodeWith(const QString& key, const QJsonValue& value)
{
    auto object = jsonObject(full);
    object[key] = value; // an undefined one takes the key away
    return decodeJournal(QJsonDocument(object).toJson());
}

TEST(JournalTest, isWrittenInTheFormThatEveryVersionReadsAndKeepsNamesInTheirPlacesOfAnAddress)
{
    for (const auto& text : {bare, full})
        EXPECT_EQ(jsonObject(encodeJournal(decodeJournal(text))), jsonObject(text));
    EXPECT_EQ(sample().bookmark, QByteArray("\0\xff\x10", 3));
    EXPECT_EQ(sample().done, (ConfirmedParts{{1, "a"}, {2, "b\"\\\n\x01"}, {10, "ten"}}));
    EXPECT_EQ(sample().destination(), TransferTarget(TransferTarget::Bin{"org", "folder"}));
    EXPECT_EQ(decodeJournal(bare).destination(),
              TransferTarget(TransferTarget::Deliverable{"org", "project", "row-1"}));
    for (const char* text : {R"({"deliverable":{"orgId":"o","projectId":"p","deliverableId":"d"}})",
                             R"({"bin":{"orgId":"o"}})", R"({"bin":{"orgId":"o","folder":""}})"})
        EXPECT_EQ(TransferTarget::fromJson(jsonObject(text)).toJson(), jsonObject(text));
    EXPECT_EQ(TransferTarget(TransferTarget::Deliverable{"a/b", "..", "50%?"}).basePath({}),
              "orgs/a%2Fb/projects/%2E%2E/deliverables/50%25%3F/transfer");
    EXPECT_EQ(TransferTarget(TransferTarget::Bin{.orgId = "a/b"}).basePath("../x"),
              "orgs/a%2Fb/bin/uploads/%2E%2E%2Fx");
}

TEST(JournalTest, refusesWhatIsNoJournal)
{
    for (const QString& key : jsonObject(bare).keys()) {
        EXPECT_THROW(decodeWith(key, QJsonValue::Undefined), DecodingError) << key.toStdString();
        EXPECT_THROW(decodeWith(key, true), DecodingError) << key.toStdString();
    }
    const std::pair<const char*, QJsonValue> cases[] = {
        {"partCount", 13},
        {"partCount", 4294967308.0}, // 12 in its lower 32 bits
        {"done", QJsonObject{{"0", "a"}}},
        {"done", QJsonObject{{"13", "a"}}},
        {"done", QJsonObject{{"01", "a"}}},
        {"done", QJsonObject{{"one", "a"}}},
        {"done", QJsonObject{{"1", 1}}},
        {"key", "../escape"},
        {"bookmark", "***"},
        {"target", QJsonObject{}},
        {"target", QJsonObject{{"bin", QJsonObject{}}}},
        {"target", jsonObject(R"({"bin":{"orgId":"o"},"deliverable":{}})")},
        {"target", jsonObject(R"({"deliverable":{"orgId":"o","projectId":"p"}})")},
    };
    for (const auto& [key, value] : cases)
        EXPECT_THROW(decodeWith(key, value), DecodingError)
            << key << " " << QJsonDocument(QJsonArray{value}).toJson().toStdString();
    for (const char* text : {"", "null", "[]", "{"})
        EXPECT_THROW(decodeJournal(text), DecodingError) << text;
}

TEST(JournalTest, keysNameFilesInTheFolderOnlyAndThoseOfTheBinTellFoldersApart)
{
    const std::pair<QString, QString> usable[] = {{"row-1", "row-1.json"},
                                                  {"ünï", "ünï.json"},
                                                  {"...", "....json"},
                                                  {"a%2Fb", "a%2Fb.json"},
                                                  {"row/3%25", "row%2F3%2525.json"},
                                                  {QString("a") + QChar(0), "a%00.json"}};
    for (const auto& [key, name] : usable) {
        EXPECT_TRUE(isUsableKey(key)) << key.toStdString();
        EXPECT_EQ(journalFileName(key), name);
    }
    for (const QString& other :
         {QString(), QString("."), QString(".."), QString("../a"), QString("/etc/passwd"), QString("a//b"),
          QString("a/./b"), QString("a/"), QString(251, 'x'), QString(126, QChar(0xfc))})
        EXPECT_FALSE(isUsableKey(other)) << other.toStdString();
    // Worked out with another program.
    EXPECT_EQ(binJournalKey("org", "Masters/ü", "/films/a.mov"), "bin-72fbfcf28643dbf8");
    EXPECT_EQ(binJournalKey("", std::nullopt, ""), "bin-8e34c07b581a8a5");
    EXPECT_EQ(binJournalKey("org", std::nullopt, "/f17100"), "bin-d1e120f4b6abab") << "no leading zeros";
    EXPECT_NE(binJournalKey("org", {}, pathFromBytes("/\xff")), binJournalKey("org", {}, pathFromBytes("/\xfe")));
}

struct JournalStoreTest : testing::Test {
    QTemporaryDir home;
    JournalStore store{home.path()};

    Journal further = sample();

    JournalStoreTest()
    {
        store.saveJournal(further);
        further.done[3] = "c";
    }

    void put(const QString& name, const QByteArray& bytes) const
    {
        writeFile(store.journalFolder() + "/" + name, bytes);
    }
    QStringList files() const { return entriesOf(home.filePath("Palvera/Uploads")); }
};

TEST_F(JournalStoreTest, keepsOneFileAJournalSkipsStrayOnesAndLosesNoneToASaveThatFails)
{
    store.saveJournal(further);
    EXPECT_THAT(files(), ElementsAre("row-1.json"));
    EXPECT_EQ(store.loadJournal("row-1"), further);
    const QFile file(store.journalFolder() + "/row-1.json");
    EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    put("notes.txt", "hello");
    put("half.json", full.left(40));
    put("copy.json", full);
    QDir(store.journalFolder()).mkdir("folder.json");
    EXPECT_THAT(store.loadJournals(), ElementsAre(sample(), further)) << "its copy, too, which speaks for the same key";
    EXPECT_EQ(store.loadJournal("copy"), std::nullopt);
    EXPECT_EQ(files().size(), 5);
    ASSERT_TRUE(QDir().rename(home.filePath("Palvera/Staging"), home.filePath("Palvera/away")));
    put("../Staging", "a file where the staging folder should be");
    EXPECT_THROW(store.saveJournal(sample()), FileError);
    EXPECT_EQ(store.loadJournal("row-1"), further);
    store.removeJournal("row-1");
    EXPECT_EQ(store.loadJournal("row-1"), std::nullopt);
}

TEST_F(JournalStoreTest, aKeyThatLeavesTheFolderIsRefused)
{
    further.key = "../evil";
    EXPECT_THROW(store.saveJournal(further), FileError);
    EXPECT_FALSE(QFile::exists(home.filePath("Palvera/evil.json")));
    put("../outside.json", "keep");
    store.removeJournal("../outside");
    EXPECT_TRUE(QFile::exists(home.filePath("Palvera/outside.json")));
}

TEST_F(JournalStoreTest, aJournalThatIsSetAsideLivesOnUnderAnotherKey)
{
    for (const char* uploadId : {"one", "two"}) {
        auto other = sample();
        other.uploadId = uploadId;
        other.target = {};
        store.saveJournal(other);
        store.setAside(other);
    }
    EXPECT_EQ(store.loadJournal("row-1"), std::nullopt);
    EXPECT_EQ(store.loadJournal("row-1~2").value().uploadId, "one");
    const auto second = store.loadJournal("row-1~3").value();
    EXPECT_EQ(second.uploadId, "two");
    EXPECT_EQ(second.destination(), (TransferTarget::Deliverable{sample().orgId, sample().projectId, "row-1"}));
}

constexpr qint64 mebibyte = 1 << 20;
constexpr qint64 budget = 256 * mebibyte;
constexpr qint64 huge = std::numeric_limits<qint64>::max();

TEST(UploadRulesTest, partsCoverAFileExactlyOrNotAtAllAndAreCompleteTogether)
{
    using Case = std::array<qint64, 3>; // the size of parts, their count, the size of the file
    for (auto [partSize, partCount, byteSize] : {Case{10, 3, 30}, {10, 3, 21}, {10, 1, 1}, {huge, 1, 10}})
        EXPECT_TRUE(coversExactly(partSize, partCount, byteSize)) << partSize << ' ' << partCount << ' ' << byteSize;
    const Case emptyLast{10, 3, 20}, tooMany{1, huge, huge};
    for (auto [partSize, partCount, byteSize] :
         {emptyLast, {10, 3, 31}, {0, 1, 10}, {-10, -1, 10}, {10, 0, 0}, tooMany})
        EXPECT_FALSE(coversExactly(partSize, partCount, byteSize)) << partSize << ' ' << partCount << ' ' << byteSize;
    EXPECT_EQ(rangeOfPart(3, 10, 21), (ByteRange{20, 1}));
    EXPECT_EQ(rangeOfPart(9000, budget, 9000 * budget), (ByteRange{8999 * budget, budget})) << "beyond 32 bits";
    EXPECT_TRUE(isComplete({{1, "a"}, {2, "b"}}, 2));
    for (const auto& done : {ConfirmedParts{{1, "a"}}, {{1, "a"}, {3, "c"}}, {{2, "b"}, {3, "c"}}})
        EXPECT_FALSE(isComplete(done, 2));
    EXPECT_FALSE(isComplete({}, 0));
}

TEST(UploadRulesTest, lanesKeepWithinTheMemoryBudgetAndTriesBackOffWithASpread)
{
    const std::tuple<qint64, std::size_t, int> cases[] = {
        {16 * mebibyte, 3, 3},     {32 * mebibyte, 1000, 8},  {32 * mebibyte + 1, 1000, 7},
        {100 * mebibyte, 1000, 2}, {300 * mebibyte, 1000, 1}, {16 * mebibyte, 0, 1},
    };
    for (auto [partSize, queued, lanes] : cases)
        EXPECT_EQ(laneCount(8, budget, partSize, queued), lanes) << partSize << " " << queued;
    EXPECT_EQ(backOff(7, 1.2), 36s);
    EXPECT_EQ(backOff(1, 0.8), 800ms);
}

const SourceIdentity film{.handle = "film", .size = 100, .changed = 7'000'000'123};
const SourceIdentity sameSecond{.handle = "film", .size = 100, .changed = 7'000'000'456};
const SourceIdentity anotherFile{.handle = "stem", .size = 100, .changed = 7'000'000'123};
const TransferTarget row = TransferTarget::Deliverable{"o", "p", "d"};
const UploadSubject subject{
    .path = "/f/a.mov", .identity = film, .target = row, .service = "https://one/api", .account = "her"};

Journal journalOf(const QString& path, const SourceIdentity& identity)
{
    return {.key = "d",
            .orgId = "o",
            .projectId = "p",
            .byteSize = identity.size,
            .filePath = path,
            .bookmark = bookmark::make(path, identity),
            .fileStamp = fileStamp(identity),
            .target = row,
            .service = "https://one/api"};
}

TEST(ResumeRulesTest, aJournalFitsTheSameUnchangedFileOnItsWayToTheSamePlace)
{
    const SourceIdentity longer{.handle = "film", .size = 101, .changed = 7'000'000'123};
    const SourceIdentity nameless{.handle = {}, .size = 100, .changed = 7'000'000'123};
    const auto before = [](const QString& path, const QString& stamp) { // of a version without bookmarks and services
        auto journal = journalOf(path, film);
        journal.fileStamp = stamp;
        journal.bookmark = {};
        journal.service = {};
        return journal;
    };
    auto elsewhere = journalOf("/f/a.mov", film), otherService = elsewhere;
    elsewhere.target = TransferTarget::Deliverable{"o2", "p", "d"};
    otherService.service = "https://two/api";
    auto ofHers = journalOf("/f/a.mov", film), ofAnother = ofHers;
    ofHers.account = "her";
    ofAnother.account = "another";
    const std::tuple<const char*, Journal, JournalFit> cases[] = {
        {"the same", journalOf("/f/a.mov", film), JournalFit::fits},
        {"renamed", journalOf("/f/before.mov", film), JournalFit::fits},
        {"at its path on a disk without handles", journalOf("/f/a.mov", nameless), JournalFit::fits},
        {"rewritten within the same second", journalOf("/f/a.mov", sameSecond), JournalFit::fileChanged},
        {"grown", journalOf("/f/a.mov", longer), JournalFit::fileChanged},
        {"grown and renamed", journalOf("/f/before.mov", longer), JournalFit::fileChanged},
        {"put in the place of another", journalOf("/f/a.mov", anotherFile), JournalFit::fits},
        {"another of the same size and time", journalOf("/f/b.mov", anotherFile), JournalFit::otherFile},
        {"another on a disk without handles", journalOf("/f/b.mov", nameless), JournalFit::otherFile},
        {"to another place", elsewhere, JournalFit::otherPlace},
        {"through another platform", otherService, JournalFit::otherPlace},
        {"of the same user", ofHers, JournalFit::fits},
        {"of another user", ofAnother, JournalFit::otherPlace},
        {"of an earlier version", before("/f/a.mov", "100-7"), JournalFit::fits},
        {"of an earlier version, another path", before("/f/b.mov", "100-7"), JournalFit::otherFile},
        {"of an earlier version, another second", before("/f/a.mov", "100-6"), JournalFit::fileChanged},
    };
    for (const auto& [what, journal, fit] : cases)
        EXPECT_EQ(fitOf(journal, subject), fit) << what;
}

TEST(ResumeRulesTest, twoRunsAreTheSameUploadOnlyWithTheSameFilePlaceAndPlatformAsTheNoteOfOneSays)
{
    EXPECT_TRUE(isSameUpload(subject, {"/link/a.mov", film, row, "https://one/api"}));
    EXPECT_FALSE(isSameUpload(subject, {"/f/a.mov", sameSecond, row, "https://one/api"}));
    EXPECT_FALSE(isSameUpload(subject, {"/f/a.mov", film, TransferTarget::Bin{"o", {}}, "https://one/api"}));
    EXPECT_FALSE(isSameUpload(subject, {"/f/a.mov", film, row, "https://two/api"}));
    EXPECT_FALSE(isSameUpload(subject, {"/f/b.mov", anotherFile, row, "https://one/api"}));
    for (const char* text : {"", "{}", "[]", R"({"file":"/a"})"})
        EXPECT_EQ(decodeNote(text), std::nullopt) << text;
}

} // namespace
} // namespace palvera
