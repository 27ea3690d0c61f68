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

struct ScriptCase {
    const char* script;
    bool runs = false;
};

TEST_F(TrialTest, wantsTheWholeAnswerAndAGoodEnd)
{
    const FileDescriptor kept(
        ::fcntl(::open("/dev/null", O_RDONLY | O_CLOEXEC), F_DUPFD, 20)); // not to be closed by exec
    ::setenv("STEERED", "yes", 1);
    for (const auto& [script, runs] : std::vector<ScriptCase>{
             {"#!/bin/sh\n[ \"$*\" = --self-test ] && echo 'Palvera 1.5 (58)'\n", true},
             {"#!/bin/sh\n[ \"$STEERED\" ] || [ -e \"$HOME\" ] || [ -e \"$XDG_CONFIG_HOME\" ] || echo 'Palvera 1.5 "
              "(58)'\n",
              true},
             {"#!/bin/sh\n[ -e /proc/self/fd/20 ] || echo 'Palvera 1.5 (58)'\n", true},
             {"#!/bin/sh\ngrep -q 'NoNewPrivs:.1' /proc/self/status && echo 'Palvera 1.5 (58)'\n", true},
             {"#!/bin/sh\n[ $(id -u) != 0 ] && [ $(id -g) != 0 ] && [ $(id -G | wc -w) = 1 ] && echo 'Palvera 1.5 "
              "(58)'\n",
              true},
             {"#!/bin/sh\n[ $(ulimit -c) = 0 ] && echo 'Palvera 1.5 (58)'\n", true},
             {"#!/bin/sh\necho 'Palvera 1.5 (57)'\n"},
             {"#!/bin/sh\necho 'Palvera 1.5 (58)'; echo more\n"},
             {"#!/bin/sh\nprintf 'Palvera 1.5 (58)'\n"},
             {"#!/bin/sh\necho 'Palvera 1.5 (58)'; exit 1\n"},
             {"#!/bin/sh\necho 'Palvera 1.5 (58)'; kill -SEGV $$\n"},
             {"#!/bin/sh\nyes\n"},
             {"\177ELF junk"}})
        EXPECT_EQ(trialOf(script), runs ? std::nullopt : std::optional(Refusal::doesNotRun)) << script;
    ::unsetenv("STEERED");
}

TEST_F(TrialTest, writesToNoFile)
{
    // Anybody may write there, and the file is open before it is tried.
    const auto target = m_build + "/target";
    makeFile(target, "untouched", 0666);
    EXPECT_EQ(trialOf("#!/bin/sh\necho spoilt >> target; mkdir made 2> /dev/null; echo 'Palvera 1.5 (58)'\n"),
              std::nullopt);
    EXPECT_EQ(QFile(target).size(), 9);
}

TEST_F(TrialTest, endsWithAllThatItStarted)
{
    ::prctl(PR_SET_CHILD_SUBREAPER, 1); // what loses its parent is ours, so that its end can be seen
    struct EndCase {
        const char* script;
        std::optional<Refusal> refusal;
        std::chrono::milliseconds limit;
    };
    for (const auto& each : {EndCase{"#!/bin/sh\nsleep 1000 & echo 'Palvera 1.5 (58)'\n", std::nullopt, 60s},
                             {"#!/bin/sh\nsleep 1000 & echo 'Palvera 1.5 (58)'; wait\n", Refusal::doesNotRun, 300ms}}) {
        m_groups.clear();
        EXPECT_EQ(trialOf(each.script, each.limit), each.refusal);
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
