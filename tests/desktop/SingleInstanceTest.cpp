#include "desktop/SingleInstance.h"

#include "desktop/MessageSocket.h"
#include "tests/support/Files.h"
#include "tests/support/LoopFixture.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/ScopedVariable.h"

#include <QLocalSocket>
#include <QTemporaryDir>

#include <thread>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

struct SingleInstanceTest : LoopFixture {
    QTemporaryDir folder;
    QByteArrayList heard;

    std::unique_ptr<SingleInstance> start(const QString& runtimeFolder)
    {
        auto instance = std::make_unique<SingleInstance>("/data", runtimeFolder);
        instance->listen([this](const QByteArray& message) { heard.append(message); });
        return instance;
    }
    QByteArrayList hear(qsizetype count = 1)
    {
        pumpUntil([&] { return heard.size() >= count; });
        return std::exchange(heard, {});
    }
    QString socketPath() const
    {
        return folder.filePath(QDir(folder.path()).entryList({"palvera-*"}, QDir::System).value(0, "no socket"));
    }
    void expectTheNextTakesOver()
    {
        const auto next = start(folder.path());
        EXPECT_TRUE(next->isFirst());
        EXPECT_TRUE(SingleInstance("/data", folder.path()).send("raise"));
        EXPECT_THAT(hear(), ElementsAre("raise"));
    }
};

TEST_F(SingleInstanceTest, theSecondHandsOverWhatItHasToSayWhateverOthersSay)
{
    const auto first = start(folder.path());
    SingleInstance second("/data", folder.path());
    ASSERT_TRUE(first->isFirst());
    ASSERT_FALSE(second.isFirst());
    for (const char* message : {"raise", "", "two\nlines"})
        EXPECT_TRUE(second.send(message));
    EXPECT_THAT(hear(3), ElementsAre("raise", "", "two\nlines"));
    const QByteArray longest(MessageSocket::longestMessage, 'x');
    EXPECT_TRUE(second.send(longest));
    EXPECT_THAT(hear(), ElementsAre(longest));
    EXPECT_FALSE(second.send(longest + 'x'));
    QLocalSocket others[4]; // cut off, too long, far too long, and one that only stays
    const QByteArray said[] = {"rai", longest + "x\n", longest.repeated(4) + "\n", ""};
    for (std::size_t i = 0; i < std::size(others); ++i) {
        others[i].connectToServer(socketPath());
        ASSERT_TRUE(others[i].waitForConnected(2000));
        others[i].write(said[i]);
        others[i].waitForBytesWritten(2000);
        if (!said[i].isEmpty())
            others[i].disconnectFromServer();
    }
    EXPECT_TRUE(second.send("raise"));
    EXPECT_THAT(hear(), ElementsAre("raise"));
    ASSERT_TRUE(QFile::remove(socketPath()));
    EXPECT_FALSE(second.send("raise")) << "nobody takes it";
}

TEST_F(SingleInstanceTest, theNextWaitsForOneThatEndsAndIsNotHeardByIt)
{
    auto first = start(folder.path());
    SingleInstance second("/data", folder.path());
    first->close();
    EXPECT_FALSE(second.send("raise"));
    EXPECT_FALSE(second.succeed(1ms));
    std::thread goes([&] { first.reset(); });
    EXPECT_TRUE(second.succeed(10s));
    goes.join();
    EXPECT_FALSE(SingleInstance("/data", folder.path()).isFirst());
    EXPECT_TRUE(SingleInstance("/data", folder.filePath("nowhere")).isFirst()) << "where no lock can be";
}

TEST_F(SingleInstanceTest, oneDataFolderIsOneHoweverItsPathIsSpelledAndOthersDoNotMeet)
{
    SingleInstance first("/data/palvera", folder.path()), relative("data", folder.path());
    for (const QString& same : {QString("/data/palvera/"), QString("/data//palvera"), QString("/data/other/../palvera"),
                                QDir::current().filePath("data")})
        EXPECT_FALSE(SingleInstance(same, folder.path()).isFirst()) << same.toStdString();
    EXPECT_TRUE(SingleInstance("/elsewhere", folder.path()).isFirst());
}

TEST_F(SingleInstanceTest, theNextTakesOverFromOneThatIsGoneOrWasKilled)
{
    auto first = start(folder.path());
    const auto socket = socketPath();
    first.reset();
    expectTheNextTakesOver();
    writeFile(socket, {});
    // No process has that number.
    writeFile(socket + ".lock", "999999999\npalvera\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    expectTheNextTakesOver();
}

TEST_F(SingleInstanceTest, withoutASessionTheyMeetWhereOnlyTheUserMayEnterAndNowhereIfALinkIsInItsPlace)
{
    const ScopedVariable session("XDG_RUNTIME_DIR", {}), temporary("TMPDIR", folder.path().toUtf8());
    const QDir top(folder.path());
    const auto before = QDir::currentPath();
    {
        const SingleInstance first("/data"), second("/data");
        EXPECT_TRUE(first.isFirst());
        EXPECT_FALSE(second.isFirst());
    }
    const auto own = top.filePath(top.entryList({"runtime-*"}, QDir::Dirs).value(0, "no folder"));
    EXPECT_EQ(int(QFile::permissions(own)) & 0x77, 0) << "its group and all others";
    ASSERT_TRUE(QDir(own).removeRecursively() && top.mkdir("theirs") && top.mkdir("working"));
    ASSERT_TRUE(QFile::link(top.filePath("theirs"), own) && QDir::setCurrent(top.filePath("working")));
    SingleInstance one("/data"), other("/data");
    EXPECT_TRUE(one.isFirst());
    EXPECT_TRUE(other.isFirst());
    EXPECT_FALSE(other.send("raise"));
    for (const char* place : {".", "theirs", "working"})
        EXPECT_TRUE(QDir(top.filePath(place)).entryList({"palvera-*"}, QDir::Files | QDir::System).isEmpty()) << place;
    QDir::setCurrent(before);
}

} // namespace
} // namespace palvera
