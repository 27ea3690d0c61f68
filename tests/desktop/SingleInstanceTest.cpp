#include "desktop/SingleInstance.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using testing::ElementsAre;

class SingleInstanceTest : public testing::Test {
protected:
    QByteArrayList heardBy(SingleInstance& first, std::size_t count)
    {
        QByteArrayList heard;
        first.onMessage = [&](const QByteArray& message) { heard.append(message); };
        QElapsedTimer passed;
        passed.start();
        while (std::size_t(heard.size()) < count && passed.elapsed() < 10'000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        first.onMessage = nullptr;
        return heard;
    }
    QString socketPath() const
    {
        return runtime.filePath(QDir(runtime.path()).entryList({"palvera-*"}, QDir::System).value(0, "no socket"));
    }
    /// Says `bytes` to whoever listens, as a program that is not ours might.
    void say(const QByteArray& bytes)
    {
        QLocalSocket socket;
        socket.connectToServer(socketPath());
        ASSERT_TRUE(socket.waitForConnected(2000));
        socket.write(bytes);
        socket.waitForBytesWritten(2000);
        socket.disconnectFromServer();
    }

    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QTemporaryDir runtime;
};

TEST_F(SingleInstanceTest, theSecondHandsOverWhatItHasToSay)
{
    SingleInstance first("/data", runtime.path());
    SingleInstance second("/data", runtime.path());
    ASSERT_TRUE(first.isFirst());
    ASSERT_FALSE(second.isFirst());
    const QByteArray longest(SingleInstance::longestMessage, 'x');
    EXPECT_TRUE(second.send("raise"));
    EXPECT_TRUE(second.send({}));
    EXPECT_TRUE(second.send("two\nlines"));
    EXPECT_THAT(heardBy(first, 3), ElementsAre("raise", "", "two\nlines"));
    EXPECT_TRUE(second.send(longest));
    EXPECT_THAT(heardBy(first, 1), ElementsAre(longest));
    EXPECT_FALSE(second.send(longest + 'x'));
}

TEST_F(SingleInstanceTest, saysWhenNobodyTakesTheMessage)
{
    SingleInstance first("/data", runtime.path());
    SingleInstance second("/data", runtime.path());
    ASSERT_TRUE(QFile::remove(socketPath()));
    EXPECT_FALSE(second.isFirst());
    EXPECT_FALSE(second.send("raise"));
}

TEST_F(SingleInstanceTest, whatIsCutOffOrTooLongIsDroppedAndTheNextIsHeard)
{
    SingleInstance first("/data", runtime.path());
    SingleInstance second("/data", runtime.path());
    say("rai");
    say(QByteArray(SingleInstance::longestMessage + 1, 'x') + "\n");
    say(QByteArray(4 * SingleInstance::longestMessage, 'x') + "\n");
    EXPECT_TRUE(second.send("raise"));
    EXPECT_THAT(heardBy(first, 1), ElementsAre("raise"));
}

TEST_F(SingleInstanceTest, programsWithOtherDataDoNotMeet)
{
    SingleInstance one("/data", runtime.path());
    SingleInstance other("/elsewhere", runtime.path());
    EXPECT_TRUE(one.isFirst());
    EXPECT_TRUE(other.isFirst());
}

TEST_F(SingleInstanceTest, aPeerThatSaysNothingDoesNotKeepTheNextFromBeingHeard)
{
    SingleInstance first("/data", runtime.path());
    SingleInstance second("/data", runtime.path());
    QLocalSocket silent;
    silent.connectToServer(socketPath());
    ASSERT_TRUE(silent.waitForConnected(2000));
    EXPECT_TRUE(second.send("raise"));
    EXPECT_THAT(heardBy(first, 1), ElementsAre("raise"));
}

TEST_F(SingleInstanceTest, oneFolderIsOneHoweverItsPathIsSpelled)
{
    SingleInstance first("/data/palvera", runtime.path());
    for (const char* spelled : {"/data/palvera/", "/data//palvera", "/data/other/../palvera"})
        EXPECT_FALSE(SingleInstance(spelled, runtime.path()).isFirst()) << spelled;
    SingleInstance relative("data", runtime.path());
    EXPECT_FALSE(SingleInstance(QDir::current().filePath("data"), runtime.path()).isFirst());
}

TEST_F(SingleInstanceTest, theNextIsTheFirstOnceTheFirstIsGone)
{
    std::optional<SingleInstance> first(std::in_place, "/data", runtime.path());
    first.reset();
    SingleInstance next("/data", runtime.path());
    EXPECT_TRUE(next.isFirst());
    SingleInstance later("/data", runtime.path());
    EXPECT_TRUE(later.send("raise"));
    EXPECT_THAT(heardBy(next, 1), ElementsAre("raise"));
}

TEST_F(SingleInstanceTest, whatOneThatWasKilledLeftIsTakenOver)
{
    QString socket;
    {
        SingleInstance first("/data", runtime.path());
        socket = QDir(runtime.path()).entryList({"palvera-*"}, QDir::System).value(0);
    }
    ASSERT_FALSE(socket.isEmpty());
    QFile lock(runtime.filePath(socket + ".lock")), left(runtime.filePath(socket));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly) && left.open(QIODevice::WriteOnly));
    lock.write("999999999\npalvera\n" + QSysInfo::machineHostName().toUtf8() + "\n"); // no process has that number
    lock.close();
    SingleInstance next("/data", runtime.path());
    EXPECT_TRUE(next.isFirst());
    SingleInstance later("/data", runtime.path());
    EXPECT_TRUE(later.send("raise"));
    EXPECT_THAT(heardBy(next, 1), ElementsAre("raise"));
}

