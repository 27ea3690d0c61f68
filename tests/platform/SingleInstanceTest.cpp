#include "platform/SingleInstance.h"

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
    /// Says `bytes` to whoever listens, as a program that is not ours might.
    void say(const QByteArray& bytes)
    {
        QLocalSocket socket;
        auto sockets = QDir(runtime.path()).entryList({"palvera-*"}, QDir::System | QDir::Files);
        sockets.removeIf([](const QString& name) { return name.endsWith(".lock"); });
        ASSERT_EQ(sockets.size(), 1);
        socket.connectToServer(runtime.filePath(sockets.first()));
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
    const QByteArray longest(SingleInstance::longestMessage - 1, 'x');
    EXPECT_TRUE(second.send("raise"));
    EXPECT_TRUE(second.send({}));
    EXPECT_TRUE(second.send("two\nlines"));
    EXPECT_THAT(heardBy(first, 3), ElementsAre("raise", "", "two\nlines"));
    EXPECT_TRUE(second.send(longest));
    EXPECT_THAT(heardBy(first, 1), ElementsAre(longest));
}

TEST_F(SingleInstanceTest, whatIsCutOffOrTooLongIsDroppedAndTheNextIsHeard)
{
    SingleInstance first("/data", runtime.path());
    SingleInstance second("/data", runtime.path());
    say("rai");
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

} // namespace
} // namespace palvera
