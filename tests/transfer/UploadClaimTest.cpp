#include "UploadHarness.h"

#include "files/Bookmark.h"
#include "transfer/UploadNote.h"

namespace palvera {
namespace {

/// Another program that sends the master, or something else, to the picture master's row.
struct Elsewhere {
    LockFile lock;

    explicit Elsewhere(const Delivery& delivery) : lock(delivery.journals.lockOf(pictureMaster.deliverableId))
    {
        EXPECT_EQ(lock.tryLock(), LockFile::Outcome::taken);
    }
    void say(const QString& path, bool isDone = false) const
    {
        const UploadSubject subject{path, identityOf(path).value(), pictureMaster, "http://platform.test/api/"};
        lock.setNote(encodeNote({.subject = subject, .isDone = isDone}));
    }
};

TEST(UploadClaimTest, aFileThatIsBeingSentAlreadyIsWaitedForAndAnotherIsRefused)
{
    for (bool isDone : {true, false}) {
        Delivery delivery;
        Life life(delivery);
        std::optional<Elsewhere> other(delivery);
        other->say(delivery.disk.filePath("."));
        EXPECT_EQ(life.send(), "“.” is on its way there already.");
        other->say(delivery.path());
        life.world.start(life.sending());
        life.world.run(life.world.clock.sleep(60s));
        ASSERT_THAT(life.remarks, ElementsAre("This file is being sent already. Waiting for that."));
        EXPECT_THAT(life.network.seen(), IsEmpty());
        if (isDone)
            other->say(delivery.path(), true);
        other.reset();
        EXPECT_EQ(life.end(), "");
        EXPECT_EQ(life.network.seen().empty(), isDone) << "nothing is sent twice";
        EXPECT_EQ(life.remarks.size(), isDone ? 1u : 2u);
        EXPECT_EQ(life.remarks.back().isEmpty(), !isDone) << "it waits no more";
    }
}

TEST(UploadClaimTest, whereNeitherLockNorJournalCanBeWrittenTheUploadGoesOnAndSaysSoOnce)
{
    Delivery delivery;
    ASSERT_TRUE(QDir(delivery.disk.filePath("Palvera")).removeRecursively());
    writeFile(delivery.disk.filePath("Palvera"), "in the way");
    Life life(delivery);
    life.deliver();
    ASSERT_EQ(life.remarks.size(), 1u);
    EXPECT_THAT(life.remarks.front().toStdString(), HasSubstr("cannot be kept"));
}

TEST(UploadClaimTest, aFileThatChangedSinceTheJournalStartsAfresh)
{
    Delivery delivery;
    cutOff(delivery);
    ASSERT_EQ(delivery.journal().done.size(), 5u);
    delivery.write(3 * partSize, 7);
    Life second(delivery);
    second.deliver();
    EXPECT_EQ(second.count(Operation::start), 1u);
}

TEST(UploadClaimTest, anotherFileForTheSamePlaceStartsAfreshAndTheFirstIsKeptAndGoneOnWithLater)
{
    Delivery delivery;
    cutOff(delivery);
    auto aside = delivery.journal();
    aside.filePath = delivery.disk.filePath("L.wav");
    ASSERT_TRUE(QFile::rename(delivery.path(), aside.filePath) && QFile::copy(aside.filePath, delivery.path()));
    QFile stem(delivery.path()); // as the stems of one export: of one length and one moment
    ASSERT_TRUE(stem.open(QIODevice::ReadWrite) &&
                stem.setFileTime(QFileInfo(aside.filePath).lastModified(), QFileDevice::FileModificationTime));
    aside.bookmark = bookmark::make(aside.filePath);
    delivery.journals.saveJournal(aside);

    delivery.fail(Operation::complete, status(503));
    Life second(delivery);
    EXPECT_EQ(second.send(), "The platform is having trouble.");
    EXPECT_THAT(second.remarks, ElementsAre("The upload of “Der Föhn 100% (v2).mov” that was cut off here is kept."));
    EXPECT_EQ(second.count(Operation::start), 1u);
    EXPECT_EQ(delivery.journals.loadJournal("salt-row-1~2").value().uploadId, aside.uploadId);

    ASSERT_TRUE(QFile::remove(delivery.path()) && QFile::rename(aside.filePath, delivery.path()));
    Life third(delivery);
    EXPECT_EQ(third.send(), "");
    EXPECT_EQ(third.count(Operation::put), 0u) << "the first upload has every part";
}

} // namespace
} // namespace palvera