TEST_F(SingleInstanceTest, withoutAPlaceForTheLockTheProgramStillStarts)
{
    SingleInstance alone("/data", runtime.filePath("nowhere"));
    EXPECT_TRUE(alone.isFirst());
}

/// Without a session's runtime folder, and with a folder for temporary files of its own.
class SingleInstanceOfUserTest : public SingleInstanceTest {
protected:
    SingleInstanceOfUserTest()
    {
        qunsetenv("XDG_RUNTIME_DIR");
        qputenv("TMPDIR", runtime.path().toUtf8());
    }
    ~SingleInstanceOfUserTest() override
    {
        m_session.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", m_session);
        m_temporary.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", m_temporary);
    }
    QString folder() const
    {
        const auto found = QDir(runtime.path()).entryList({"runtime-*"}, QDir::Dirs);
        return found.isEmpty() ? QString() : runtime.filePath(found[0]);
    }

private:
    const QByteArray m_session = qgetenv("XDG_RUNTIME_DIR");
    const QByteArray m_temporary = qgetenv("TMPDIR");
};

TEST_F(SingleInstanceOfUserTest, meetsInAFolderThatOnlyTheUserMayEnter)
{
    SingleInstance first("/data"), second("/data");
    EXPECT_TRUE(first.isFirst());
    EXPECT_FALSE(second.isFirst());
    const auto byOthers =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    ASSERT_FALSE(folder().isEmpty());
    EXPECT_EQ(QFileInfo(folder()).permissions() & byOthers, QFile::Permissions());
}

TEST_F(SingleInstanceOfUserTest, leavesNothingAnywhereWhenSomebodyPutALinkInPlaceOfThatFolder)
{
    const auto before = QDir::currentPath();
    std::optional<SingleInstance>(std::in_place, "/data").reset(); // makes the folder
    const auto own = folder();
    ASSERT_TRUE(!own.isEmpty() && QDir(own).removeRecursively());
    QDir top(runtime.path());
    ASSERT_TRUE(top.mkdir("theirs") && top.mkdir("working") && QFile::link(top.filePath("theirs"), own));
    ASSERT_TRUE(QDir::setCurrent(top.filePath("working")));
    {
        SingleInstance one("/data"), other("/data");
        EXPECT_TRUE(one.isFirst());
        EXPECT_TRUE(other.isFirst());
        EXPECT_FALSE(other.send("raise"));
        for (const char* place : {".", "theirs", "working"})
            EXPECT_TRUE(QDir(top.filePath(place)).entryList({"palvera-*"}, QDir::Files | QDir::System).isEmpty())
                << place;
    }
    QDir::setCurrent(before);
}

} // namespace
} // namespace palvera
