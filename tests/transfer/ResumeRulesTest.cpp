#include "transfer/ResumeRules.h"

#include "files/Bookmark.h"
#include "support/QtPrinting.h"
#include "transfer/UploadNote.h"

namespace palvera {
namespace {

const SourceIdentity film{.handle = "film", .size = 100, .changed = 7'000'000'123};
const SourceIdentity sameSecond{.handle = "film", .size = 100, .changed = 7'000'000'456};
const SourceIdentity anotherFile{.handle = "stem", .size = 100, .changed = 7'000'000'123};
const TransferTarget row = TransferTarget::Deliverable{"o", "p", "d"};
const UploadSubject subject{.path = "/f/a.mov", .identity = film, .target = row, .service = "https://one/api"};

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
    const struct {
        const char* what;
        Journal journal;
        JournalFit fit;
    } cases[] = {
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
        {"of an earlier version", before("/f/a.mov", "100-7"), JournalFit::fits},
        {"of an earlier version, another path", before("/f/b.mov", "100-7"), JournalFit::otherFile},
        {"of an earlier version, another second", before("/f/a.mov", "100-6"), JournalFit::fileChanged},
    };
    for (const auto& [what, journal, fit] : cases)
        EXPECT_EQ(fitOf(journal, subject), fit) << what;
}

TEST(ResumeRulesTest, twoRunsAreTheSameUploadOnlyWithTheSameFilePlaceAndPlatform)
{
    EXPECT_TRUE(isSameUpload(subject, {"/link/a.mov", film, row, "https://one/api"}));
    EXPECT_FALSE(isSameUpload(subject, {"/f/a.mov", sameSecond, row, "https://one/api"}));
    EXPECT_FALSE(isSameUpload(subject, {"/f/a.mov", film, TransferTarget::Bin{"o", {}}, "https://one/api"}));
    EXPECT_FALSE(isSameUpload(subject, {"/f/a.mov", film, row, "https://two/api"}));
    EXPECT_FALSE(isSameUpload(subject, {"/f/b.mov", anotherFile, row, "https://one/api"}));
}

TEST(ResumeRulesTest, aNoteSaysWhatIsUnderWay)
{
    const UploadNote note{.subject = subject, .isDone = true};
    EXPECT_EQ(decodeNote(encodeNote(note)), note);
    for (const char* text : {"", "{}", "[]", R"({"file":"/a"})"})
        EXPECT_EQ(decodeNote(text), std::nullopt) << text;
}

} // namespace
} // namespace palvera
