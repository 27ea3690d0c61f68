#include "FileFixture.h"

#include "files/LockFile.h"

#include <sys/wait.h>
#include <unistd.h>

namespace palvera {
namespace {

using Outcome = LockFile::Outcome;

using LockFileTest = FileFixture;

TEST_F(LockFileTest, oneHasItAndLeavesAWordForWhoeverWaits)
{
    auto waiting = LockFile::open(path);
    {
        auto owner = LockFile::open(path);
        EXPECT_FALSE(LockFile::isHeld(path));
        EXPECT_EQ(owner.tryLock(), Outcome::taken);
        owner.setNote("a longer note");
        owner.setNote("at it");
        EXPECT_TRUE(LockFile::isHeld(path));
        EXPECT_EQ(waiting.tryLock(), Outcome::held);
        EXPECT_EQ(waiting.note(), "at it");
        owner.setNote("done");
    }
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(waiting.tryLock(), Outcome::released) << "it must not be taken for that of the next file";
    EXPECT_EQ(waiting.note(), "done");
    EXPECT_EQ(LockFile::open(path).tryLock(), Outcome::taken);
    EXPECT_THROW(LockFile::open(root.filePath("nowhere/lock")), FileError);
}

TEST_F(LockFileTest, theLockOfADeadProcessIsFree)
{
    if (const auto child = ::fork(); child == 0) {
        auto owner = new LockFile(LockFile::open(path)); // never destroyed
        ::_exit(owner->tryLock() == Outcome::taken ? 0 : 1);
    } else {
        int status = 1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_FALSE(LockFile::isHeld(path));
    EXPECT_EQ(LockFile::open(path).tryLock(), Outcome::taken);
}

} // namespace
} // namespace palvera
