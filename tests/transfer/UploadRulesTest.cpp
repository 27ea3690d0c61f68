#include "transfer/UploadRules.h"
#include "TransferTest.h"

#include "files/Bookmark.h"
#include "transfer/ResumeRules.h"
#include "transfer/UploadNote.h"

namespace palvera {
namespace {

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
