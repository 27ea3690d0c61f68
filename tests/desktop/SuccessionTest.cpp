#include "desktop/Succession.h"
#include "async/Failure.h"
#include "desktop/ProgramCopy.h"
#include "tests/support/Files.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/ScopedVariable.h"
#include "tests/support/Simulation.h"

#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/file.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

struct SuccessionTest : testing::Test {
    Simulation world;
    QByteArray token;
    bool isAlive = true;
    Succession succession{world.clock,
                          [this](const QString& program, const QByteArray& given) {
                              EXPECT_EQ(program, "/opt/palvera/bin/palvera");
                              token = given;
                              return qint64{1} << 30; // of no process
                          },
                          [this](qint64) { return isAlive; }};
    std::optional<QString> end; ///< what went wrong, once it has ended

    Task<void> begin()
    {
        try {
            co_await succession.begin("/opt/palvera/bin/palvera");
            end = "";
        } catch (const Failure& failure) {
            end = failure.text();
        }
    }
};

TEST_F(SuccessionTest, endsWithTheWordOfTheOneThatWasStartedAndOfNoOther)
{
    EXPECT_TRUE(succession.take(Successor{.token = ""}.message())) << "though nobody waits";
    world.start(begin());
    world.pass(5s);
    for (const char* other : {"another", ""})
        EXPECT_TRUE(succession.take(Successor{.token = other}.message()));
    EXPECT_FALSE(succession.take(R"({"addresses":[],"token":""})"));
    world.pass(5s);
    EXPECT_EQ(end, std::nullopt);
    const ScopedVariable given("PALVERA_SUCCESSOR", token);
    EXPECT_TRUE(succession.take(Successor::take()->message()));
    EXPECT_FALSE(Successor::take()) << "it is taken out of the environment";
    world.pass(100ms);
    EXPECT_EQ(end, "");
}

TEST_F(SuccessionTest, oneThatEndsOrStaysSilentForTwentySecondsDidNotStart)
{
    world.start(begin());
    world.pass(3s);
    isAlive = false;
    world.pass(100ms);
    EXPECT_EQ(end, "The new build did not start.");
    end.reset();
    isAlive = true;
    world.start(begin());
    world.pass(19900ms);
    EXPECT_EQ(end, std::nullopt);
    world.pass(200ms);
    EXPECT_EQ(end, "The new build did not start.");
}

TEST(ProgramCopyTest, isLookedAfterWhereItsFolderIsThatOfABuild)
{
    const std::pair<const char*, const char*> cases[] = {{"/opt/palvera/builds/57/bin", "/opt/palvera"},
                                                         {"/home/a/builds/b/builds/1/bin", "/home/a/builds/b"},
                                                         {"/usr/bin", ""},
                                                         {"/opt/palvera/builds/57", ""},
                                                         {"/opt/palvera/builds/x/bin", ""},
                                                         {"/opt/palvera/builds/57/bin/more", ""},
                                                         {"/builds/57/bin", ""}};
    for (const auto& [folder, root] : cases)
        EXPECT_EQ(ProgramCopy(folder).root(), root) << folder;
    EXPECT_EQ(ProgramCopy("/usr/bin").launcher(), "");
}

TEST(ProgramCopyTest, startsItsLauncherAndHoldsItsBuild)
{
    const QTemporaryDir disk;
    const QDir root(disk.path());
    ASSERT_TRUE(root.mkpath("builds/57/bin") && root.mkpath("bin"));
    writeFile(root.filePath("builds/57/manifest.json"), "{}");
    std::optional<ProgramCopy> copy(std::in_place, root.filePath("builds/57/bin"));
    EXPECT_EQ(copy->launcher(), root.filePath("current/bin/palvera"));
    writeFile(root.filePath("bin/palvera"), "");
    ASSERT_TRUE(QFile::setPermissions(root.filePath("bin/palvera"), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_EQ(copy->launcher(), root.filePath("bin/palvera"));
    const FileDescriptor manifest(::open(qPrintable(root.filePath("builds/57/manifest.json")), O_RDONLY | O_CLOEXEC));
    copy->hold();
    EXPECT_NE(::flock(manifest.number(), LOCK_EX | LOCK_NB), 0);
    copy.reset();
    EXPECT_EQ(::flock(manifest.number(), LOCK_EX | LOCK_NB), 0);
}

} // namespace
} // namespace palvera
