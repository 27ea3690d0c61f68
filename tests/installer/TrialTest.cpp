#include "installer/Trial.h"

#include "tests/installer/Support.h"

#include <QTemporaryDir>

#include <csignal>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>

namespace palvera::installer {
namespace {

using namespace std::chrono_literals;

const QByteArray sh = "#!/bin/sh\n";

class TrialTest : public testing::Test {
protected:
    std::optional<Refusal> trialOf(const QByteArray& script, std::chrono::milliseconds limit = 60s)
    {
        ::umask(022);
        makeFile(m_build + "/bin/palvera", script, 0755);
        const FileDescriptor folder(::open(QFile::encodeName(m_build).constData(), O_RDONLY | O_DIRECTORY));
        return refusalOf(
            [&] { tryBuild(folder, "Palvera 1.5 (58)\n", limit, [this](pid_t group) { m_groups.push_back(group); }); });
    }

    QTemporaryDir m_folder;
    const QString m_build = m_folder.filePath("build");
    std::vector<pid_t> m_groups;
};

TEST_F(TrialTest, wantsTheWholeAnswerAndAGoodEnd)
{
    const FileDescriptor kept(
        ::fcntl(::open("/dev/null", O_RDONLY | O_CLOEXEC), F_DUPFD, 20)); // not to be closed by exec
    ::setenv("STEERED", "yes", 1);
    const QByteArray answer = "echo 'Palvera 1.5 (58)'";
    for (const char* finding :
         {"[ \"$*\" = --self-test ]", "[ ! \"$STEERED\" ] && [ ! -e \"$HOME\" ] && [ ! -e \"$XDG_CONFIG_HOME\" ]",
          "[ ! -e /proc/self/fd/20 ]", "grep -q 'NoNewPrivs:.1' /proc/self/status",
          "[ $(id -u) != 0 ] && [ $(id -g) != 0 ] && [ $(id -G | wc -w) = 1 ]", "[ $(ulimit -c) = 0 ]"})
        EXPECT_EQ(trialOf(sh + finding + " && " + answer), std::nullopt) << finding;
    for (const QByteArray& script :
         {sh + "echo 'Palvera 1.5 (57)'", sh + answer + "; echo more", sh + "printf 'Palvera 1.5 (58)'",
          sh + answer + "; exit 1", sh + answer + "; kill -SEGV $$", sh + "yes", QByteArray("\177ELF junk")})
        EXPECT_EQ(trialOf(script), Refusal::doesNotRun) << script.toStdString();
    ::unsetenv("STEERED");
}

TEST_F(TrialTest, writesToNoFile)
{
    // Anybody may write there, and the file is open before it is tried.
    const auto target = m_build + "/target";
    makeFile(target, "untouched", 0666);
    EXPECT_EQ(trialOf(sh + "echo spoilt >> target; mkdir made 2> /dev/null; echo 'Palvera 1.5 (58)'"), std::nullopt);
    EXPECT_EQ(QFile(target).size(), 9);
}

TEST_F(TrialTest, endsWithAllThatItStarted)
{
    ::prctl(PR_SET_CHILD_SUBREAPER, 1); // what loses its parent is ours, so that its end can be seen
    for (const bool isInTime : {true, false}) {
        const QByteArray script = sh + "sleep 1000 & echo 'Palvera 1.5 (58)'" + (isInTime ? "" : "; wait");
        m_groups.clear();
        EXPECT_EQ(trialOf(script, isInTime ? 60s : 300ms).has_value(), !isInTime);
        ASSERT_EQ(m_groups.size(), 2);
        EXPECT_EQ(m_groups[1], 0);
        int status = 0;
        while (::waitpid(-m_groups[0], &status, 0) > 0) // would wait for ever for one that was left
            EXPECT_EQ(WTERMSIG(status), SIGKILL);
        EXPECT_EQ(::kill(-m_groups[0], 0), -1);
    }
}

} // namespace
} // namespace palvera::installer
