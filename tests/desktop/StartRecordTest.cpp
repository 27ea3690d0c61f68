#include "desktop/Arrival.h"
#include "desktop/LaunchNote.h"
#include "tests/support/Files.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/ScopedVariable.h"

#include <QTemporaryDir>

#include <sys/mman.h>
#include <unistd.h>

namespace palvera {

void PrintTo(const StartRecord& record, std::ostream* out)
{
    *out << record.text();
}

namespace {

TEST(StartRecordTest, aBuildThatTwiceCameToNothingGivesWayToTheOneBeforeUnlessItHasWorked)
{
    using Record = std::optional<StartRecord>;
    const std::tuple<Record, std::vector<long long>, Launch> rows[]{
        {{}, {57, 58}, {.build = 58, .record = StartRecord{58, 1}}},
        {StartRecord{58, 1}, {57, 58}, {.build = 58, .record = StartRecord{58, 2}}},
        {StartRecord{58, 2}, {9, 57, 58, 60}, {.build = 57, .fellBackFrom = 58}},
        {StartRecord{58, 2}, {58}, {.build = 58}},
        {StartRecord{58, 0}, {57, 58}, {.build = 58}},
        {StartRecord{57, 2}, {57, 58}, {.build = 58, .record = StartRecord{58, 1}}},
        {StartRecord{59, 0}, {57, 58}, {.build = 58, .record = StartRecord{58, 1}}}};
    for (const auto& [last, builds, launch] : rows)
        EXPECT_EQ(decideLaunch(58, builds, last), launch) << (last ? last->text() : "none");
}

TEST(StartRecordTest, whatItsFileHoldsIsReadOrIsNothing)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath("made/start").toStdString();
    for (const auto& record : {StartRecord{57, 0}, StartRecord{57, 1}, StartRecord{58, 2}}) {
        StartRecord::write(path, record);
        EXPECT_EQ(StartRecord::read(path), record);
    }
    for (const char* text : {"", "57", "57 ", "57 0", "57 -1", "-57 1", " 57 1", "57 1 ", "57 works!", "x works",
                             "99999999999999999999 1", "57 works and what is longer than any record is"}) {
        writeFile(QString::fromStdString(path), text);
        EXPECT_EQ(StartRecord::read(path), std::nullopt) << text;
    }
    StartRecord::write(path, {});
    EXPECT_FALSE(QFile::exists(QString::fromStdString(path)));
}

TEST(LaunchNoteTest, takesWhatTheLauncherLeftAndAnswersInItsFile)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath("Palvera/start").toStdString();
    const ScopedVariable state("XDG_STATE_HOME", folder.path().toUtf8());
    const int file = ::memfd_create("addresses", 0);
    const QByteArray addresses("palvera:a\0file:///b\0PALVERA://c\0", 32);
    ASSERT_EQ(::write(file, addresses.constData(), std::size_t(addresses.size())), addresses.size());
    ::lseek(file, 0, SEEK_SET);
    const ScopedVariable opened(addressesVariable, QByteArray::number(file)), before(recordBeforeVariable, "57 1"),
        failed(fellBackVariable, "58");
    StartRecord::write(path, StartRecord{57, 2});
    const auto note = LaunchNote::take();
    int argc = 1;
    char name[] = "palvera";
    char* argv[] = {name, nullptr};
    EXPECT_THAT(takeArrival(argc, argv, note.addresses()).addresses, testing::ElementsAre("palvera:a", "PALVERA://c"));
    EXPECT_EQ(note.fellBackFrom(), "58");
    note.forget();
    EXPECT_EQ(StartRecord::read(path), (StartRecord{57, 1}));
    note.setWorking(57);
    EXPECT_EQ(StartRecord::read(path), (StartRecord{57, 0}));
    StartRecord::write(path, StartRecord{58, 1}); // of a newer one that was started meanwhile
    note.setWorking(57);
    EXPECT_EQ(StartRecord::read(path), (StartRecord{58, 1}));
    StartRecord::write(path, StartRecord{57, 0});
    const auto none = LaunchNote::take(); // a program that no launcher started says nothing
    none.forget();
    none.setWorking(99);
    EXPECT_EQ(StartRecord::read(path), (StartRecord{57, 0}));
    EXPECT_TRUE(none.addresses().isEmpty());
}

} // namespace
} // namespace palvera
